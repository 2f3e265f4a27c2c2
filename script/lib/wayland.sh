#!/usr/bin/env bash
# Wayland compositors without a screen, each with an Xwayland. Sourced after show.sh.
#
#   drop_root SCRIPT ARGUMENT...              first: compositors refuse root
#   start_compositor NAME [OUTPUTS [SCALE]]   sway, weston, kwin or mutter. The outputs are 1280x1024
#                                             each, side by side. DISPLAY is then Xwayland's.
#   start_sway_without_xwayland
#   headless_key KEY...                       presses keys on the compositor's own keyboard
#   compositor_screenshot FILE                what the compositor shows
#
# Each ends the script with 77 where its compositor is missing. Needs: xwayland, sway wtype grim,
# weston, kwin-wayland, mutter.
# shellcheck disable=SC2154 # headless_dir is assigned by headless.sh, wayland_display by a session

# drop_root SCRIPT ARGUMENT...: runs the script again as an ordinary user where it is root's.
drop_root() {
    local ordinary=(setpriv --reuid=nobody --regid=nogroup --clear-groups --inh-caps=-all)
    [ "$(id -u)" = 0 ] || return 0
    if ! "${ordinary[@]}" test -r "$1" -a -x "$PROGRAMS"; then
        headless_say "could not run: compositors refuse root, and an ordinary user cannot get here"
        exit 77
    fi
    exec "${ordinary[@]}" bash "$@"
}

# require PROGRAM...
require() {
    local program
    for program in "$@"; do
        command -v "$program" >/dev/null || {
            headless_say "could not run: there is no $program on this machine"
            exit 77
        }
    done
}

# start_compositor NAME [OUTPUTS [SCALE]]
start_compositor() {
    own_settings
    require Xwayland
    unset DISPLAY WAYLAND_DISPLAY
    "start_$1" "${2:-1}" "${3:-1}"
    headless_wait_until 60 "Xwayland on $1" [ -s "$headless_dir/session" ] || no_compositor
    # As in a session: programs that support both protocols have to choose.
    # shellcheck disable=SC1091
    . "$headless_dir/session"
    headless_environment "$DISPLAY"
    export WAYLAND_DISPLAY=$wayland_display
    unset GDK_BACKEND
}

no_compositor() {
    tail -n 20 "$headless_dir/compositor.log" >&2
    fail "the compositor did not start"
}

# own_settings: in place of the user's.
own_settings() {
    export HOME=$headless_dir/home
    mkdir -p "$HOME"
    unset XDG_CONFIG_HOME XDG_CACHE_HOME XDG_DATA_HOME XDG_STATE_HOME XAUTHORITY SWAYSOCK
    # What a compositor starts in its session: tells where Xwayland and the compositor are.
    cat >"$headless_dir/tell" <<SCRIPT
#!/bin/sh
{
    echo "export DISPLAY='\$DISPLAY' XAUTHORITY='\$XAUTHORITY' SWAYSOCK='\$SWAYSOCK'"
    echo "wayland_display='\$WAYLAND_DISPLAY'"
} >"$headless_dir/session.new"
mv "$headless_dir/session.new" "$headless_dir/session"
[ "\$1" != stay ] || exec setpriv --pdeathsig TERM sleep infinity
SCRIPT
    chmod +x "$headless_dir/tell"
}

launch_compositor() {
    "$@" >"$headless_dir/compositor.log" 2>&1 &
    headless_pids+=("$!")
}

# start_bus: a session bus that starts nothing by itself.
start_bus() {
    local socket=$XDG_RUNTIME_DIR/bus
    cat >"$headless_dir/bus.conf" <<CONFIGURATION
<busconfig>
  <type>session</type>
  <listen>unix:path=$socket</listen>
  <policy context="default">
    <allow send_destination="*" eavesdrop="true"/>
    <allow eavesdrop="true"/>
    <allow own="*"/>
  </policy>
</busconfig>
CONFIGURATION
    dbus-daemon --nofork --config-file="$headless_dir/bus.conf" >"$headless_dir/bus.log" 2>&1 &
    headless_pids+=("$!")
    headless_wait_until 30 "the session bus" [ -S "$socket" ]
    export DBUS_SESSION_BUS_ADDRESS=unix:path=$socket
}

