#!/usr/bin/env bash
# The show with one of its files missing or of no use. Argument: the case to run.
# shellcheck source=tests/endtoend/failure.sh
. "$(dirname "$0")/failure.sh"

warning='WARNING: CFURLGetFileSystemRepresentation returned FALSE'
not_found="$warning"$'\n''FMOD error! (22) File not found. '
bad_file='FMOD error! (19) Error loading file. '
bad_format='FMOD error! (24) Unsupported file or audio format. '

empty() { : >"$1"; }
cut_in_the_middle() { truncate -s $(($(stat -c %s "$1") / 2)) "$1"; }
garble() { head -c 64 /dev/zero | tr '\0' '?' | dd of="$1" conv=notrunc status=none; }
forbid() { chmod 000 "$1"; }
link_to_nothing() { ln -sf nothing "$1"; }
make_folder() {
    rm "$1"
    mkdir "$1"
}

# spoil HOW FILE: that one, and no other.
spoil() {
    rm -rf "$copy/resources"
    cp -r "$PROGRAMS/resources" "$copy"
    "$1" "$copy/resources/$2"
    headless_forget_windows
}

# The picture stands behind everything and is white where it has no texture.
expect_white_picture() {
    headless_screenshot "$headless_dir/shot.png"
    expect_equal "picture at $1 ms" 255,255,255 "$(colour_at "$headless_dir/shot.png" 1100 400)"
}

# Of a file that is missing, or may not be read: what standard error says.
missing="not found; searched FOLDER"
forbidden="cannot be read: Permission denied"

# told FILE PROBLEM: the line about it.
told() {
    echo "skovra-positions: resource $1 ${2/FOLDER/$copy/resources}"
}

# expect_show_without HOW PICTURE PROBLEM [WARNING]: no PROBLEM, no line about it.
expect_show_without() {
    echo "$2.png: $1"
    spoil "$1" "$2.png"
    open_in_window "${program[@]}"
    wait_for_position 300
    [ "$2" != skovr ] || expect_white_picture 300
    leave 60
    expect_output "${@:4}"
    expect_errors ${3:+"$(told "$2.png" "$3")"} "$silence"
}

# expect_file_needed HOW ERROR PROBLEM [WARNING]: the music ends the program with ERROR, a picture is
# warned of if at all, and missed.
expect_file_needed() {
    local picture
    spoil "$1" synchtune.mp3
    launch "${program[@]}"
    expect_music_error "$2" ${3:+"$(told synchtune.mp3 "$3")"}
    for picture in texture skovr credits; do
        expect_show_without "$1" "$picture" "${@:3}"
    done
}

# expect_damage_borne HOW: the music plays all the same, from where it is sound.
expect_damage_borne() {
    local picture
    spoil "$1" synchtune.mp3
    expect_show "${program[@]}"
    for picture in texture skovr credits; do
        expect_show_without "$1" "$picture" ""
    done
}

# Or else it could not be removed.
headless_at_exit() {
    chmod -R u+rwX "$headless_dir"
}

start() {
    start_display
    copy_program
    program=("$copy/skovra-positions")
}

MissingFilesAreTold() { expect_file_needed rm "$not_found" "$missing" "$warning"; }
LinksToNothingAreTold() { expect_file_needed link_to_nothing "$not_found" "$missing" "$warning"; }
EmptyFilesAreRefused() { expect_file_needed empty "$bad_format" ""; }
FoldersAreRefused() { expect_file_needed make_folder "$bad_file" ""; }

FilesThatMayNotBeReadAreRefused() {
    spoil forbid skovr.png
    expect_forbidden cat "$copy/resources/skovr.png"
    program=("${without_privilege[@]}" "${program[@]}")
    expect_file_needed forbid "$bad_file" "$forbidden"
}

AFolderThatMayNotBeEnteredIsTold() {
    chmod 600 "$copy/resources"
    expect_forbidden cat "$copy/resources/skovr.png"
    launch "${without_privilege[@]}" "${program[@]}"
    expect_music_error "$not_found" \
        "$(told synchtune.mp3 "cannot be reached in FOLDER: Permission denied")"
}

FilesCutInTheMiddleAreBorne() { expect_damage_borne cut_in_the_middle; }
GarbageAtTheBeginningIsBorne() { expect_damage_borne garble; }

MusicOfAnotherFormatIsRefused() {
    cp "$copy/resources/skovr.png" "$copy/resources/synchtune.mp3"
    launch "$copy/skovra"
    expect_music_error "$bad_format"
}

# stands_still: whether the latest answers, of a second or so, are one position.
stands_still() {
    [ "$(tail -n 61 "$positions" | head -n 60 | cut -d ' ' -f 1 | sort -u | wc -l)" = 1 ]
}

# The show ends by the music's position, which stays where the music has ended.
MusicTooShortLeavesTheShowWaiting() {
    truncate -s 50000 "$copy/resources/synchtune.mp3"
    open_in_window "$copy/skovra-positions"
    wait_for_position 1000
    headless_wait_until 60 "the position to stand still" stands_still
    leave 60
    sed '/^Loading/,$d' "$headless_out" | cmp - <(expected_output | sed '/^Loading/,$d') ||
        fail "standard output differs"
    [[ $(tail -n 1 "$headless_out") =~ ^1+0+$ ]] || fail "the end of the music is not told"
}

PicturesOfNoUseAreWhite() {
    garble "$copy/resources/skovr.png"
    cut_in_the_middle "$copy/resources/credits.png"
    open_in_window "$copy/skovra-positions"
    wait_for_position 5000
    expect_white_picture 5000
    wait_for_position 15500
    expect_white_picture 15500
    leave 60
    expect_output
}

start
"$1"
