#!/usr/bin/env bash
# The show in full screen. Argument: the case to run.
# shellcheck source=script/lib/show.sh
. "$(dirname "$0")/../../script/lib/show.sh"

screen_size() {
    xdpyinfo | awk '/dimensions:/ { print $2; exit }'
}

# expect_covered_screen WIDTH HEIGHT: the topmost window under the pointer is the whole screen.
expect_covered_screen() {
    wait_for_position 200
    xdotool mousemove "$(($1 / 2))" "$(($2 / 2))"
    local window
    window=$(xdotool getmouselocation --shell | sed -n 's/^WINDOW=//p')
    expect_equal "display geometry" "0 0 $1 $2" "$(headless_geometry "$window")"
    expect_equal "cursor" hidden "$("$PROGRAMS/cursor-state")"
    expect_equal "screen size during the show" "${1}x$2" "$(screen_size)"
}

CoversTheScreenAndHidesTheCursor() {
    start_display
    open_full_screen "$PROGRAMS/skovra-positions"
    expect_covered_screen 1280 1024
    leave
    expect_output
    expect_equal "cursor afterwards" visible "$("$PROGRAMS/cursor-state")"
}

# answer_by_mouse QUARTER: a box without keyboard focus, by the button that stands there.
answer_by_mouse() {
    headless_wait_visible "$title" 60
    press_button "$1"
    headless_wait_gone "$headless_window"
}

CoversTheScreenWithoutAWindowManager() {
    headless_begin
    headless_start_xvfb
    without_sound
    launch "$PROGRAMS/skovra-positions"
    answer_by_mouse 2
    answer_by_mouse 3
    answer_by_mouse 2
    expect_covered_screen 1280 1024
    leave
}

EndsByItselfOnARealServer() {
    headless_begin
    headless_start_xorg 1280x1024 || exit $?
    headless_start_openbox
    without_sound
    open_full_screen "$PROGRAMS/skovra-positions"
    expect_covered_screen 1280 1024
    expect_exit 0 90
    expect_output
    expect_equal "screen size afterwards" 1280x1024 "$(screen_size)"
    expect_equal "cursor afterwards" visible "$("$PROGRAMS/cursor-state")"
}

"$1"
