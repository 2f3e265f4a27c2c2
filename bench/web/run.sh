#!/usr/bin/env bash
# script/bench web: how fast the page starts and draws, and how far its clock is from what is heard,
# in Chromium and Firefox on a PulseAudio server of its own; prints the figures of docs/web.md.
#   --quick   one run each
set -euo pipefail
cd "$(dirname "$(readlink -f "$0")")/../.."

case "$*" in
"") runs=5 ;;
--quick) runs=1 ;;
*)
    echo "usage: script/bench web [--quick]" >&2
    exit 2
    ;;
esac
seconds=24 # of music; 4 less are played

for program in chromium emcmake firefox-esr lame node npm pactl pulseaudio pacat; do
    command -v "$program" >/dev/null || {
        echo "Cannot measure without $program." >&2
        exit 1
    }
done
mkdir -p build/bench-web
bash tests/web/install.sh build/bench-web >&2
# shellcheck source=bench/measure.sh
. bench/measure.sh
# shellcheck source=bench/sound/figures.sh
. bench/sound/figures.sh
# shellcheck source=bench/sound/music.sh
. bench/sound/music.sh
# shellcheck source=bench/sound/servers.sh
. bench/sound/servers.sh

page=build/bench-web/page
export NODE_PATH=$PWD/build/bench-web/node_modules:/usr/share/nodejs
emcmake cmake --preset bench-web >build/bench-web.log 2>&1 || {
    cat build/bench-web.log >&2
    exit 1
}
cmake --build --preset bench-web >&2
script/web

# measure NAME BROWSER MODE RUNS: one comparison of all runs, and one line for each.
measure() {
    local name=$1 run line files=() dropouts=0
    for ((run = 1; run <= $4; run++)); do
        start_server
        node bench/web/measure.mjs "$page" "$headless_dir/answers" "$2" "$3" $((seconds - 4))
        end_server
        mv "$sink_log" "$headless_dir/sink.$run"
        mv "$headless_dir/answers" "$headless_dir/answers.$run"
        files+=("$headless_dir/sink.$run" "$headless_dir/answers.$run")
        line=$("$PROGRAMS/bench-truth" position "$music" "${files[@]: -2}")
        say "$name, run $run: $line"
        line=$("$PROGRAMS/bench-truth" dropouts "$music" "$headless_dir/sink.$run")
        keep one "$line"
        dropouts=$((dropouts + ${result[one.dropouts]} - 1)) # the end of what was played
    done
    keep "$name" "$("$PROGRAMS/bench-truth" position "$music" "${files[@]}") dropouts=$dropouts"
}

print_row() {
    row "$2" "$(figure "$spread" "$1".{median,p1,p99})" "$(figure %+.2f "$1.worstMedian")" \
        "$(figure %d "$1.back")" "$(figure %d "$1.dropouts")" "$(figure %d "$1.lost")"
}

speeds=() # a line of figures for each run
for ((run = 1; run <= runs; run++)); do
    speeds+=("$(SITE=build/web/site node bench/web/speed.js Speed)")
done
start_display
make_music
cp "$music" "$page/music.mp3"
use_server pulseaudio
measure plain chromium plain "$runs"
measure stalls chromium stalls "$runs"
measure start chromium start 1
measure background chromium background 1
measure firefox firefox plain 1
heading "web${*:+ $*}"
printf '%s\n' "${speeds[@]}" ""
echo "$(chromium --version 2>/dev/null | head -n 1); $(firefox-esr --version 2>/dev/null | tail -n 1)"
echo
row "runs of $((seconds - 4)) s: $runs" "play head, ms off: median (p1..p99)" "worst median of a run" \
    "went back" "gaps" "frames lost at the start"
row --- --- --- --- --- ---
print_row plain "Chromium"
print_row stalls "Chromium, its thread busy for 300 ms every 2 s"
print_row start "Chromium, its thread busy for the first second; one run"
print_row background "Chromium, 10 s in the background; one run"
print_row firefox "Firefox; one run"
