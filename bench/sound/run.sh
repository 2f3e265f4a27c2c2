#!/usr/bin/env bash
# script/bench sound: measures the sound library and its peers on sound servers of its own, and
# prints the tables of docs/sound.md.
#   --server NAME   pulseaudio (the default), pipewire, or both
#   --quick         shorter runs, for a first look
#   --shows COUNT   how many whole shows are watched for dropouts
#   --starts COUNT  how often each position on PipeWire is measured
#   --only TABLE    players, shows, quanta or changes instead of all of them
set -euo pipefail
cd "$(dirname "$(readlink -f "$0")")/../.."

usage() {
    echo "usage: script/bench sound [--server pulseaudio|pipewire|both] [--quick]" \
        "[--shows COUNT] [--starts COUNT] [--only players|shows|quanta|changes]" >&2
    exit 2
}

count() {
    [[ $1 =~ ^[0-9]+$ ]] || usage
    echo "$1"
}

servers=(pulseaudio)
seconds=20
rounds=3
shows=10
starts=5
paths=(pipewire pulse)
tables="players shows quanta changes"
arguments="$*"
while [ $# -gt 0 ]; do
    case $1 in
    --server)
        case ${2:-} in
        pulseaudio | pipewire) servers=("$2") ;;
        both) servers=(pulseaudio pipewire) ;;
        *) usage ;;
        esac
        shift
        ;;
    --quick)
        seconds=8
        rounds=1
        shows=1
        starts=1
        paths=(pipewire)
        ;;
    --shows)
        shows=$(count "${2:-}")
        shift
        ;;
    --starts)
        starts=$(count "${2:-}")
        shift
        ;;
    --only)
        [[ " $tables " == *" ${2:- } "* ]] || usage
        tables=$2
        shift
        ;;
    *) usage ;;
    esac
    shift
done

script/setup build headless bench || echo "Measuring with what is there." >&2
needed=(lame stress-ng pactl)
[[ ${servers[*]} != *pulseaudio* ]] || needed+=(pulseaudio pacat)
[[ ${servers[*]} != *pipewire* ]] || needed+=(pipewire wireplumber pw-metadata dbus-daemon)
for program in "${needed[@]}"; do
    command -v "$program" >/dev/null || {
        echo "Cannot measure without $program; script/setup bench installs it." >&2
        exit 1
    }
done
# shellcheck source=bench/measure.sh
. bench/measure.sh
# shellcheck source=bench/sound/figures.sh
. bench/sound/figures.sh
# shellcheck source=bench/sound/music.sh
. bench/sound/music.sh
# shellcheck source=bench/sound/servers.sh
. bench/sound/servers.sh
# shellcheck source=bench/sound/players.sh
. bench/sound/players.sh
# shellcheck source=bench/sound/quantum.sh
. bench/sound/quantum.sh
# shellcheck source=bench/sound/changes.sh
. bench/sound/changes.sh

has() {
    command -v "$1" >/dev/null
}

wants() {
    [[ " $tables " == *" $1 "* ]]
}

start_display
make_music
heading "sound${arguments:+ $arguments}"
for name in "${servers[@]}"; do
    use_server "$name"
    if wants players || wants shows; then
        ! wants players || measure_players
        ! wants shows || measure_shows
        print_players
    fi
    if [ "$name" = pipewire ] && wants quanta; then
        measure_quanta
        print_quanta
    fi
    if [ "$name" = pipewire ] && wants changes; then
        measure_changes
        print_changes
    fi
done
