#!/usr/bin/env bash
# What the benchmarks share: the programs, a display of their own, and plain words. Sourced at the
# top of the tree, after the packages are there.
script/build bench

PROGRAMS=$PWD/build/bench/bin
# shellcheck source=script/lib/show.sh
. script/lib/show.sh

say() {
    printf '%s %s\n' "$(date +%T)" "$*" >&2
}

median() {
    sort -g | awk '{ v[NR] = $1 } END { print v[int((NR + 1) / 2)] }'
}

idle_load=$(cut -d ' ' -f 1 /proc/loadavg)

# heading NAME: what was measured, when and where.
heading() {
    echo "\`script/bench $1\`, $(date +%F), $(nproc) cores, load before $idle_load," \
        "commit $(git rev-parse --short HEAD 2>/dev/null || echo unknown):"
    echo
}
