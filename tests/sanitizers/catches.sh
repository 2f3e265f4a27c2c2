#!/usr/bin/env bash
# Whether the sanitizer of this build reports a planted fault, and only that:
#   catches.sh PLANTED-FAULT FAULT REPORT
# The report has to end the program with a failure, hold the text REPORT and point at the fault's
# source; the same program without the fault has to end well and say nothing.
set -euo pipefail

program=$1
fault=$2
report=$3

fail() {
    printf 'FAILED: %s\n' "$*" >&2
    exit 1
}

status=0
said=$("$program" "$fault" none 2>&1 >/dev/null) || status=$?
[ "$status" -eq 0 ] || fail "without the fault the status is $status: $said"
[ -z "$said" ] || fail "without the fault it says: $said"

status=0
said=$("$program" "$fault" 2>&1 >/dev/null) || status=$?
[ "$status" -ne 0 ] || fail "the fault is not noticed: $said"
[[ $said == *"$report"* ]] || fail "status $status, but no '$report': $said"
[[ $said == *PlantedFault.cpp:* ]] || fail "not the planted fault: $said"
