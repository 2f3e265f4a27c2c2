#!/usr/bin/env bash
# What a newcomer calls first. Argument: the case to run.
# shellcheck source=script/lib/show.sh
. "$(dirname "$0")/../../script/lib/show.sh"

root=$(cd "$(dirname "$0")/../.." && pwd)
screenshots=$root/build/release/screenshots

# colours_of FILE: how many different colours it shows.
colours_of() {
    identify -format '%k' "$1"
}

PlaysTheWholeShowWithoutADisplay() {
    headless_begin
    without_sound
    unset DISPLAY WAYLAND_DISPLAY
    rm -rf "$screenshots"
    headless_launch "$root/script/run"
    expect_exit 0 900
    expect_output
    grep -q '^No usable display' "$headless_err" || fail "nothing is said of the display"
    grep -qF "Screenshots: $screenshots" "$headless_err" || fail "nobody is told of the screenshots"
    local at
    for at in 05 20 31; do
        expect_equal "size of ${at}s.png" 1024x768 \
            "$(identify -format '%wx%h' "$screenshots/${at}s.png")"
    done
    (($(colours_of "$screenshots/05s.png") > 1000)) || fail "no picture at 5 s"
    (($(colours_of "$screenshots/20s.png") > 1000)) || fail "no picture at 20 s"
    (($(colours_of "$screenshots/31s.png") < 1000)) || fail "still a picture at 31 s"
}

PlaysOnTheDisplayThereIs() {
    start_display
    headless_launch "$root/script/run"
    answer Escape 900
    headless_wait_active "$title"
    expect_window "$headless_window"
    leave
}

BuildsTheGallery() {
    start_display
    "$root/script/build" release skovra-gallery
    headless_launch "$root/build/release/bin/skovra-gallery"
    headless_wait_active "Skovra gallery"
    headless_key 2 Left Escape
    expect_exit 0
}

# By the commands of docs/engine.md, the last of which starts it.
BuildsTheMinimalProgram() {
    local commands
    mapfile -t commands < <(awk '
        /^#/ { here = $0 == "## Build it" }
        here && /^```/ { inside = $0 == "```sh"; next }
        here && inside' "$root/docs/engine.md")
    expect_equal "commands" 3 "${#commands[@]}"
    start_display
    cd "$root"
    ${commands[0]}
    ${commands[1]}
    headless_launch "${commands[2]}"
    headless_wait_active Minimal
    headless_key Escape
    expect_exit 0
}

"$1"
