#!/usr/bin/env bash
# man-page.sh PAGE PROGRAM: whether the page is sound, and has each option of the program's usage.
set -euo pipefail

warnings=$(LC_ALL=C.UTF-8 MANROFFSEQ='' MANWIDTH=80 man --warnings -E UTF-8 -l -Tutf8 -Z "$1" 2>&1 >/dev/null)
if [ -n "$warnings" ]; then
    printf '%s\n' "$warnings"
    exit 1
fi
page=$(LC_ALL=C.UTF-8 MANWIDTH=80 man -l "$1" | sed 's/.\x08//g')
missing=0
for option in $("$2" --help | grep -oE -- '--[a-z]+' | sort -u); do
    if ! grep -qF -- "$option" <<<"$page"; then
        echo "$option is not in $1"
        missing=1
    fi
done
exit "$missing"
