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
    headless_key Escape
    expect_exit 0
    expect_output
    expect_equal "cursor afterwards" visible "$("$PROGRAMS/cursor-state")"
}

# Boxes without keyboard focus are answered by the mouse: their buttons stand at the lower edge.
press_button() {
    local geometry
    headless_wait_visible "$title" 60
    read -r -a geometry <<<"$(headless_geometry "$headless_window")"
    headless_click "$headless_window" $((geometry[2] * $1 / 4)) $((geometry[3] - 20))
    headless_wait_gone "$headless_window"
}

CoversTheScreenWithoutAWindowManager() {
    headless_begin
    headless_start_xvfb
    without_sound
    launch "$PROGRAMS/skovra-positions"
    press_button 2
    press_button 3
    press_button 2
    expect_covered_screen 1280 1024
    headless_key Escape
    expect_exit 0
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
