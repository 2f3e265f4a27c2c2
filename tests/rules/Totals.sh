#!/usr/bin/env bash
# What script/test --all counts, with commands in place of the real ones. Argument: the case to run.
# shellcheck source=script/lib/show.sh
. "$(dirname "$0")/../../script/lib/show.sh"
headless_begin

sources=$(readlink -f "$(dirname "$0")/../..")
scratch=$headless_dir/tree
mkdir -p "$scratch/script" "$scratch/bin" "$scratch/build/"{dev,asan,tsan}
cp "$sources/script/test" "$scratch/script/"

# stand_in PATH COMMANDS: a script in the scratch tree.
stand_in() {
    printf '#!/usr/bin/env bash\n%s\n' "$2" >"$scratch/$1"
    chmod +x "$scratch/$1"
}

for name in setup build check fuzz on; do
    stand_in "script/$name" "exit 0"
done
# Three tests in each preset; one of them is skipped.
# shellcheck disable=SC2016 # expanded when it runs
stand_in bin/ctest 'while [ "$1" != --output-junit ]; do shift; done
echo "<testsuite name=\"all\" tests=\"3\" failures=\"${FAILURES:-0}\" disabled=\"0\" skipped=\"1\">
<testcase name=\"A.passes\" classname=\"A.passes\" status=\"run\">
<testcase name=\"B.fails\" classname=\"B.fails\" status=\"${STATUS:-run}\">" >"$2"'

# expect_total STATUS LINE
expect_total() {
    local status=0
    PATH=$scratch/bin:$PATH "$scratch/script/test" --all >"$headless_dir/log" || status=$?
    [ "$(tail -n 1 "$headless_dir/log")" = "$2" ] || fail "$(tail -n 1 "$headless_dir/log")"
    [ "$status" -eq "$1" ] || fail "status $status"
}

# expect_line PATTERN: one such is printed.
expect_line() {
    grep -q "$1" "$headless_dir/log" || fail "$1"
}

AllPass() { # three presets, script/check, script/fuzz twice and the other Debian
    expect_total 0 "10 passed, 0 failed, 3 skipped"
}

OtherDebianCannotBeMade() {
    stand_in script/on "exit 77"
    expect_total 0 "9 passed, 0 failed, 4 skipped"
}

OtherDebianWarns() {
    stand_in script/on "echo 'a.cpp:1:2: warning: unused variable [-Wunused-variable]'"
    expect_total 1 "9 passed, 1 failed, 3 skipped"
}

ChecksFail() {
    stand_in script/check "exit 1"
    stand_in script/on "exit 3"
    expect_total 1 "8 passed, 2 failed, 3 skipped"
    expect_line 's  script/check: FAILED$'
    expect_line 's  passes_on [a-z]*: FAILED$'
}

TestsFail() {
    FAILURES=1 STATUS=fail expect_total 1 "7 passed, 3 failed, 3 skipped"
    expect_line 's  dev: 3 tests, FAILED: B.fails$'
}

PresetDoesNotBuild() {
    # shellcheck disable=SC2016 # expanded when it runs
    stand_in script/build '[ "$1" != tsan ]'
    expect_total 1 "8 passed, 1 failed, 2 skipped"
    expect_line 's  tsan: does not build$'
}

"$1"
