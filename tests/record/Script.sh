#!/usr/bin/env bash
# script/record, as a newcomer calls it. Argument: the case to run.
# shellcheck source=tests/record/record.sh
. "$(dirname "$0")/record.sh"

MakesTheVideoOfTheReadme() {
    run 0 "$sources/script/record" --help
    grep -q '^usage: skovra-record' out || fail "nothing is said of its use"
    run 0 "$sources/script/record" skovra.mp4
    expect_equal "pictures" 1321 "$(ffprobe -v error -select_streams v -count_packets \
        -show_entries stream=nb_read_packets -of csv=p=0 skovra.mp4)"
}

"$1"
