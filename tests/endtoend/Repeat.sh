#!/usr/bin/env bash
# The show started and left again and again. Argument: the case to run.
# shellcheck source=script/lib/show.sh
. "$(dirname "$0")/../../script/lib/show.sh"

seed=${REPEAT_SEED:-20062}
displays=4 # with shows at once
starts=25  # on each

# server_state: what the display's server holds for whom, then its windows. What the window manager
# keeps for later is its own affair, and this question's is gone with it.
server_state() {
    xrestop -b -m 1 | awk '/^[0-9]+ - / { shown = !/- (Openbox|xrestop)/ } shown'
    xwininfo -root -tree | grep -o '0x[0-9a-f]* .*'
}

# Windows come and go in the window manager's good time.
server_is_as_before() {
    server_state >"$headless_dir/state"
    cmp -s "$headless_dir/state.before" "$headless_dir/state"
}

expect_server_as_before() {
    headless_wait_until 20 "the server to be as it was" server_is_as_before ||
        fail "left in the server: $(diff "$headless_dir/state.before" "$headless_dir/state")"
}

only_the_server_itself_holds_something() {
    [ "$(server_state | grep -c '^[0-9]* - ')" -eq 1 ]
}

# shared_memory: segments made by any of our shows that outlive it.
shared_memory() {
    awk -v shows="$shows" 'index(shows, " " $5 " ")' /proc/sysvipc/shm
}

# start_and_leave KEY MS: the answer for full screen or a window, and the position to leave at.
start_and_leave() {
    headless_forget_windows
    launch "$PROGRAMS/skovra-positions"
    shows+="$headless_pid "
    answer "$1"
    wait_for_position "$2"
    leave
    expect_output
}

# run_shows SEED: on a display of its own.
run_shows() {
    local start shows=" " keys=(Return Escape)
    RANDOM=$1
    start_display
    start_and_leave Escape 0 # after it the window manager has all its own windows
    headless_wait_until 20 "the show to be gone" only_the_server_itself_holds_something
    server_state >"$headless_dir/state.before"
    for ((start = 2; start <= starts; start++)); do
        start_and_leave "${keys[RANDOM % 2]}" $((RANDOM % 2000))
    done
    expect_server_as_before
    expect_equal "processes left" "" "$(show_processes)"
    expect_equal "shared memory left" "" "$(shared_memory)"
}

AHundredStartsLeftByEscapeLeaveNothing() {
    local display failed=0 workers=()
    echo "seed $seed"
    for ((display = 1; display <= displays; display++)); do
        run_shows $((seed + display)) &
        workers+=("$!")
    done
    for display in "${workers[@]}"; do
        wait "$display" || failed=$((failed + 1))
    done
    expect_equal "displays with a fault" 0 "$failed"
    echo "$((displays * starts)) shows"
}

"$1"
