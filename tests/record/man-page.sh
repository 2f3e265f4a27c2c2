#!/usr/bin/env bash
# man-page.sh PAGE PROGRAM: whether the page has each option of the program's usage.
set -euo pipefail

page=$(LC_ALL=C.UTF-8 MANWIDTH=80 man -l "$1" | sed 's/.\x08//g')
missing=0
for option in $("$2" --help | grep -oE -- '--[a-z]+' | sort -u); do
    if ! grep -qF -- "$option" <<<"$page"; then
        echo "$option is not in $1"
        missing=1
    fi
done
exit "$missing"
