#!/usr/bin/env bash
# Recordings that cannot be. Argument: the case to run.
# shellcheck source=tests/record/record.sh
. "$(dirname "$0")/record.sh"

# stand_in_for_ffmpeg COMMAND...: what is run in its place; "$@" there is its command line.
stand_in_for_ffmpeg() {
    mkdir "$scratch/path"
    printf '#!/bin/bash\n%s\n' "$*" >"$scratch/path/ffmpeg"
    chmod +x "$scratch/path/ffmpeg"
    export PATH=$scratch/path:$PATH
}

WithoutFfmpegNothingIsDrawn() {
    mkdir empty
    echo before >show.mp4
    PATH=$scratch/empty POSITION_LOG=positions run 1 "$PROGRAMS/skovra-record-positions" show.mp4
    expect_said "show.mp4: a video needs the program ffmpeg"
    expect_equal "the file of before" before "$(cat show.mp4)"
    expect_nothing_left empty show.mp4
}

AFolderThatIsNotThereIsSaid() {
    local option
    for option in none/show.mp4 --wav=none/show.wav --still=0=none/a.png; do
        POSITION_LOG=positions run 1 "$PROGRAMS/skovra-record-positions" "$option"
        expect_said "No such file or directory"
    done
    touch file
    run 1 "$recorder" --frames file/folder
    expect_said "file/folder"
    expect_nothing_left file
}

ADeviceStaysADevice() {
    ln -s /dev/full show.mp4
    run 1 "$recorder" show.mp4
    expect_said "show.mp4: not an ordinary file"
    run 1 "$recorder" --wav /dev/full
    run 1 "$recorder" --still 0=show.mp4.png --wav show.mp4
    [ -c /dev/full ] || fail "/dev/full was replaced"
    expect_nothing_left show.mp4
}

ALinkStaysALink() {
    mkdir folder
    echo before >folder/real.png
    ln -s folder/real.png link.png
    run 0 "$recorder" --size 16x16 --still 0=link.png
    [ -L link.png ] || fail "the link was replaced"
    expect_equal "size" 16x16 "$(identify -format %wx%h folder/real.png)"
}

ALinkToNothingGetsWhatItLeadsTo() {
    mkdir folder
    ln -s folder/real.png link.png
    ln -s folder/real.mp4 link.mp4
    run 0 "$recorder" --size 16x16 --still 0=link.png link.mp4
    expect_equal "links" "folder/real.png folder/real.mp4" "$(readlink link.png link.mp4 | xargs)"
    expect_equal "size" 16x16 "$(identify -format %wx%h folder/real.png)"
    ffprobe -v error folder/real.mp4
    expect_nothing_left folder folder/real.png folder/real.mp4 link.png link.mp4
}

WhatIsReplacedKeepsItsPermissions() {
    local file
    for file in show.mp4 show.wav a.png; do
        echo before >"$file"
        chmod 600 "$file"
    done
    run 0 "$recorder" --size 16x16 --wav show.wav --still 0=a.png show.mp4
    expect_equal "permissions" "600 600 600" "$(stat -c %a show.mp4 show.wav a.png | xargs)"
    ffprobe -v error show.mp4
}

NamesOfAnyLengthAreWritten() {
    local name
    name=$(printf '%0251d' 0)
    run 0 "$recorder" --size 16x16 --wav "$name.wav" --still "0=$name.png" "$name.mp4"
    ffprobe -v error "$name.mp4"
    expect_nothing_left "$name.mp4" "$name.wav" "$name.png"
    run 1 "$recorder" --wav "0$name.wav"
    expect_said "0$name.wav: File name too long"
}

FfmpegThatRefusesIsSaid() {
    stand_in_for_ffmpeg exit 3
    run 1 "$recorder" --size 320x240 show.mp4
    expect_said "show.mp4: ffmpeg ended with status 3 before the video was complete"
    expect_nothing_left path path/ffmpeg
}

FfmpegThatIsKilledIsSaid() {
    # After some pictures were taken.
    # shellcheck disable=SC2016
    stand_in_for_ffmpeg 'for a; do [[ $a = pipe:* ]] && { pictures=${a#pipe:}; break; }; done
        head -c 3000000 <&"$pictures" >/dev/null; kill -KILL $$'
    run 1 "$recorder" --size 320x240 --wav show.wav show.mp4
    expect_said "show.mp4: ffmpeg was ended by signal 9 before the video was complete"
    expect_nothing_left path path/ffmpeg
}

FfmpegThatFailsAtTheEndIsSaid() {
    stand_in_for_ffmpeg "$(command -v ffmpeg)" '"$@"; exit 4'
    echo before >show.mp4
    run 1 "$recorder" --size 64x48 show.mp4
    expect_said "show.mp4: ffmpeg ended with status 4"
    expect_equal "the file of before" before "$(cat show.mp4)"
    expect_nothing_left show.mp4 path path/ffmpeg
}

