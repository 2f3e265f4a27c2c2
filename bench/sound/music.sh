#!/usr/bin/env bash
# Music to measure with: noise, each moment of it like no other. Sourced by run.sh.
# shellcheck disable=SC2034,SC2154 # variables are shared with run.sh

# Without LAME's tag, so that all decoders agree on where it begins.
make_music() {
    music=$headless_dir/music.mp3
    head -c $((44100 * 4 * seconds)) /dev/urandom |
        lame --quiet -r -s 44.1 --scale 0.3 -b 192 -t - "$music" 2>/dev/null
    half_music=$headless_dir/half.mp3
    head -c $(($(stat -c %s "$music") / 2)) "$music" >"$half_music"
}

# make_long_music: ten minutes and ten hours, by repeating the frames of one minute.
make_long_music() {
    local minute=$headless_dir/minute.mp3 i
    head -c $((44100 * 2 * 60)) /dev/urandom |
        lame --quiet -r -s 44.1 -m m --scale 0.3 -b 32 --resample 44.1 -t - "$minute" 2>/dev/null
    for ((i = 0; i < 600; i++)); do
        cat "$minute"
    done >"$headless_dir/hours.mp3"
    head -c $((10 * $(stat -c %s "$minute"))) "$headless_dir/hours.mp3" >"$headless_dir/minutes.mp3"
}

# make_soft_music FILE SECONDS: the same without high notes, to be recognised when it was resampled.
make_soft_music() {
    head -c $((44100 * 4 * $2)) /dev/urandom |
        lame --quiet -r -s 44.1 --resample 44.1 --lowpass 2 --scale 0.9 -b 192 -t - "$1" 2>/dev/null
}
