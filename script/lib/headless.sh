#!/usr/bin/env bash
# A display without a screen: X servers, a window manager, screenshots, simulated keys and clicks.
#
# Source it, from bash. Everything it starts it also ends, each by its own process id, when the
# sourcing script exits; all waits are bounded and say what they waited for when they give up.
#
#   . script/lib/headless.sh
#   headless_begin                          # once, first; takes over the EXIT trap
#   headless_start_xvfb                     # or headless_start_xorg: 77 where it cannot run
#   headless_start_openbox                  # GTK boxes get no keyboard without a window manager
#   headless_launch build/dev/bin/skovra    # its pid is $headless_pid
#   headless_wait_active '"QVZ 02 - Skovra"' 30
#   headless_key Escape
#   headless_screenshot show.png
#   headless_wait_exit "$headless_pid" 60   # returns the program's status, 124 when it stays
#
# headless_begin                         a scratch folder, $headless_dir; cleaning up at exit, by
#                                        headless_end; the caller's own cleanup goes into a
#                                        function named headless_at_exit
# headless_start_xvfb [WxHxDEPTH [OPTION...]]
#                                        a screen of 1280x1024x24 unless told otherwise
# headless_start_xorg [MODE...]          a real X server on the dummy driver, its modes by name,
#                                        the first the current one: 1280x1024 1024x768 by default
#                                        Both set DISPLAY and the environment of all that follows.
# headless_start_openbox                 returns when it manages windows; exports
# headless_launch COMMAND [ARGUMENT...]  in the background, standard output and error to the files
#                                        $headless_out and $headless_err; sets $headless_pid
# headless_wait_active NAME [SECONDS]    until a window of exactly that name, not one waited for
#                                        before, is visible and has the keyboard; sets
#                                        $headless_window
# headless_wait_visible NAME [SECONDS]   the same for windows that no window manager manages
# headless_forget_windows               all windows are new again: after a program has ended, the
#                                        next one's may get the same numbers
# headless_wait_gone WINDOW [SECONDS]    until that window is no longer visible
# headless_wait_until SECONDS WHAT COMMAND [ARGUMENT...]
#                                        until the command succeeds
# headless_wait_exit PID [SECONDS]       until a program launched here ends
# headless_key KEY...                    presses keys, named as xdotool names them
# headless_click WINDOW X Y              clicks there, in pixels from the window's corner
# headless_geometry WINDOW               prints "X Y WIDTH HEIGHT", in pixels of the screen
# headless_screenshot FILE [WINDOW]      the whole screen, or what a window shows, as a picture file
# headless_stop PID                      ends a program started here
# headless_end                           ends everything started here, latest first
#
# A wait without SECONDS lasts at most 20 s. Needs: xvfb openbox xdotool x11-utils imagemagick,
# and xserver-xorg-core xserver-xorg-video-dummy for headless_start_xorg.

headless_pids=()
headless_seen=" "
headless_limit=20

headless_say() {
    printf 'headless: %s\n' "$*" >&2
}

headless_begin() {
    headless_dir=$(mktemp -d) || return 1
    trap headless_end EXIT
    trap 'exit 130' INT
    trap 'exit 143' TERM
}