# limited ARGUMENT...: where no file may grow beyond 64 KiB.
limited() {
    (ulimit -f 64 && exec "$recorder" "$@")
}

FullDiskEndsTheRecording() {
    run 1 limited --wav show.wav
    expect_said "show.wav: File too large"
    run 1 limited --size 640x480 --still 0=a.png
    expect_said "a.png: File too large"
    run 1 limited --size 640x480 --frames frames
    expect_said "frames/00000.png: File too large"
    run 1 limited --size 320x240 show.mp4
    expect_said "show.mp4: ffmpeg ended"
    run 1 limited --size 320x240 show.mkv
    expect_said "show.mkv: ffmpeg ended"
    expect_nothing_left frames
}

has_begun() {
    compgen -G '*.part' >/dev/null
}

InterruptedItLeavesNothing() {
    local signal status
    set -m # or else what runs in the background has SIGINT ignored
    for signal in INT TERM HUP; do
        status=0
        "$recorder" --wav show.wav show.mp4 >out 2>err &
        until has_begun; do sleep 0.05; done
        kill "-$signal" "$!"
        wait "$!" || status=$?
        expect_equal "status" "$((128 + $(kill -l "$signal")))" "$status"
        expect_said "interrupted"
        expect_nothing_left
    done
}

UnderNohupItGoesOn() {
    (trap '' HUP && exec "$recorder" --size 16x16 --wav show.wav >out 2>err) &
    until has_begun; do sleep 0.05; done
    kill -HUP "$!"
    wait "$!"
    [ -s show.wav ] || fail "no show.wav"
}

AShowThatFailsIsSaid() {
    copy_recorder
    rm copy/resources/synchtune.mp3
    run 1 copy/skovra-record --wav show.wav
    expect_said "the show ended with an error; --trace"
    run 1 copy/skovra-record --trace --wav show.wav
    grep -q 'FMOD error! (22)' out || fail "the trace does not say it"
    [ ! -e show.wav ] || fail "there is a show.wav"
    ! has_begun || fail "something is left"
}

MusicThatIsTooShortEndsTheRecording() {
    copy_recorder
    ffmpeg -v error -y -t 3 -i "$PROGRAMS/resources/synchtune.mp3" copy/resources/synchtune.mp3
    run 1 copy/skovra-record --wav show.wav
    expect_said "its music is too short"
    [ ! -e show.wav ] || fail "there is a show.wav"
}

WrongOptionsShowTheUsage() {
    run 2 "$recorder"
    expect_said "nothing to record"
    expect_said "usage: skovra-record"
    run 2 "$recorder" --size 1023x768 show.mp4
    expect_said "even numbers"
    expect_nothing_left
}

HelpAndVersionGoToStandardOutput() {
    run 0 "$recorder" --help
    grep -q '^usage: skovra-record' out || fail "no usage"
    run 0 "$recorder" --version
    grep -qx 'skovra-record [0-9.]*' out || fail "no version"
}

# full_output COMMAND...
full_output() {
    "$@" >/dev/full
}

full_errors() {
    "$@" 2>/dev/full
}

OutputThatIsLostIsAnError() {
    local option
    for option in --help --version "--trace --size=16x16 --still=0=a.png" \
        "--trace --size=16x16 --still=33000=b.png"; do
        # shellcheck disable=SC2086 # several options
        run 1 full_output "$recorder" $option
        expect_said "skovra-record: standard output: "
    done
    # The frames themselves are written.
    identify a.png b.png >/dev/null
    expect_nothing_left a.png b.png
}

ProgressThatIsLostIsNone() {
    run 0 full_errors "$recorder" --size 16x16 --still 0=a.png
    run 0 full_output "$recorder" --size 16x16 --still 0=b.png
    identify a.png b.png >/dev/null
    expect_nothing_left a.png b.png
}

ProgressIsLinesOrABar() {
    run 0 "$recorder" --size 16x16 --still 33000=a.png
    expect_equal "lines" "10 20 30 40 50 60 70 80 90 100" \
        "$(sed -n 's/^\([0-9]*\) %.*/\1/p' err | xargs)"
    ! grep -q $'\r' err || fail "a bar goes to a file"
    script -qec "'$recorder' --size 16x16 --still 33000=b.png" typescript >terminal </dev/null
    grep -q $'\r\[###*\.*\] [0-9]* %' terminal || fail "no bar on a terminal"
    # Whatever is typed next begins on an empty line.
    expect_equal "the end" $'\r\033[K' "$(tail -c 4 terminal)"
}

"$1"
