#!/usr/bin/env bash
# The show without one of its files. Argument: the case to run.
# shellcheck source=tests/endtoend/show.sh
. "$(dirname "$0")/show.sh"

warning='WARNING: CFURLGetFileSystemRepresentation returned FALSE'

# expect_music_error TEXT: everything up to the music's opening, then that text.
expect_music_error() {
    launch "$copy/skovra"
    expect_exit 255
    { expected_output | sed '/^Attempting/,$d'; printf 'Attempting to load file...%s\n' "$1"; } |
        cmp - "$headless_out" || fail "standard output differs"
}

MusicMissingEndsWithTheLibrarysError() {
    start_display
    copy_program
    rm "$copy/resources/synchtune.mp3"
    expect_music_error "$warning"$'\n''FMOD error! (22) File not found. '
}

MusicOfAnotherFormatEndsWithTheLibrarysError() {
    start_display
    copy_program
    cp "$copy/resources/skovr.png" "$copy/resources/synchtune.mp3"
    expect_music_error 'FMOD error! (24) Unsupported file or audio format. '
}

expect_warning_and_show_without() {
    start_display
    copy_program
    rm "$copy/resources/$1.png"
    open_in_window "$copy/skovra-positions"
    wait_for_position 2000
    headless_key Escape
    expect_exit 0
    expect_output "$warning"
}

PictureTextureMissingWarnsAndPlaysOn() { expect_warning_and_show_without texture; }
PictureSkovrMissingWarnsAndPlaysOn() { expect_warning_and_show_without skovr; }
PictureCreditsMissingWarnsAndPlaysOn() { expect_warning_and_show_without credits; }

"$1"
