#!/usr/bin/env bash
# Alert boxes answered as a viewer answers them. Argument: the case to run.
# shellcheck source=script/lib/show.sh
. "$(dirname "$0")/../../../../script/lib/show.sh"

box='"Skovra" (1)'
yes='question: created yes, run yes, item 1, 1.5'
no='question: created yes, run yes, item 2, 1.5'
noticed='notice: created yes, run yes, item 1, 1.5'

# show_boxes KIND...: each of "notice", "question" or "pause", see ShowAlerts.cpp.
show_boxes() {
    headless_launch "$PROGRAMS/show-alerts" "$@"
    headless_wait_active "$box"
}

expect_answers() {
    expect_exit 0
    expect_equal "answers" "$(printf '%s\n' "$@")" "$(cat "$headless_out")"
}

TabAndReturnAnswersNo() {
    start_display
    show_boxes question
    headless_key Tab Return
    expect_answers "$no"
}

ClickOnNoAnswersNo() {
    start_display
    show_boxes question
    press_button 1
    expect_answers "$no"
}

ClickOnYesAnswersYes() {
    start_display
    show_boxes question
    press_button 3
    expect_answers "$yes"
}

ClosingTheBoxAnswersNo() {
    start_display
    show_boxes question
    headless_key alt+F4
    expect_answers "$no"
}

ReturnEscapeAndClickDismissANotice() {
    start_display
    show_boxes notice notice notice
    headless_key Return
    headless_wait_active "$box"
    headless_key Escape
    headless_wait_active "$box"
    press_button 2
    expect_answers "$noticed" "$noticed" "$noticed"
}

BoxesFollowOneAnother() {
    start_display
    show_boxes notice question question notice
    headless_key Return
    headless_wait_active "$box"
    headless_key Escape
    headless_wait_active "$box"
    headless_key Return
    headless_wait_active "$box"
    headless_key Return
    expect_answers "$noticed" "$no" "$yes" "$noticed"
}

BoxLeavesTheScreenOnceAnswered() {
    start_display
    show_boxes notice pause
    headless_key Return
    headless_wait_gone "$headless_window"
}

expect_a_question_to_work() {
    show_boxes question
    headless_key Return
    expect_answers "$yes"
}

expect_nothing_shown() {
    headless_launch "$PROGRAMS/show-alerts" notice question
    expect_answers 'notice: created no, run no, item 0, 1.5' \
        'question: created no, run no, item 0, 1.5'
}

WithoutADisplayNothingIsShown() {
    headless_begin
    unset DISPLAY WAYLAND_DISPLAY
    expect_nothing_shown
}

WithADeadDisplayNothingIsShown() {
    headless_begin
    export DISPLAY=:54321 # no server takes such a number by itself
    expect_nothing_shown
}

CommaLocaleDoesNotReachTheProgramsNumbers() {
    start_display
    localedef -i de_DE -f UTF-8 "$headless_dir/de_DE.UTF-8"
    export LOCPATH=$headless_dir LC_ALL=de_DE.UTF-8
    expect_equal "a number where the locale counts" "1,5" "$(bash -c 'printf %.1f 1,5')"
    expect_a_question_to_work
}

has_socket() {
    [ -S "$headless_dir/wayland" ]
}

# A compositor that accepts connections and never says a word: asking it would take forever.
WaylandDesktopStillGetsXBoxes() {
    start_display
    perl -MSocket -e 'socket(S, PF_UNIX, SOCK_STREAM, 0) and bind(S, pack_sockaddr_un($ARGV[0]))
        and listen(S, 5) and sleep(100)' "$headless_dir/wayland" &
    headless_pids+=("$!")
    headless_wait_until 10 "the mute compositor" has_socket
    unset GDK_BACKEND
    export WAYLAND_DISPLAY=$headless_dir/wayland
    expect_a_question_to_work
}

AnotherToolkitBackendAskedForStillGetsXBoxes() {
    start_display
    export GDK_BACKEND=wayland
    expect_a_question_to_work
}

"$1"
