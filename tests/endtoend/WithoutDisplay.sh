#!/usr/bin/env bash
# The show where there is no display, or none of use. Argument: the case to run.
# shellcheck source=tests/endtoend/failure.sh
. "$(dirname "$0")/failure.sh"

# expect_refusal REASON [LINE...]: what freeglut says, after those lines.
expect_refusal() {
    launch "$PROGRAMS/skovra"
    expect_end 1
    expect_start_only 'FMOD - Initiated'
    expect_errors "${@:2}" "freeglut ($PROGRAMS/skovra): $1"
}

NoDisplayIsSaidAndEndsTheProgram() {
    unset DISPLAY WAYLAND_DISPLAY
    expect_refusal "failed to open display ''"
}

# The name of a display that nobody serves is enough.
OnlyWaylandIsSaidAndEndsTheProgram() {
    unset DISPLAY
    export WAYLAND_DISPLAY=wayland-4711
    expect_refusal "failed to open display ''" \
        'skovra: no X display answers; on Wayland it comes with Xwayland'
}

UnreachableDisplayIsSaidAndEndsTheProgram() {
    export DISPLAY=:4711
    expect_refusal "failed to open display ':4711'"
}

ForbiddenDisplayIsSaidAndEndsTheProgram() {
    # A key to any display, of which the program knows nothing.
    printf '\377\377\0\0\0\0\0\022MIT-MAGIC-COOKIE-1\0\0200123456789abcdef' >"$headless_dir/key"
    headless_start_xvfb 640x480x24 -auth "$headless_dir/key"
    export XAUTHORITY=/dev/null
    expect_refusal "failed to open display '$DISPLAY'" \
        'Authorization required, but no authorization protocol specified' ''
}

DisplayWithoutOpenGLIsSaidAndEndsTheProgram() {
    headless_start_xvfb 1280x1024x24 -extension GLX
    expect_refusal "OpenGL GLX extension not supported by display '$DISPLAY'"
}

headless_begin
without_sound
"$1"
