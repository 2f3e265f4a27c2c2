#!/usr/bin/env bash
# The OpenGL calls of real frames, as traced, and their memory. Argument: the case to run.
# shellcheck source=script/lib/show.sh
. "$(dirname "$0")/../../script/lib/show.sh"

first_frame=10
last_frame=12

# required_calls FRAME: one call a line, its numbers behind it; "?" where the spectrum decides.
# FRAME counts from 1, the one that runs the loader.
required_calls() {
    "$PROGRAMS/expected-frame" "$1" | sed -n '
        s/GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT/GL_DEPTH_BUFFER_BIT | GL_COLOR_BUFFER_BIT/
        s/-*nan/?/g
        s/[,)]//g
        s/(/ /
        s/ $//
        /^gl[A-Z]/p'
    printf '%s\n' glFlush glXSwapBuffers # freeglut flushes before it swaps
}

# traced_calls DUMP FRAME: the same form, out of a dump of the trace.
traced_calls() {
    awk -v frame="$2" '
        !/^[0-9]+ gl/ { next }
        / glXSwapBuffers\(/ { if (swaps == frame - 1) print "glXSwapBuffers"; swaps++; next }
        / glX/ { next }
        swaps == frame - 1 {
            sub(/^[0-9]+ /, "")
            sub(/\)$/, "")
            sub(/\(/, " ")
            gsub(/[a-z]+ = /, "")
            gsub(/,/, "")
            sub(/ $/, "")
            print
        }' "$1"
}

# differences REQUIRED TRACED: says the first, if any; numbers may differ by their rounding.
differences() {
    awk '
        function same(a, b) {
            if (a == "?") return b ~ /^-?[0-9.]+(e[-+]?[0-9]+)?$/
            if (a ~ /^-?[0-9]/ && b ~ /^-?[0-9]/) return a - b < 0.0005 && b - a < 0.0005
            return a == b
        }
        NR == FNR { required[NR] = $0; count = NR; next }
        {
            n = split(required[FNR], want, " ")
            ok = n == NF
            for (i = 1; ok && i <= n; i++) ok = same(want[i], $i)
            if (!ok) { print "call " FNR ": required \"" required[FNR] "\", traced \"" $0 "\""; exit }
            traced = FNR
        }
        END { if (traced != count) print traced + 0 " calls of " count " as required" }' "$1" "$2"
}

has_traced_frames() {
    [ "$(wc -l <"$positions")" -ge $((last_frame * 4 + 8)) ] # four positions are read in a frame
}

ThreeFramesIssueTheRequiredCalls() {
    launch apitrace trace -o "$headless_dir/show.trace" "$PROGRAMS/skovra-positions"
    answer Escape
    headless_wait_active "$title"
    headless_wait_until 30 "the frames to be traced" has_traced_frames
    leave
    apitrace dump --color=never "$headless_dir/show.trace" >"$headless_dir/dump"
    local frame found
    for ((frame = first_frame; frame <= last_frame; frame++)); do
        required_calls "$frame" >"$headless_dir/required"
        traced_calls "$headless_dir/dump" "$frame" >"$headless_dir/traced"
        found=$(differences "$headless_dir/required" "$headless_dir/traced")
        expect_equal "frame $frame" "" "$found"
    done
}

# fetched_pages: how often the show needed memory from the system, so far.
fetched_pages() {
    sed 's/.*) //' "/proc/$headless_pid/stat" | cut -d ' ' -f 8
}

FramesAreDrawnInMemoryOnceFetched() {
    local frames pages
    open_in_window "$PROGRAMS/skovra-positions"
    wait_for_position 3000
    frames=$(wc -l <"$positions") pages=$(fetched_pages)
    wait_for_position 6000
    frames=$((($(wc -l <"$positions") - frames) / 4)) pages=$(($(fetched_pages) - pages))
    echo "$pages pages in $frames frames"
    ((frames > 0)) || fail "no frames"
    ((pages < 100 * frames)) || fail "$pages pages of memory for $frames frames"
    leave
}

start_display
"$1"
