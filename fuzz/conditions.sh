#!/usr/bin/env bash
# The random conditions of a run of fuzz/chaos, which sources this.
# shellcheck source=script/lib/show.sh
. "$(dirname "${BASH_SOURCE[0]}")/../script/lib/show.sh"

resources=(synchtune.mp3 texture.png skovr.png credits.png)
damage=(missing empty cut long flipped header other folder fifo dangling device forbidden)

declare -gA choice=() # what was drawn
drawn=""              # what of it is unusual
environment=()        # of the program
limits=()             # of its resources
seed=0                # of all that is drawn
uid=""                # of the program
as=()                 # the command that makes it so
run=""                # a folder of this run's own
sound_server=""       # the pid of its server

# chance ODDS: true once in so many times; never with seed 0, for usual conditions.
chance() {
    ((RANDOM % $1 == 0 && seed != 0))
}

# draw NAME ODDS USUAL OTHER...: ${choice[NAME]} is USUAL, or by chance one of the others.
draw() {
    local others=("${@:4}")
    choice[$1]=$3
    if chance "$2"; then
        choice[$1]=${others[RANDOM % ${#others[@]}]}
        drawn+=" $1='${choice[$1]}'"
    fi
}

# is NAME CHOICE...: whether one of these was drawn for NAME.
is() {
    local each
    for each in "${@:2}"; do
        [ "${choice[$1]}" != "$each" ] || return 0
    done
    return 1
}

# draw_variable NAME ODDS USUAL OTHER...: for the program's environment, which lacks it if "unset".
draw_variable() {
    draw "$@"
    is "$1" unset || environment+=("$1=${choice[$1]}")
}

draw_limit() {
    draw "$1" 15 none "${@:2}"
    is "$1" none || limits+=("--$1=${choice[$1]}")
}

# choose_user: if possible, one for this run only, without privileges; the limit of its threads then
# counts no others.
choose_user() {
    uid=$((61200 + seed % 4000))
    as=(setpriv --reuid "$uid" --clear-groups)
    "${as[@]}" true 2>/dev/null || as=() uid=$(id -u)
}

# start_servers: of display and sound.
start_servers() {
    local options=(-ac) # the program is another user's
    draw screen 10 1280x1024x24 320x200x24 1024x768x16 640x480x8
    draw lacking 15 nothing GLX RANDR MIT-SHM XFree86-VidModeExtension
    draw manager 10 openbox none
    draw sound 2 none pulse pulse pipewire later-pulse later-pipewire
    is lacking nothing || options+=(-extension "${choice[lacking]}")
    headless_start_xvfb "${choice[screen]}" "${options[@]}"
    is manager none || headless_start_openbox
    without_sound
    ! is sound pulse pipewire || start_sound
}

start_sound() {
    case ${choice[sound]} in
    none) return ;;
    *pulse) start_sound_server ;;
    *pipewire) start_pipewire && sound_server=${pipewire:-} ;;
    esac
    chmod -R a+rwX "$XDG_RUNTIME_DIR" || : # some may have gone meanwhile
}

# send SIGNAL PID: to a process that may have ended.
send() {
    [ -z "$2" ] || kill -s "$1" "$2" 2>/dev/null || :
}

# kill_sound: and all that was started with the server.
kill_sound() {
    local pid
    [ -n "$sound_server" ] || return 0
    send KILL "$sound_server"
    sound_server=""
    for pid in ${wireplumber:-} ${pipewire_pulse:-} ${pipewire_bus:-}; do
        headless_stop "$pid"
    done
}

