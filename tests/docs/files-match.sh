#!/usr/bin/env bash
# Holds the files that a document shows, in one or more blocks of code, to those files.
#   files-match.sh DOCUMENT ROOT
# Each block follows the line "<!-- file: PATH -->"; blank lines do not count.
set -euo pipefail

document=$1
root=$2
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

awk -v out="$work/" '
    /^<!-- file: .* -->$/ { name = $3; gsub("/", "%", name); next }
    name != "" && /^```/ && !inside { inside = 1; next }
    inside && /^```$/ { inside = 0; name = ""; next }
    inside { print > (out name) }' "$document"

status=0
for shown in "$work"/*; do
    name=${shown##*/}
    file=$root/${name//%//}
    diff -uB --label "$file" "$file" --label "$document" "$shown" || status=1
done
exit "$status"