headless_end() {
    local status=$?
    trap - EXIT
    set +e # whatever else fails, all that was started has to end
    local i
    for ((i = ${#headless_pids[@]} - 1; i >= 0; i--)); do
        headless_stop "${headless_pids[i]}"
    done
    headless_pids=()
    if declare -F headless_at_exit >/dev/null; then
        headless_at_exit
    fi
    [ -z "${headless_dir:-}" ] || rm -rf --one-file-system -- "$headless_dir"
    return "$status"
}

# Waiting -----------------------------------------------------------------------------------------

headless_wait_until() {
    local seconds=$1 what=$2
    shift 2
    local end=$((SECONDS + seconds))
    until "$@"; do
        if ((SECONDS > end)); then
            headless_say "waited $seconds s in vain for $what"
            return 1
        fi
        sleep 0.05
    done
}

headless_has_ended() {
    local state
    # A zombie has ended: its status waits to be read.
    state=$(sed -n 's/^State:[[:space:]]*\(.\).*/\1/p' "/proc/$1/status" 2>/dev/null) || return 0
    [ -z "$state" ] || [ "$state" = Z ] || [ "$state" = X ]
}

headless_wait_exit() {
    local pid=$1 seconds=${2:-$headless_limit}
    headless_wait_until "$seconds" "process $pid to end" headless_has_ended "$pid" || return 124
    headless_forget "$pid"
    wait "$pid"
}

headless_forget() {
    local left=() pid
    for pid in "${headless_pids[@]}"; do
        [ "$pid" = "$1" ] || left+=("$pid")
    done
    headless_pids=("${left[@]}")
}

headless_stop() {
    local pid=$1
    headless_forget "$pid"
    if ! headless_has_ended "$pid"; then
        kill -TERM "$pid" 2>/dev/null || :
        headless_wait_until 5 "process $pid to end when asked" headless_has_ended "$pid" ||
            kill -KILL "$pid" 2>/dev/null || :
    fi
    wait "$pid" 2>/dev/null || :
}

# Servers -----------------------------------------------------------------------------------------

headless_environment() {
    export DISPLAY=$1
    export NO_AT_BRIDGE=1 GDK_BACKEND=x11 DBUS_SESSION_BUS_ADDRESS=disabled: LIBGL_ALWAYS_SOFTWARE=1
    unset WAYLAND_DISPLAY
    headless_seen=" "
}

# headless_server SECONDS COMMAND...: the server writes its display number to descriptor 3.
headless_server() {
    local seconds=$1 pid
    shift
    rm -f "$headless_dir/display"
    "$@" 3>"$headless_dir/display" >"$headless_dir/server.log" 2>&1 &
    pid=$!
    headless_pids+=("$pid")
    headless_wait_until "$seconds" "$1 to be ready" headless_server_settled "$pid" || :
    if [ ! -s "$headless_dir/display" ]; then
        headless_say "$1 did not start: $(tail -n 3 "$headless_dir/server.log" | tr '\n' ' ')"
        headless_stop "$pid"
        return 1
    fi
    headless_environment ":$(cat "$headless_dir/display")"
}

headless_server_settled() {
    [ -s "$headless_dir/display" ] || headless_has_ended "$1"
}

headless_start_xvfb() {
    headless_server 30 Xvfb -displayfd 3 -noreset -nolisten tcp \
        -screen 0 "${1:-1280x1024x24}" "${@:2}"
}

headless_start_xorg() {
    local modes=("$@") mode names=""
    [ $# -gt 0 ] || modes=(1280x1024 1024x768)
    for mode in "${modes[@]}"; do
        names+=" \"$mode\""
    done
    cat >"$headless_dir/xorg.conf" <<CONFIGURATION
Section "ServerFlags"
    Option "AutoAddDevices" "false"
    Option "AutoAddGPU" "false"
EndSection
Section "Device"
    Identifier "card"
    Driver "dummy"
    VideoRam 65536
EndSection
Section "Monitor"
    Identifier "monitor"
    HorizSync 5.0-200.0
    VertRefresh 5.0-100.0
EndSection
Section "Screen"
    Identifier "screen"
    Device "card"
    Monitor "monitor"
    DefaultDepth 24
    SubSection "Display"
        Depth 24
        Modes$names
        Virtual ${modes[0]/x/ }
    EndSubSection
EndSection
CONFIGURATION
    if ! command -v Xorg >/dev/null; then
        headless_say "could not run: there is no Xorg on this machine"
        return 77
    fi
    if ! headless_server 30 Xorg -displayfd 3 -config "$headless_dir/xorg.conf" \
        -logfile "$headless_dir/Xorg.log" -noreset -novtswitch -sharevts -nolisten tcp vt1; then
        headless_say "could not run: Xorg with the dummy driver does not start on this machine"
        return 77
    fi
}

headless_start_openbox() {
    rm -f "$headless_dir/READY"
    # A virtual keyboard's first key brings a map of keys. Bound anew for that, keys pressed right
    # then are missed.
    mkdir -p "$headless_dir/openbox"
    sed 's|<keyboard>|&<rebindOnMappingNotify>no</rebindOnMappingNotify>|' \
        /etc/xdg/openbox/rc.xml >"$headless_dir/openbox/rc.xml"
    # Its own settings, not the user's.
    XDG_CONFIG_HOME="$headless_dir" XDG_CACHE_HOME="$headless_dir" XDG_DATA_HOME="$headless_dir" \
        openbox --startup "touch '$headless_dir/READY'" \
        >"$headless_dir/openbox.log" 2>&1 &
    headless_pids+=("$!")
    headless_wait_until 30 "openbox to be ready" [ -e "$headless_dir/READY" ]
}

# Programs ----------------------------------------------------------------------------------------

headless_launches=0

headless_launch() {
    headless_launches=$((headless_launches + 1))
    headless_out="$headless_dir/out.$headless_launches"
    headless_err="$headless_dir/err.$headless_launches"
    "$@" >"$headless_out" 2>"$headless_err" &
    headless_pid=$!
    headless_pids+=("$headless_pid")
}

# Windows, input and screenshots ------------------------------------------------------------------

# headless_find NAME: the visible windows of exactly that name that were not waited for before.
headless_find() {
    local name window
    name=$(printf '%s' "$1" | sed 's/[][\.*^$+?(){}|]/\\&/g')
    for window in $(xdotool search --onlyvisible --name "^$name\$" 2>/dev/null); do
        [[ $headless_seen == *" $window "* ]] || printf '%s\n' "$window"
    done
}

headless_is_active() {
    local active
    active=$(xdotool getactivewindow 2>/dev/null) || return 1
    headless_find "$1" | grep -qx "$active" || return 1
    headless_window=$active
}

headless_is_visible() {
    local found
    found=$(headless_find "$1" | head -n 1)
    [ -n "$found" ] || return 1
    headless_window=$found
}

headless_is_gone() {
    ! xwininfo -id "$1" 2>/dev/null | grep -q 'IsViewable'
}

headless_wait_active() {
    headless_wait_until "${2:-$headless_limit}" "a new window '$1' to be the active one" \
        headless_is_active "$1" || return 1
    headless_seen+="$headless_window "
}

headless_wait_visible() {
    headless_wait_until "${2:-$headless_limit}" "a new window '$1' to be visible" \
        headless_is_visible "$1" || return 1
    headless_seen+="$headless_window "
}

headless_forget_windows() {
    headless_seen=" "
}

headless_wait_gone() {
    headless_wait_until "${2:-$headless_limit}" "window $1 to go" headless_is_gone "$1"
}

headless_key() {
    xdotool key "$@"
}

headless_click() {
    xdotool mousemove --window "$1" "$2" "$3" click 1
}

headless_geometry() {
    xwininfo -id "$1" | awk '
        /Absolute upper-left X/ { x = $NF }
        /Absolute upper-left Y/ { y = $NF }
        /^ *Width:/ { width = $NF }
        /^ *Height:/ { height = $NF }
        END { print x, y, width, height }'
}

headless_screenshot() {
    # Of a window that has just gone, import would wait for a click.
    timeout 20 import -window "${2:-root}" "$1"
}
