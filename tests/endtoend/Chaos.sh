#!/usr/bin/env bash
# Whether fuzz/chaos notices faults: faulty programs in place of the show. Argument: the case to run.
# shellcheck source=script/lib/show.sh
. "$(dirname "$0")/../../script/lib/show.sh"

chaos=$(dirname "$0")/../../fuzz/chaos

headless_at_exit() {
    rm -f /dev/shm/skovra-chaos.*
}

# try COMMANDS: in usual conditions, the show after these commands.
try() {
    echo "planted: $1"
    printf '#!/bin/bash\n%s\nexec %q\n' "$1" "$headless_dir/show/skovra" >"$headless_dir/planted/skovra"
    chmod +x "$headless_dir/planted/skovra"
    PROGRAMS=$headless_dir/planted CHAOS_PATIENCE_MS=3000 "$chaos" --seed 0 | tee "$headless_dir/report"
}

# expect_runs SECONDS STATUS REPORT: of as many runs as fit.
expect_runs() {
    local status=0
    PROGRAMS=$headless_dir/planted TMPDIR=$headless_dir/scratch "$chaos" "$1" \
        >"$headless_dir/report" || status=$?
    cat "$headless_dir/report"
    expect_equal "status" "$2" "$status"
    tail -n 1 "$headless_dir/report" | grep -q "$3" || fail "the last line"
    expect_equal "left" "" "$(ls "$headless_dir/scratch")"
}

# expect_noticed COMMANDS REPORT
expect_noticed() {
    ! try "$1" || fail "it passes"
    grep -q "FAILED: $2" "$headless_dir/report" || fail "another fault is reported"
}

FaultsAreNoticed() {
    headless_begin
    chmod 711 "$headless_dir"
    mkdir "$headless_dir/planted" "$headless_dir/scratch" "$headless_dir/show"
    cp -r "$PROGRAMS/skovra" "$PROGRAMS/resources" "$headless_dir/show"
    cp -r "$PROGRAMS/resources" "$headless_dir/planted" # no link: runs spoil what it leads to
    try : || fail "the show itself does not pass"
    expect_runs 0 0 ' 0 failures$'
    # shellcheck disable=SC2016 # for the program to expand
    {
        expect_noticed 'kill -SEGV $$' 'the status'
        expect_noticed 'kill -PIPE $$' 'the status'
        expect_noticed 'exit 3' 'the status'
        expect_runs 1 1 ' [1-9][0-9]* failures$'
        expect_noticed 'echo more; exit 0' 'standard output differs: more'
        expect_noticed 'sleep 60 & exit 0' 'left a process: sleep 60'
        expect_noticed 'touch "$HOME/mine"; exit 0' 'files appeared or went: .*/home/mine'
        expect_noticed 'touch here; exit 0' 'files appeared or went: .*/folder/here'
        expect_noticed 'touch "/dev/shm/skovra-chaos.$$"; exit 0' 'files appeared or went: .*/dev/shm'
        expect_noticed 'trap "" TERM; while :; do read -r -t 1 <> <(:); done' 'has not ended'
    }
}

"$1"
