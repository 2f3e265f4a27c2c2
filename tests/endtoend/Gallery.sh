#!/usr/bin/env bash
# The gallery of the engine's primitives. Argument: the case to run.
# shellcheck source=script/lib/show.sh
. "$(dirname "$0")/../../script/lib/show.sh"

open_gallery() {
    start_display
    headless_launch "$PROGRAMS/skovra-gallery"
    headless_wait_active "Skovra gallery"
    last=
    wait_for_change
}

# fingerprint: how many colours the window shows, and which; the caption's lines at its lower edge
# are left out.
fingerprint() {
    import -window "$headless_window" -crop 1024x650+0+0 +repage png:- | identify -format '%k %#' -
}

# A window that nothing has been drawn in yet has one colour; one that is being drawn changes.
shows_something_else() {
    now=$(fingerprint)
    [ "$now" != "$last" ] && [ "${now% *}" -gt 1 ] && [ "$now" = "$(fingerprint)" ]
}

# wait_for_change: until something is shown, whole, that is not the last picture.
wait_for_change() {
    headless_wait_until 20 "another picture" shows_something_else
    last=$now
}

EachKeyShowsItsOwnPicture() {
    local key seen=" $last " # it begins with what key 1 shows
    for key in 2 3 4 5 6 7 8; do
        headless_key "$key"
        wait_for_change
        [[ $seen != *" $last "* ]] || fail "key $key shows what another key shows"
        seen+="$last "
    done
    headless_key 1
    wait_for_change
    [[ $seen == " $last "* ]] || fail "key 1 does not show the first picture again"
}

AnotherPressShowsMoreElectrons() {
    local first
    headless_key 3
    wait_for_change
    first=$last
    for _ in 1 2 3; do
        headless_key 3
        wait_for_change
    done
    expect_equal "after as many presses as there are rings" "$first" "$last"
}

ArrowKeysTurnTheView() {
    local first=$last key
    for key in Left Up Right Down; do
        headless_key "$key"
        wait_for_change
    done
    expect_equal "turned there and back" "$first" "$last"
}

EscapeLeaves() { leave; }

# Not a test: what each key shows, as files of the folder $PICTURES, with which others are compared.
PicturesAreTaken() {
    local key
    for key in 1 2 3 4 5 6 7 8; do
        [ "$key" = 1 ] || {
            headless_key "$key"
            wait_for_change
        }
        import -window "$headless_window" "$PICTURES/$key.png"
    done
}

open_gallery
"$1"
