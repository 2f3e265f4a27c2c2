#!/usr/bin/env bash
# Moments of the show, compared with the pictures kept in tests/golden/. Argument: the case to run.
# What differs is kept in the folder $DIFFERENCES.
# shellcheck source=tests/record/record.sh
. "$(dirname "$0")/record.sh"

golden=$sources/tests/golden
differences=${DIFFERENCES:-$scratch}
mkdir -p "$differences"

# take_pictures RECORDER [NAME]: each kept picture's moment, or only that one's, in its size.
take_pictures() {
    local kept arguments=() name size
    names=()
    for kept in "$golden"/${2:-*}.png; do
        name=${kept##*/}
        names+=("$name")
        arguments+=(--still "$((10#${name%.png}))=$name")
    done
    size=$(identify -format '%wx%h' "$kept")
    run 0 "$1" --size "$size" "${arguments[@]}"
}

# different_pictures CASE: names those taken that are not as kept.
different_pictures() {
    local name
    for name in "${names[@]}"; do
        "$PROGRAMS/compare-pictures" "$golden/$name" "$name" "$differences/$1.$name" >>compared ||
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

# expect_found FAULT MOMENT: the picture of that moment is seen to differ.
expect_found() {
    FAULT=$1 take_pictures "$PROGRAMS/skovra-record-faulty" "$2"
    expect_equal "pictures that differ" "$2" "$(different_pictures "${FUNCNAME[1]}")"
}

AFaultyRecorderWithoutAFaultIsAsKept() {
    take_pictures "$PROGRAMS/skovra-record-faulty"
    expect_equal "pictures that differ" "" "$(different_pictures "${FUNCNAME[0]}")"
}

ABarOfAnotherColourIsFound() {
    expect_found bar 22500
}

ATitlePictureInPlaceOfTheCreditsIsFound() {
    FAULT=picture take_pictures "$PROGRAMS/skovra-record-faulty"
    different=$(different_pictures "${FUNCNAME[0]}")
    expect_equal "pictures that differ" "15000 22500 29975" "$(xargs <<<"$different")"
}

APictureUpsideDownIsFound() {
    expect_found upside-down 00000
}

"$1"