# Without a display of any kind -------------------------------------------------------------------

start_sway() {
    local i
    require sway wtype grim
    {
        for ((i = 1; i <= $1; i++)); do
            echo "output HEADLESS-$i resolution 1280x1024 scale $2 position $(((i - 1) * 1280)) 0"
        done
        echo "exec $headless_dir/tell"
    } >"$headless_dir/sway.conf"
    launch_compositor env WLR_BACKENDS=headless WLR_HEADLESS_OUTPUTS="$1" WLR_LIBINPUT_NO_DEVICES=1 \
        WLR_RENDERER=pixman sway --config "$headless_dir/sway.conf"
    # shellcheck disable=SC2317 # for the tests
    headless_key() {
        local key
        for key in "$@"; do
            # Of a keyboard that has just come, programs miss the first key.
            wtype -s 300 -k "$key"
        done
    }
    # shellcheck disable=SC2317
    compositor_screenshot() {
        grim "$1"
    }
}

# In windows of an X server -----------------------------------------------------------------------

# start_outer_display OUTPUTS: the compositor's keyboard is this server's.
start_outer_display() {
    headless_start_xvfb "$(($1 * 1300))x1100x24"
    headless_start_openbox
    outer_display=$DISPLAY
    # shellcheck disable=SC2317
    headless_key() {
        DISPLAY=$outer_display xdotool key "$@"
    }
    # shellcheck disable=SC2317
    compositor_screenshot() {
        DISPLAY=$outer_display timeout 40 import -window root "$1"
    }
}

start_weston() {
    local backend=x11
    require weston
    ! weston --help | grep -q x11-backend.so || backend=x11-backend.so # before weston 12
    start_outer_display "$1"
    printf '[autolaunch]\npath=%s\n' "$headless_dir/tell" >"$headless_dir/weston.ini"
    launch_compositor weston --backend="$backend" --xwayland --config="$headless_dir/weston.ini" \
        --idle-time=0 --width=1280 --height=1024 --output-count="$1" --scale="$2"
}

start_kwin() {
    require kwin_wayland
    start_outer_display "$1"
    # Without its capabilities, which not everywhere can be granted.
    cp "$(command -v kwin_wayland)" "$headless_dir/kwin_wayland"
    start_bus
    launch_compositor "$headless_dir/kwin_wayland" --x11-display "$outer_display" --xwayland \
        --no-lockscreen --no-global-shortcuts --width 1280 --height 1024 --output-count "$1" \
        --scale "$2" "$headless_dir/tell"
}

start_mutter() {
    require mutter
    start_outer_display "$1"
    start_bus
    # It ends with the command.
    launch_compositor env MUTTER_DEBUG_NUM_DUMMY_MONITORS="$1" \
        MUTTER_DEBUG_DUMMY_MODE_SPECS=1280x1024 MUTTER_DEBUG_DUMMY_MONITOR_SCALES="$2" \
        mutter --nested --wayland -- "$headless_dir/tell" stay
}

# GTK on Wayland passes over keys of a keyboard without a clock, as wtype's is: a nested one.
start_sway_without_xwayland() {
    require sway
    own_settings
    start_outer_display 1
    printf 'xwayland disable\nexec %s\n' "$headless_dir/tell" >"$headless_dir/sway.conf"
    launch_compositor env WLR_BACKENDS=x11 WLR_RENDERER=pixman sway --config "$headless_dir/sway.conf"
    headless_wait_until 60 "sway" [ -s "$headless_dir/session" ] || no_compositor
    # shellcheck disable=SC1091
    . "$headless_dir/session"
    unset DISPLAY XAUTHORITY
    export WAYLAND_DISPLAY=$wayland_display
}
