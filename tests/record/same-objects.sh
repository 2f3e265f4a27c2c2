#!/usr/bin/env bash
# same-objects.sh BUILD_FOLDER: whether the show and its recorder are made of the same objects of
# demo/ and engine/, and the recorder of no others.
set -euo pipefail

# objects PROGRAM: what of the two it is linked from.
objects() {
    ninja -C "$1" -t inputs "bin/$2" | grep -E '^(demo|engine)/' | sort -u
}

live=$(objects "$1" skovra)
recorded=$(objects "$1" skovra-record)
[ "$(grep -c '^demo/' <<<"$live")" -ge 5 ] || { echo "the show's objects are not found" && exit 1; }
grep -qx 'engine/libskovra_engine.a' <<<"$live" || { echo "the engine is not found" && exit 1; }
diff <(printf '%s\n' "$live") <(printf '%s\n' "$recorded")
if ninja -C "$1" -t inputs bin/skovra | grep -E 'tools/record|skovra_record'; then
    echo "the show is linked with parts of its recorder"
    exit 1
fi
