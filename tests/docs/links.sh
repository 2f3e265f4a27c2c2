#!/usr/bin/env bash
# links.sh DOCUMENT...: each link within these documents leads to a file, and to a heading of it.
set -euo pipefail

# headings FILE: as links name them.
headings() {
    sed -n 's/^##* //p' "$1" | tr '[:upper:]' '[:lower:]' | tr -cd '[:alnum:] _\n-' | tr ' ' '-'
}

failures=0
count=0
for document in "$@"; do
    while read -r link; do
        count=$((count + 1))
        file=${link%%#*}
        target=$document
        [ -z "$file" ] || target=$(dirname "$document")/$file
        if [ ! -e "$target" ]; then
            echo "$document: no file $file"
            failures=$((failures + 1))
        elif [[ $link == *#* ]] && ! headings "$target" | grep -qxF -- "${link#*#}"; then
            echo "$document: no heading ${link#*#} in $target"
            failures=$((failures + 1))
        fi
    done < <(grep -oE '\]\([^)]+\)' "$document" | sed 's/^](//; s/)$//' | grep -vE '^https?:' || :)
done
[ "$count" -gt 0 ] && [ "$failures" -eq 0 ]
