#!/usr/bin/env bash
# Holds a document's examples to the code they are taken from, line by line.
#   examples-match.sh DOCUMENT SOURCE
# In the document an example follows the line "<!-- example: NAME -->" as a block of code; in the
# source it stands between the comments "[NAME]" and "[/NAME]".
set -euo pipefail

document=$1
source=$2
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

awk -v out="$work/document." '
    /^<!-- example: .* -->$/ { name = $3; next }
    name != "" && /^```cpp$/ { inside = 1; next }
    inside && /^```$/ { inside = 0; name = ""; next }
    inside { print > (out name) }' "$document"

awk -v out="$work/source." '
    match($0, /^    \/\/ \[\/[A-Za-z]+\]$/) { name = ""; next }
    match($0, /^    \/\/ \[[A-Za-z]+\]$/) { name = $2; gsub(/[][]/, "", name); next }
    name != "" { sub(/^    /, ""); print > (out name) }' "$source"

status=0
for taken in "$work"/source.*; do
    name=${taken##*.}
    touch "$work/document.$name"
    if ! diff -u --label "$source [$name]" "$taken" \
        --label "$document [$name]" "$work/document.$name"; then
        status=1
    fi
done
for shown in "$work"/document.*; do
    if [ ! -e "$work/source.${shown##*.}" ]; then
        echo "$document: example ${shown##*.} is not in $source"
        status=1
    fi
done
exit "$status"
