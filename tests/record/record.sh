#!/usr/bin/env bash
# What the tests of whole recordings share. Sourced first; $PROGRAMS is the folder of the built
# programs, $RECORDER another recorder than the one there. No display, no sound server: a recorder
# needs neither.
# shellcheck disable=SC2034 # the variables are for the scripts that source this
set -euo pipefail

sources=$(cd "$(dirname "${BASH_SOURCE[0]}")/../.." && pwd)
unset DISPLAY WAYLAND_DISPLAY
export LC_ALL=C.UTF-8
scratch=$(mktemp -d)
trap 'rm -rf -- "$scratch"' EXIT
cd "$scratch"
recorder=${RECORDER:-$PROGRAMS/skovra-record}
small=320x240 # a whole show of that size takes seconds

fail() {
    printf 'FAILED: %s\n' "$*" >&2
    [ ! -s err ] || tail -c 2000 err >&2
    exit 1
}

expect_equal() {
    [ "$2" = "$3" ] || fail "$1: expected '$2', got '$3'"
}

# run STATUS COMMAND...: standard output and error to the files out and err.
run() {
    local expected=$1 status=0
    shift
    "$@" >out 2>err </dev/null || status=$?
    expect_equal "exit status of ${*##*/}" "$expected" "$status"
}

# copy_recorder: with its resources, to tamper with, in copy/.
copy_recorder() {
    mkdir copy
    cp "$recorder" copy
    cp -r "$PROGRAMS/resources" copy
}

# expect_said TEXT: on standard error.
expect_said() {
    grep -qF -- "$1" err || fail "'$1' is not said"
}

# expect_nothing_left NAME...: but the files of the test itself there is nothing in the folder.
expect_nothing_left() {
    expect_equal "files" "$(printf '%s\n' err out "$@" | sort)" "$(find . -mindepth 1 -printf '%P\n' | sort)"
}
