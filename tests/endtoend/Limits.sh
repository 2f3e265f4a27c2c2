#!/usr/bin/env bash
# The show with less of the system's resources than usual. Argument: the case to run.
# shellcheck source=tests/endtoend/failure.sh
. "$(dirname "$0")/failure.sh"

asks_or_has_ended() {
    headless_has_ended "$headless_pid" || headless_is_active "$title"
}

# run_with LIMIT COMMAND...: sets status to that of a show that the command runs with that limit of
# prlimit's, and that is left once it plays.
run_with() {
    headless_forget_windows
    launch "${@:2}" prlimit "$1" "$PROGRAMS/skovra"
    headless_wait_until 60 "the show with $1" asks_or_has_ended
    if ! headless_has_ended "$headless_pid"; then
        answer Escape
        headless_wait_active "$title"
        headless_wait_until 60 "the music" [ -s "$headless_err" ]
        headless_key Escape
    fi
    status=0
    headless_wait_exit "$headless_pid" 60 || status=$?
    echo "$1: status $status"
}

# expect_reason_then_show REASON OPTION VALUE... -- [COMMAND...]: with the first value it gives the
# reason and ends, with the last it plays; with those between it does either.
expect_reason_then_show() {
    local reason=$1 option=$2 values=() value
    shift 2
    while [ "$1" != -- ]; do
        values+=("$1")
        shift
    done
    shift
    for value in "${values[@]}"; do
        run_with "$option=$value" "$@"
        [ "$value" != "${values[0]}" ] || expect_equal "status with the least" 1 "$status"
        if [ "$status" = 1 ]; then
            expect_errors "skovra: cannot run: $reason"
            expect_equal "standard output" "" "$(cat "$headless_out")"
        else
            expect_equal "status" 0 "$status"
            expect_errors 'skovra: no sound device, playing silently'
            expect_output
        fi
    done
    expect_equal "status with the most" 0 "$status"
}

# Limited are all that a user runs, but for root's: a user who runs nothing else is needed.
FewThreadsPlaySilentlyOrAreTold() {
    local user=$((100000 + $$))
    local alone=(setpriv "--reuid=$user" "--regid=$user" --clear-groups --inh-caps=-all
        env "HOME=$headless_dir")
    chmod 711 "$headless_dir" "$headless_dir/runtime"
    if [ "$(id -u)" != 0 ] || ! "${alone[@]}" test -x "$PROGRAMS/skovra"; then
        echo "skipped: this takes root, to become a user who runs nothing else" >&2
        exit 77
    fi
    expect_reason_then_show 'too few threads are allowed (ulimit -u)' \
        --nproc 1 5 8 16 17 20 24 26 200 -- "${alone[@]}"
}

FewOpenFilesPlaySilentlyOrAreTold() {
    expect_reason_then_show 'too few open files are allowed (ulimit -n)' \
        --nofile 9 12 40 60 80 100 --
}

LittleMemoryPlaysSilentlyOrIsTold() {
    expect_reason_then_show 'too little memory is allowed (ulimit -v)' \
        --as 100000000 300000000 600000000 1300000000 1700000000 16000000000 --
}

FilesThatMayNotGrowAreNotMissed() {
    launch prlimit --fsize=0 "$PROGRAMS/skovra"
    answer Escape
    headless_wait_active "$title"
    leave 60
}

AReasonThatNobodyReadsEndsNothingElse() {
    local stream status=0
    exec {stream}> >(:)
    wait "$!" # for the reader to be gone
    prlimit --nofile=9 "$PROGRAMS/skovra" 2>&"$stream" || status=$?
    expect_equal status 1 "$status"
}

start_display
"$1"
