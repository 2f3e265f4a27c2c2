#!/usr/bin/env bash
# Whether what is for the desktop is written as it has to be. Sourced, after show.sh.

# proved WHAT...: says so.
proved() {
    echo "ok: $*"
}

# check_form PREFIX: of what is installed there, desktop entry, metainfo and manual pages.
check_form() {
    local page said
    desktop-file-validate "$1"/share/applications/*.desktop || fail "desktop entry"
    proved "desktop-file-validate"
    said=$(appstreamcli validate --no-net "$1"/share/metainfo/*.xml) || fail "metainfo: $said"
    proved "appstreamcli validate --no-net"
    for page in "$1"/share/man/man*/*; do
        said=$(LC_ALL=C.UTF-8 MANROFFSEQ='' MANWIDTH=80 \
            man --warnings -E UTF-8 -l -Tutf8 -Z "$page" 2>&1 >/dev/null) || fail "${page##*/}: $said"
        expect_equal "warnings of ${page##*/}" "" "$said"
    done
    proved "man --warnings"
}
