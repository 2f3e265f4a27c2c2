#!/usr/bin/env bash
# The OpenGL calls of real frames, as traced, and their memory. Argument: the case to run.
# shellcheck source=script/lib/show.sh
. "$(dirname "$0")/../../script/lib/show.sh"

first_frame=10
last_frame=12

# required_calls FRAME: one call a line, its numbers behind it; "?" where the spectrum decides.
# FRAME counts from 1, the one that runs the loader.
required_calls() {
    awk -v frame="$1" '
        function square(width, height) {
            print "glBegin GL_QUADS"
            print "glTexCoord2f 1 0"; print "glVertex3f", width, height, 0
            print "glTexCoord2f 0 0"; print "glVertex3f", 0, height, 0
            print "glTexCoord2f 0 1"; print "glVertex3f", 0, 0, 0
            print "glTexCoord2f 1 1"; print "glVertex3f", width, 0, 0
            print "glEnd"
        }
        function face(text,   corner, i, n) {
            n = split(text, corner, ";")
            for (i = 1; i <= n; i++) {
                split(corner[i], v, " ")
                print "glTexCoord2f", v[4], v[5]
                print "glVertex3f", v[1], v[2], v[3]
            }
        }
        BEGIN {
            turned = 0.3 * (frame - 1)
            print "glClear GL_DEPTH_BUFFER_BIT | GL_COLOR_BUFFER_BIT"
            print "glMatrixMode GL_MODELVIEW"
            print "glLoadIdentity"
            print "glEnable GL_BLEND"
            print "glEnable GL_TEXTURE_2D"
            print "glTranslatef 0 0 -1100"
            print "glPushMatrix"
            print "glTranslatef 0 0 -200"

            print "glColor3f 1 0 0"
            print "glPushMatrix"
            print "glTranslatef -720 -540 0"
            print "glScalef 1.3 1 1"
            print "glColor3f 1 1 1"
            print "glEnable GL_TEXTURE_2D"
            print "glBindTexture GL_TEXTURE_2D 2" # "skovr" is loaded second
            print "glTranslatef -250 -250 -1000"
            square(2000, 1500)
            print "glTranslatef 250 250 1000"
            print "glColor3f 1 0 0"
            print "glDisable GL_TEXTURE_2D"
            for (i = 1; i <= 509; i += 2) {
                print "glColor3f", i / 250, 2 * i / 250, i / 500
                square(4.7, "?")
                print "glTranslatef 4.7 0 0"
            }
            print "glPopMatrix"

            print "glEnable GL_TEXTURE_2D"
            print "glPushMatrix"
            print "glColor3f 1 1 1"
            print "glTranslatef -300 0 0"
            print "glTranslatef ? ? 0"
            print "glRotatef", turned + 0.1, 1, 0, 0.1
            print "glPopMatrix"
            print "glPushMatrix"
            print "glTranslatef -150 0 0"
            print "glTranslatef ? ? 0"
            print "glRotatef", turned + 0.2, 0, 1, 0.1
            print "glPopMatrix"

            print "glMatrixMode GL_TEXTURE"
            print "glLoadIdentity"
            print "glTranslatef", 0.005 * frame, 0, 0
            print "glMatrixMode GL_MODELVIEW"

            print "glTranslatef 150 0 0"
            print "glTranslatef ? ? 0"
            print "glRotatef", turned + 0.3, 0, 1, 0
            print "glScalef 0.2 0.4 0.3"
            print "glBegin GL_QUADS"
            print "glColor3f 0 0 0"
            face("-1 1 -1 0 1;1 1 -1 1 1;1 -1 -1 1 0;-1 -1 -1 0 0")
            print "glColor3f 0 0 0"
            face("1 1 1 1 1;1 -1 1 1 0;1 -1 -1 0 0;1 1 -1 0 1")
            print "glColor3f 0 0 0"
            face("-1 1 1 0 1;-1 -1 1 0 0;-1 -1 -1 1 0;-1 1 -1 1 1")
            print "glColor3f 0 0 0"
            face("-1 1 1 0 1;1 1 1 1 1;1 1 -1 1 0;-1 1 -1 0 0")
            print "glColor3f 0 0 0"
            face("-1 -1 1 0 0;1 -1 1 1 0;1 -1 -1 1 1;-1 -1 -1 0 1")
            face("-1 1 1 0 1;1 1 1 1 1;1 -1 1 1 0;-1 -1 1 0 0")
            print "glColor3f 0 0 0"
            print "glEnd"
            print "glColor3f 0 0 0"
            print "glPopMatrix"
            print "glFlush" # freeglut, before it swaps
            print "glXSwapBuffers"
        }' </dev/null
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
