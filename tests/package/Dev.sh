#!/usr/bin/env bash
# The engine as other projects have it. Argument: the case to run; $BUILD is the build folder.
# shellcheck source=script/lib/show.sh
. "$(dirname "$0")/../../script/lib/show.sh"

# As the engine was compiled: sanitizers are linked by all or by none.
export CXX=$COMPILER CXXFLAGS=$FLAGS CMAKE_BUILD_TYPE=$TYPE
consumer=$(dirname "$(readlink -f "$0")")/consumer

# or_fail COMMAND...: without a word, or with all.
or_fail() {
    "$@" >"$headless_dir/log" 2>&1 || {
        cat "$headless_dir/log" >&2
        fail "$1"
    }
}

# install_engine: in $prefix.
install_engine() {
    prefix=$headless_dir/"some where"
    or_fail cmake --install "$BUILD" --component dev --prefix "$prefix"
}

# commands HEADING: those of that section of the document.
commands() {
    awk -v heading="## $1" '
        /^#/ { here = $0 == heading }
        here && /^```/ { inside = $0 == "```sh"; next }
        here && inside' "$SOURCES/docs/engine.md"
}

# expect_minimal PROGRAM: it draws, turns, finds its files and leaves.
expect_minimal() {
    local first
    headless_launch "$1"
    headless_wait_active Minimal
    headless_wait_until 20 "colours" is_coloured
    first=$(picture)
    headless_wait_until 20 "it to turn" has_changed "$first"
    headless_key Escape
    expect_exit 0
    expect_equal "standard error" "${1##*/}: no sound device, playing silently" "$(cat "$headless_err")"
}

picture() {
    import -window "$headless_window" png:- | identify -format '%k %#' -
}

has_changed() {
    [ "$(picture)" != "$1" ]
}

is_coloured() {
    local now
    now=$(picture)
    [ "${now%% *}" -gt 100 ]
}

HasEachHeader() {
    headless_begin
    install_engine
    expect_equal "the engine's headers" "$(cd "$SOURCES/engine" && echo *.h)" \
        "$(cd "$prefix/include/skovra" && echo *.h)"
    expect_equal "the platform's" "$(cd "$SOURCES/platform" && printf '%s\n' */include/*/*.h | cut -d/ -f3- | sort)" \
        "$(cd "$prefix/include/skovra/platform" && printf '%s\n' */*.h | sort)"
}

BuildsTheMinimalProgramAsTheDocumentSays() {
    start_display
    export HOME=$headless_dir/home
    mkdir "$HOME"
    commands "Outside this tree" | sed "/^script/d; s|build/release|$BUILD|; /minimal\$/q" \
        >"$headless_dir/commands"
    (cd "$SOURCES" && or_fail bash -e "$headless_dir/commands")
    rm "$HOME/minimal/resources/texture.png"
    or_fail cmake --build "$HOME/minimal" # has it there again
    expect_minimal "$HOME/minimal/minimal"
}

# expect_consumer OPTION...: it is built, and its standard streams are opened before it begins.
expect_consumer() {
    or_fail cmake -G Ninja -S "$consumer" -B "$headless_dir/consumer" \
        "-DMINIMAL=$SOURCES/examples/minimal" "$@"
    or_fail cmake --build "$headless_dir/consumer"
    expect_equal "standard output when closed" /dev/null \
        "$("$headless_dir/consumer/consumer" 2>&1 >&-)"
}

IsLinkedByALargerProject() {
    start_display
    install_engine
    expect_consumer "-DCMAKE_PREFIX_PATH=$prefix"
    expect_minimal "$headless_dir/consumer/minimal/minimal"
}

SaysWhichPackageIsMissing() {
    headless_begin
    install_engine
    ! PKG_CONFIG_LIBDIR=$headless_dir cmake -G Ninja -S "$consumer" -B "$headless_dir/consumer" \
        "-DCMAKE_PREFIX_PATH=$prefix" >"$headless_dir/log" 2>&1 || fail "it is configured"
    [[ $(tr -s ' \n' ' ' <"$headless_dir/log") == *"Skovra needs gtk+-3.0, which pkg-config does not find"* ]] ||
        fail "$(cat "$headless_dir/log")"
}

IsAPartOfALargerProject() {
    start_display
    expect_consumer "-DSKOVRA_SOURCES=$SOURCES"
    expect_minimal "$headless_dir/consumer/minimal/minimal"
}

"$1"
