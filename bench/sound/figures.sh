#!/usr/bin/env bash
# Figures by name, and tables of them. Sourced by run.sh.
# shellcheck disable=SC2034,SC2154 # variables are shared with run.sh

declare -A result=()

# keep NAME LINE: the NAME=VALUE pairs of the line, as result[NAME.KEY].
keep() {
    local pair
    for pair in $2; do
        result[$1.${pair%%=*}]=${pair#*=}
    done
}

# figure FORMAT NAME...: "–" if one of them was not measured.
figure() {
    local format=$1 name values=()
    shift
    for name in "$@"; do
        if [ -z "${result[$name]:-}" ] || [[ ${result[$name]} == *nan* ]]; then
            printf '–'
            return
        fi
        values+=("${result[$name]}")
    done
    # shellcheck disable=SC2059 # the format is the caller's
    LC_ALL=C printf "$format" "${values[@]}"
}

# row CELL...
row() {
    printf '| %s ' "$@"
    printf '|\n'
}

spread="%+.2f (%+.2f..%+.2f)"
