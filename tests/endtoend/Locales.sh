#!/usr/bin/env bash
# The show where the desktop speaks another language, or none. Argument: the case to run.
# shellcheck source=tests/endtoend/failure.sh
. "$(dirname "$0")/failure.sh"

# expect_same_show LOCALE: its output, its boxes and its errors are those of any other.
expect_same_show() {
    local boxes=$headless_dir/boxes
    unset LANG LANGUAGE "${!LC_@}"
    export LC_ALL=$1 BOX_LOG=$boxes
    expect_show "$PROGRAMS/skovra-positions"
    diff - "$boxes" <<'BOXES' >&2 || fail "the boxes say something else"
"QVZ 02 - Skovra"
Copyright © 2005 Halvmork.
[OK]
"QVZ 02 - Skovra"
Skal du kjøre Skovra i fullskjerm?
[No][Yes]
"QVZ 02 - Skovra"
Oh, oh, oh, getting all high and mighty, WINDOW MODE, yeah whatever.
[OK]
BOXES
}

GermanChangesNothing() {
    localedef -i de_DE -f UTF-8 "$headless_dir/de_DE.UTF-8"
    export LOCPATH=$headless_dir
    expect_equal "a number where the locale counts" 1,5 "$(LC_ALL=de_DE.UTF-8 printf %.1f 1,5)"
    expect_same_show de_DE.UTF-8
}

AsciiChangesNothing() { expect_same_show C; }
AnUnknownLocaleChangesNothing() { expect_same_show xx_XX.UTF-8; }

start_display
"$1"
