#!/usr/bin/env bash
# The site as it is built. Argument: the case to run.
set -euo pipefail
root=$(readlink -f "$(dirname "$0")/../..")
scratch=$(mktemp -d)
server=
trap '[ -z "$server" ] || kill "$server"; rm -rf -- "$scratch"' EXIT

# compressed FILE...: their bytes in all, each compressed by brotli.
compressed() {
    local file total=0
    for file; do
        total=$((total + $(brotli --stdout --best "$file" | wc -c)))
    done
    echo "$total"
}

# expect_light NAME FILE...: of the site.
expect_light() {
    local name=$1 bytes
    shift
    bytes=$(cd "$SITE" && compressed "$@")
    echo "$name: $bytes bytes compressed"
    [ "$bytes" -le 150000 ]
}

# What a visitor of one of the two pages loads, without music and pictures.
CodeIsLight() {
    expect_light show index.html style.css page.js skovra.js skovra.wasm
    expect_light gallery gallery.html style.css page.js exhibits.js gallery.js gallery.wasm
}

SameBytesWhenBuiltTwice() {
    mkdir "$scratch/a copy"
    git -C "$root" ls-files -z --cached --others --exclude-standard |
        (cd "$root" && xargs -0 cp --parents -t "$scratch/a copy")
    (cd "$scratch/a copy" && CCACHE_DISABLE=1 script/web >log 2>&1) || {
        cat "$scratch/a copy/log"
        return 1
    }
    diff -r --exclude=downloads --exclude=downloads.json "$SITE" "$scratch/a copy/build/web/site"
}

# sources COMPILE_COMMANDS: those of show and engine.
sources() {
    sed -n 's/^ *"file": "\(.*\)",\?$/\1/p' "$1" | sed -n "s#^$root/\(demo\|engine\)/#\1/#p" | sort -u
}

SourcesAreThoseOfTheNativeProgram() {
    sources "$BUILD/compile_commands.json" >"$scratch/native"
    sources "$root/build/web/compile_commands.json" >"$scratch/page"
    [ "$(wc -l <"$scratch/native")" -gt 20 ]
    diff "$scratch/native" "$scratch/page"
}

ServesTheSite() {
    local address=
    (cd "$root" && exec script/web --serve 0) >"$scratch/said" 2>"$scratch/log" &
    server=$!
    for _ in $(seq 300); do
        address=$(grep -o 'http://127\.0\.0\.1:[0-9]*/' "$scratch/said") && break
        sleep 0.2
    done
    python3 -c 'import sys, urllib.request as web; print(web.urlopen(sys.argv[1]).read().decode(), end="")' \
        "$address" | diff - "$SITE/index.html"
}

OffersDownloads() {
    mkdir "$scratch/offered"
    echo package >"$scratch/offered/a \"b\" ø.zip"
    (cd "$root" && script/web --downloads "$scratch/offered" 2>"$scratch/log")
    python3 - "$SITE" <<'END'
import json, os, sys, urllib.parse
(download,) = json.load(open(os.path.join(sys.argv[1], "downloads.json")))
assert download["name"] == 'a "b" ø.zip', download
assert open(os.path.join(sys.argv[1], urllib.parse.unquote(download["file"]))).read() == "package\n"
END
    (cd "$root" && script/web 2>"$scratch/log")
}

"$1"
