#!/usr/bin/env bash
# Moments of the show, compared with the pictures kept in tests/golden/. Argument: the case to run.
# What differs is kept in the folder $DIFFERENCES.
# shellcheck source=tests/record/record.sh
. "$(dirname "$0")/record.sh"

golden=$sources/tests/golden
differences=${DIFFERENCES:-$scratch}
mkdir -p "$differences"

# take_pictures RECORDER: each kept picture's moment, in that picture's size.
take_pictures() {
    local kept arguments=() name size
    for kept in "$golden"/*.png; do
        name=${kept##*/}
        arguments+=(--still "$((10#${name%.png}))=$name")
    done
    size=$(identify -format '%wx%h' "$kept")
    run 0 "$1" --size "$size" "${arguments[@]}"
}

# different_pictures CASE: names those that are not as kept.
different_pictures() {
    local kept name
    for kept in "$golden"/*.png; do
        name=${kept##*/}
        "$PROGRAMS/compare-pictures" "$kept" "$name" "$differences/$1.$name" >>compared ||
            printf '%s\n' "${name%.png}"
    done
}

PicturesAreAsKept() {
    take_pictures "$recorder"
    local different
    different=$(different_pictures "${FUNCNAME[0]}")
    cat compared
    expect_equal "pictures that differ, see $differences" "" "$different"
}

# expect_found FAULT MOMENT: that picture is seen to differ.
expect_found() {
    export FAULT=$1
    take_pictures "$PROGRAMS/skovra-record-faulty"
    different=$(different_pictures "${FUNCNAME[1]}")
    grep -qx "$2" <<<"$different" || { cat compared && fail "fault $1 is not found at $2 ms"; }
}

AFaultyRecorderWithoutAFaultIsAsKept() {
    take_pictures "$PROGRAMS/skovra-record-faulty"
    expect_equal "pictures that differ" "" "$(different_pictures "${FUNCNAME[0]}")"
}

ABarOfAnotherColourIsFound() {
    expect_found bar 22500
}

ATitlePictureInPlaceOfTheCreditsIsFound() {
    expect_found picture 15000
    expect_equal "pictures that differ" "15000 22500 29975" "$(xargs <<<"$different")"
}

APictureUpsideDownIsFound() {
    expect_found upside-down 00000
}

"$1"
