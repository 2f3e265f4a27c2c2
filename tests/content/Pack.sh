#!/usr/bin/env bash
# content/pack: what it may change of a picture, and that the resources went through it. Argument:
# the case to run.
set -euo pipefail
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/../.." && pwd)
scratch=$(mktemp -d)
trap 'rm -rf -- "$scratch"' EXIT
cd "$scratch"

fail() {
    printf 'FAILED: %s\n' "$*" >&2
    exit 1
}

# pack NAME: NAME.ppm to NAME.png.
pack() {
    "$root/content/pack" <"$1.ppm" >"$1.png"
}

# largest_difference FIRST SECOND: of any value, in levels of 255.
largest_difference() {
    compare -metric PAE "$1" "$2" null: 2>&1 | awk -F '[ (]' '{ printf "%d", $1 / 257 }'
}

NoValueMovesByMoreThanOneLevel() {
    convert -seed 7 -size 97x61 plasma:black-white -depth 8 clouds.ppm
    pack clouds
    [ "$(largest_difference clouds.ppm clouds.png)" = 1 ] ||
        fail "largest difference $(largest_difference clouds.ppm clouds.png)"
}

BlackAndWhiteStayInRange() {
    convert -size 8x8 xc:black xc:white xc:black +append -depth 8 extremes.ppm
    pack extremes
    [ "$(largest_difference extremes.ppm extremes.png)" -le 1 ] || fail "a value went round"
}

# Levels that are seen when two rows are drawn as one: as many as before, though each row has half
# of them.
TwoRowsTogetherHaveEveryLevel() {
    convert -size 64x1024 gradient:'gray(100)-gray(227)' -rotate 90 -depth 8 ramp.ppm
    pack ramp
    local levels row
    levels=$(convert ramp.png -filter box -resize '100%x50%!' -depth 16 -unique-colors -format %w info:)
    row=$(convert ramp.png -crop 1024x1+0+0 +repage -unique-colors -format %w info:)
    [ "$(convert ramp.ppm -unique-colors -format %w info:)" = 128 ] || fail "the ramp is not what was meant"
    [ "$levels" -ge 127 ] || fail "$levels of 128 levels"
    [ "$row" -le 65 ] || fail "$row levels in a row, which were to be half of 128"
}

LongRunsStayAsDrawn() {
    convert -size 40x6 xc:'rgb(28,19,54)' -size 40x6 xc:'rgb(27,20,53)' -append -depth 8 flat.ppm
    pack flat
    [ "$(largest_difference flat.ppm flat.png)" = 0 ] || fail "an area of one colour has changed"
}

OtherFilesAreRefused() {
    printf 'P6\n2 1\n65535\n123456789012' >deep.ppm
    printf 'P6\n2 1\n255\n12345' >short.ppm
    local name
    for name in deep short; do
        if pack "$name" 2>said || ! grep -q '^content/pack: ' said; then
            fail "$name.ppm is not refused"
        fi
    done
}

# rows_not_sub FILE: how many rows of a PNG file have another filter than Sub.
rows_not_sub() {
    python3 - "$1" <<'END'
import struct, sys, zlib
file = open(sys.argv[1], "rb").read()
at, pixels = 8, b""
while at < len(file):
    length, name = struct.unpack(">I4s", file[at:at + 8])
    if name == b"IHDR":
        width, depth, kind = struct.unpack(">I4xBB", file[at + 8:at + 18])
        assert (depth, kind) == (8, 2), "not eight bits of red, green and blue"
    if name == b"IDAT":
        pixels += file[at + 8:at + 8 + length]
    at += 12 + length
filters = zlib.decompress(pixels)[::1 + 3 * width]
print(len(filters) - filters.count(1))
END
}

EachRowOfTheResourcesHasTheFilterSub() {
    local picture count
    for picture in skovr credits; do
        count=$(rows_not_sub "$root/resources/$picture.png")
        [ "$count" = 0 ] || fail "$picture.png: $count rows with another filter than Sub"
    done
}

"$1"
