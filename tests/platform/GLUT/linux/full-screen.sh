#!/usr/bin/env bash
# What the full-screen tests share. Sourced first.
# shellcheck source=script/lib/show.sh
. "$(dirname "${BASH_SOURCE[0]}")/../../../../script/lib/show.sh"

# desktop: all of it that a full-screen program could leave changed.
desktop() {
    xrandr --verbose | grep -v Timestamp
    xrandr --listmonitors
    xdotool getmouselocation 2>/dev/null | sed 's/ window:.*//'
    echo "keyboard goes to $(xdotool getwindowfocus -f 2>/dev/null)"
    "$PROGRAMS/hold-input" try
}

is_desktop() {
    [ "$(desktop)" = "$1" ]
}

has_printed() {
    grep -qx "$1" "$headless_out" 2>/dev/null
}

has_only_printed() {
    [ "$(cat "$headless_out" 2>/dev/null)" = "$1" ]
}

# fill_screen WHAT [ARGUMENT...]: starts the program, which has to get WHAT, and nothing else before.
fill_screen() {
    local what=$1
    shift
    headless_launch "$PROGRAMS/fill-screen" "$@"
    headless_wait_until 20 "'$what'" has_only_printed "$what" || fail "full screen is another"
}

# expect_blue X Y...: that these points of the screen are painted.
expect_blue() {
    local picture=$headless_dir/screen.png
    headless_screenshot "$picture"
    while [ $# -gt 0 ]; do
        expect_equal "colour at $1,$2" "0,0,255" "$(colour_at "$picture" "$1" "$2" | cut -d , -f -3)"
        shift 2
    done
}

expect_keys_arrive() {
    headless_key a
    headless_wait_until 10 "the key to arrive" has_printed 'key a' || fail "no key arrived"
}

# expect_same_desktop HOW: the desktop before, during and after the program, ended by a key's name
# or a signal's; $what is what the program gets.
expect_same_desktop() {
    local before during status=0
    xdotool mousemove 100 200
    before=$(desktop)
    fill_screen "$what"
    during=$(desktop)
    expect_equal "monitors and modes meanwhile" "$(grep -v -e keyboard -e free <<<"$before")" \
        "$(grep -v -e keyboard -e free -e held <<<"$during")"
    case $1 in
    Escape) headless_key Escape ;;
    *) kill -s "$1" "$headless_pid" ;;
    esac
    headless_wait_exit "$headless_pid" || status=$?
    case $1 in
    Escape) expect_equal "exit status" 0 "$status" ;;
    *) expect_equal "exit status" $((128 + $(kill -l "$1"))) "$status" ;;
    esac
    # The window manager hands the keyboard on in its own time.
    headless_wait_until 5 "the desktop to be as before" is_desktop "$before" ||
        expect_equal "desktop afterwards" "$before" "$(desktop)"
}
