#!/usr/bin/env bash
# The show without the streams that a program is started with. Argument: the case to run.
# shellcheck source=tests/endtoend/failure.sh
. "$(dirname "$0")/failure.sh"

# with_streams REDIRECTIONS COMMAND...
with_streams() {
    eval "exec \"\${@:2}\" $1"
}

# expect_null STREAM...: none of them is a file or a connection that the program has opened since.
expect_null() {
    local stream
    for stream in "$@"; do
        expect_equal "stream $stream" /dev/null "$(readlink "/proc/$headless_pid/fd/$stream")"
    done
}

# play_with REDIRECTIONS [STREAM...]: in a window, until Escape; those streams are closed.
play_with() {
    echo "skovra $1"
    headless_forget_windows
    launch with_streams "$1" "$PROGRAMS/skovra-positions"
    answer Escape
    headless_wait_active "$title"
    wait_for_position 300
    expect_null "${@:2}"
    leave 60
}

AllClosedAreNotMissed() {
    start_display
    play_with '<&- >&- 2>&-' 0 1 2
}

EachClosedIsNotMissed() {
    start_display
    play_with '<&-' 0
    expect_output
    expect_errors "$silence"
    play_with '>&-' 1
    expect_errors "$silence"
    play_with '2>&-' 2
    expect_output
}

FullOnesAreNotMissed() {
    start_display
    play_with '>/dev/full 2>/dev/full'
}

NobodyReadingThemIsNotMissed() {
    start_display
    play_with '> >(:) 2>&1'
}

WhatWasPrintedIsThereWhenABoxIs() {
    start_display
    launch "$PROGRAMS/skovra"
    headless_wait_active "$title" 60
    expect_start_only 'FMOD - Initiated'
}

# has_open NAME: whether the program has a file open whose name begins so.
has_open() {
    find "/proc/$headless_pid/fd" -lname "$1*" 2>/dev/null | grep -q .
}

RecorderDoesNotTakeThemForItsFiles() {
    headless_begin
    cd "$headless_dir"
    launch with_streams '<&- >&- 2>&-' "$PROGRAMS/skovra-record" --wav show.wav
    headless_wait_until 60 "the recording to begin" has_open "$headless_dir/show.wav"
    expect_null 0 1 2
}

"$1"
