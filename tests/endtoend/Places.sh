#!/usr/bin/env bash
# The show in unusual places of the file system. Argument: the case to run.
# shellcheck source=tests/endtoend/failure.sh
. "$(dirname "$0")/failure.sh"

# put_music_at BYTES: a copy of the program whose music has a path of that length, in $folder.
put_music_at() {
    local end=/resources/synchtune.mp3 name
    folder=$headless_dir
    name=$(printf '%099d' 0)
    while (($1 - ${#end} - ${#folder} > 200)); do
        folder+=/$name
    done
    folder+=/$(printf '%0*d' $(($1 - ${#end} - ${#folder} - 1)) 0)
    mkdir -p "$folder"
    cp -r "$PROGRAMS/skovra-positions" "$PROGRAMS/resources" "$folder"
    expect_equal "length of the path" "$1" "$(printf %s "$folder$end" | wc -c)"
}

MusicWithAPathOf1023BytesIsPlayed() {
    put_music_at 1023
    expect_show "$folder/skovra-positions"
}

MusicWithAPathOf1024BytesIsTold() {
    put_music_at 1024
    launch "$folder/skovra-positions"
    expect_music_error 'WARNING: CFURLGetFileSystemRepresentation returned FALSE
FMOD error! (22) File not found. ' \
        "skovra-positions: resource $folder/resources/synchtune.mp3 has a path of 1024 bytes, more than the 1023 that are possible"
}

# Deeper than any path can name.
ProgramWithoutAPathFindsNoMusic() {
    local name i
    name=$(printf '%0200d' 0)
    cd "$headless_dir"
    for ((i = 0; i < 25; i++)); do
        mkdir "$name"
        cd "$name"
    done
    cp -r "$PROGRAMS/skovra-positions" "$PROGRAMS/resources" .
    launch ./skovra-positions
    expect_music_error 'WARNING: CFURLGetFileSystemRepresentation returned FALSE
FMOD error! (22) File not found. ' \
        "skovra-positions: resource synchtune.mp3 not found; searched no folder: the program's own is unknown (File name too long)"
}

own_home() {
    unset XDG_CACHE_HOME XDG_CONFIG_HOME XDG_DATA_HOME XDG_STATE_HOME
    export HOME=$headless_dir/home
}

# Or else they could not be removed.
headless_at_exit() {
    chmod -R u+w "$headless_dir"
}

FoldersThatMayNotBeWrittenAreNotMissed() {
    copy_program
    own_home
    mkdir "$HOME"
    chmod -R a-w "$copy" "$HOME"
    expect_forbidden touch "$copy/new" "$HOME/new"
    plays_and_leaves "${without_privilege[@]}" "$copy/skovra-positions"
    expect_output
    # What libraries say of caches of their own is no word of the program's.
    expect_equal "its words on standard error" "$silence" "$(grep '^skovra' "$headless_err")"
}

AHomeFolderIsNotMissed() {
    own_home
    expect_show "$PROGRAMS/skovra-positions"
    unset HOME
    headless_forget_windows
    expect_show "$PROGRAMS/skovra-positions"
}

# start_elsewhere: in a folder with resources that are not the program's.
start_elsewhere() {
    copy_program
    mkdir -p "$headless_dir/elsewhere/resources"
    cp "$copy/resources/skovr.png" "$headless_dir/elsewhere/resources/synchtune.mp3"
    cd "$headless_dir/elsewhere"
}

StartedFromAnotherFolderPlays() {
    start_elsewhere
    expect_show ../copy/skovra-positions
}

StartedByALinkOnThePathPlays() {
    start_elsewhere
    ln -s ../copy/skovra-positions show
    PATH=$headless_dir/elsewhere:$PATH silence=${silence/skovra-positions/show} expect_show show
}

StartedFromAFolderWithSpacesAndLettersPlays() {
    start_elsewhere
    mv "$copy" "$headless_dir/min søte % \"demo\" 日本"
    expect_show "$headless_dir/min søte % \"demo\" 日本/skovra-positions"
}

# Letters of an older encoding, which are no UTF-8.
StartedFromAFolderOfUnknownLettersPlays() {
    start_elsewhere
    mv "$copy" "$headless_dir/s"$'\xF8'"te"
    expect_show "$headless_dir/s"$'\xF8'"te/skovra-positions"
}

start_display
"$1"