draw_environment() {
    local name pulse=unix:$XDG_RUNTIME_DIR/pulse-socket
    ! is sound pipewire later-pipewire || pulse=unix:$XDG_RUNTIME_DIR/pulse/native
    environment=("PATH=$PATH" "CHAOS_RUN=$run" LIBGL_ALWAYS_SOFTWARE=1 NO_AT_BRIDGE=1
        DBUS_SESSION_BUS_ADDRESS=disabled:)
    draw_variable DISPLAY 12 "$DISPLAY" unset '' :4711 nonsense
    draw_variable LC_ALL 6 unset C de_DE.UTF-8 tr_TR.UTF-8 nonsense
    draw_variable SKOVRA_SOUND 6 unset none pulse pipewire alsa jack nonsense
    draw_variable PULSE_SERVER 8 "$pulse" unset '' nonsense unix:/nowhere
    draw_variable PIPEWIRE_REMOTE 8 unset '' nonsense /nowhere
    draw_variable XDG_RUNTIME_DIR 10 "$XDG_RUNTIME_DIR" unset "$run"/{nowhere,file,forbidden}
    draw_variable HOME 10 "$run/home" unset "$run"/{nowhere,file,forbidden}
    for name in XDG_{CACHE,CONFIG,DATA,STATE}_HOME TMPDIR; do
        draw_variable "$name" 15 unset "$run"/{nowhere,file,forbidden}
    done
}

draw_limits() {
    draw_limit nofile 3 8 16 24 32 48 56 64 80 100 128
    draw_limit as {1,3,6,9,10,11,12,13,14,16,20}00000000
    draw_limit stack 200000 1000000 100000000 unlimited
    [ "${#as[@]}" -eq 0 ] || draw_limit nproc 1 2 4 8 12 16 17 18 20 24 32 40
    draw_limit fsize 0 100 100000
}

# put_byte FILE BYTES: a random one somewhere in the first so many.
put_byte() {
    local byte offset=$(((RANDOM * 32768 + RANDOM) % $2))
    printf -v byte '\\x%02x' $((RANDOM % 256))
    printf '%b' "$byte" | dd of="$1" bs=1 seek="$offset" conv=notrunc status=none
}

# change_header FILE: a picture's has the right checksum again.
change_header() {
    local header=$headless_dir/header
    if [[ $1 != *.png ]]; then
        put_byte "$1" 64
        return
    fi
    head -c 29 "$1" | tail -c 17 >"$header" # "IHDR" and 13 bytes
    put_byte "$header" 17
    printf IHDR | dd of="$header" conv=notrunc status=none
    # It is gzip's, the other way round.
    printf '%b' "$(gzip -c "$header" | tail -c 8 | od -An -N4 -to1 |
        awk '{ printf "\\0%s\\0%s\\0%s\\0%s", $4, $3, $2, $1 }')" >>"$header"
    dd if="$header" of="$1" bs=1 seek=12 conv=notrunc status=none
}

# spoil FILE DAMAGE
spoil() {
    local size i
    size=$(stat -c %s "$1")
    case $2 in
    missing) rm "$1" ;;
    empty) : >"$1" ;;
    cut) truncate -s $(((RANDOM * 32768 + RANDOM) % size)) "$1" ;;
    long) truncate -s +50G "$1" ;; # sparse
    flipped) for ((i = RANDOM % 30; i >= 0; i--)); do put_byte "$1" "$size"; done ;;
    header) change_header "$1" ;;
    other) cp "$PROGRAMS/resources/${resources[RANDOM % 4]}" "$1" ;;
    folder) rm "$1" && mkdir "$1" ;;
    fifo) rm "$1" && mkfifo "$1" ;;
    dangling) ln -sf nothing "$1" ;;
    device) ln -sf /dev/zero "$1" ;;
    forbidden) chmod 000 "$1" ;;
    esac
}

make_files() {
    local name
    mkdir -p "$run/program" "$run/home" "$run/folder" "$run/forbidden"
    : >"$run/file"
    cp -r "$PROGRAMS/skovra" "$PROGRAMS/resources" "$run/program"
    for name in "${resources[@]}"; do
        draw "$name" 8 whole "${damage[@]}"
        spoil "$run/program/resources/$name" "${choice[$name]}"
    done
    chown "$uid" "$run/home" "$run/folder"
    chmod 000 "$run/forbidden"
}

# files: where the program could have written some. Caches of libraries are not listed.
files() {
    {
        find "$run" \( -path "$run/home/.cache" -o -path "$run/home/.config/pulse" -o \
            -path "$run/nowhere" \) -prune -o ! -type d -print
        find /dev/shm -maxdepth 1 -user "$uid"
    } 2>/dev/null | sort || : # some folders may not be read
}
