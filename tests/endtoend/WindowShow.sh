#!/usr/bin/env bash
# The whole show in window mode. Argument: the case to run.
# shellcheck source=script/lib/show.sh
. "$(dirname "$0")/../../script/lib/show.sh"

# class_of WINDOW: its name and class, by which desktops group windows.
class_of() {
    xprop -id "$1" WM_CLASS | sed 's/.*= //'
}

RunsFromStartToFinish() {
    local class
    launch "$PROGRAMS/skovra-positions"
    headless_wait_active "$title" 60
    class=$(class_of "$headless_window")
    expect_equal "class of a box" '"skovra-positions", "Skovra-positions"' "$class"
    headless_forget_windows # that box is still to be answered
    answer Escape
    headless_wait_active "$title"
    expect_equal "class of the window" "$class" "$(class_of "$headless_window")"
    expect_window "$headless_window"
    expect_exit 0 90
    expect_output
    expect_positions_of_a_whole_show
    expect_equal "lines on standard error" 1 "$(wc -l <"$headless_err")"
    grep -q 'no sound device' "$headless_err" || fail "silence is not announced"
}

# expect_picture POSITION UPPER LOWER: the colours above and below the picture's middle line, at
# the right of the window, where the bars are low.
expect_picture() {
    local shot=$headless_dir/$1.png
    wait_for_position "$1"
    headless_screenshot "$shot"
    expect_equal "upper half at $1 ms" "$2" "$(colour_at "$shot" $((200 + 900)) $((200 + 200)))"
    expect_equal "lower half at $1 ms" "$3" "$(colour_at "$shot" $((200 + 900)) $((200 + 450)))"
}

ShowsTitleThenCreditsThenNoPicture() {
    copy_program
    paint_pictures
    open_in_window "$copy/skovra-positions"
    expect_picture 5000 192,32,32 96,16,16
    expect_picture 13500 192,32,32 96,16,16
    expect_picture 15500 32,32,192 16,16,96
    expect_picture 28500 32,32,192 16,16,96
    expect_picture 30500 0,0,0 0,0,0
    expect_exit 0 30
}

start_display
"$1"
