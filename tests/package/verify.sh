#!/usr/bin/env bash
# Proves the packages in build/packages/: their form, that they are the same when made again, and
# that each plays the show to its end in the Debian it is for, with nothing but what it asks for; the
# zip in both, at the same time. Ends with 77 where such a system cannot be made, if all else is
# proved. With an argument, as it calls itself: only what concerns the Debian of that name.
# shellcheck source=script/lib/show.sh
. "$(dirname "$0")/../../script/lib/show.sh"
# shellcheck source=tests/package/form.sh
. "$(dirname "$0")/form.sh"
# shellcheck source=script/lib/debian.sh
. "$(dirname "$0")/../../script/lib/debian.sh"
cd "$(dirname "$(readlink -f "$0")")/../.."
export LC_ALL=C.UTF-8

packages=$PWD/build/packages
zip=$(echo "$packages"/*.zip)

# Form --------------------------------------------------------------------------------------------

# check_form_of_deb FILE
check_form_of_deb() {
    local unpacked=$headless_dir/unpacked
    lintian --allow-root --fail-on error,warning "$1" || fail "lintian"
    # Of what it only mentions, this is held to as well.
    lintian --allow-root --display-info "$1" >"$headless_dir/lintian" || fail "lintian"
    ! grep hardening "$headless_dir/lintian" || fail "lintian"
    proved "lintian: ${1##*/}"
    rm -rf "$unpacked"
    dpkg-deb --extract "$1" "$unpacked"
    check_form "$unpacked/usr"
}

# The same bytes ----------------------------------------------------------------------------------

check_made_again() {
    local elsewhere=$headless_dir/"somewhere else" each
    mkdir "$elsewhere"
    tar --create --exclude ./build --exclude ./.git . | tar --extract --directory "$elsewhere"
    env -C "$elsewhere" TZ=America/St_Johns LC_ALL=C \
        bash -c 'umask 077 && script/package --here' >"$headless_dir/again.log" 2>&1 || {
        tail -n 20 "$headless_dir/again.log" >&2
        fail "making the packages again"
    }
    ! grep '\[-W[a-z]' "$headless_dir/again.log" || fail "a warning of the published build"
    for each in "$elsewhere"/build/packages/*; do
        cmp "$each" "$packages/${each##*/}" || fail "${each##*/} is another when made again"
        proved "${each##*/} is the same when made again"
    done
}

# In a system with nothing else -------------------------------------------------------------------

roots=()

headless_at_exit() {
    local each
    for each in "${roots[@]}"; do
        umount --quiet "$each/proc" "$each/media" || :
    done
}

# make_root SUITE: that Debian, minimal, in $root.
make_root() {
    root=$headless_dir/$1
    roots+=("$root")
    if ! make_debian "$1" "$root" --variant=apt --include=ca-certificates ||
        ! mount -t proc proc "$root/proc" || ! in_root apt-get update; then
        tail -n 5 "$headless_dir/root.log" >&2 || :
        echo "Not proved: what needs a minimal Debian $1."
        exit 77
    fi
}

in_root() {
    chroot "$root" env -i PATH=/usr/sbin:/usr/bin:/sbin:/bin LC_ALL=C DEBIAN_FRONTEND=noninteractive \
        ${http_proxy+http_proxy="$http_proxy"} ${https_proxy+https_proxy="$https_proxy"} \
        "$@" >"$headless_dir/root.log" 2>&1
}

install_in_root() {
    in_root apt-get install -y --no-install-recommends "$@" || {
        tail -n 20 "$headless_dir/root.log" >&2
        fail "installing $*"
    }
}

# files_of_root: all there are, but for the package manager's own.
files_of_root() {
    env -C "$root" find . -regextype posix-extended -type d \
        -regex '\./(proc|dev|tmp|var/(cache|log|lib/(apt|dpkg)))' -prune -o -print | sort
}

# play_in_root FOLDER: the programs in there, run by a user of that system who has no home.
play_in_root() {
    local as_user=(chroot --userspec=1000:1000 "$root" env -i PATH=/usr/bin HOME=/nonexistent
        LIBGL_ALWAYS_SOFTWARE=1 NO_AT_BRIDGE=1) begin=$SECONDS
    headless_forget_windows
    open_in_window "${as_user[@]}" DISPLAY="$DISPLAY" "$1/skovra" || {
        cat "$headless_err" >&2
        fail "the show does not start"
    }
    expect_exit 0 120
    expect_output
    ((SECONDS - begin >= 33)) || fail "the show ended after $((SECONDS - begin)) s"
    "${as_user[@]}" "$1/skovra-record" --still 5000=/tmp/still.png >"$headless_dir/record.log" 2>&1 || {
        cat "$headless_dir/record.log" >&2
        fail "recording a picture"
    }
    expect_equal "size of the picture" 1024x768 "$(identify -format '%wx%h' "$root/tmp/still.png")"
    [ "$(identify -format %k "$root/tmp/still.png")" -gt 1000 ] || fail "the picture is almost empty"
}

# check_deb FILE
check_deb() {
    local before=$headless_dir/before after=$headless_dir/after
    files_of_root >"$before"
    mkdir -p "$root/build/packages"
    cp "$1" "$root/build/packages"
    in_root sh -c 'apt-get install -y --no-install-recommends ./build/packages/skovra_*.deb' || {
        tail -n 20 "$headless_dir/root.log" >&2
        fail "installing the package"
    }
    rm -r "$root/build"
    play_in_root /usr/bin
    proved "${1##*/} is installed and plays the show to its end"
    in_root dpkg-query --listfiles skovra || fail "not known to the system"
    sed 's/^/./' "$headless_dir/root.log" | sort >"$headless_dir/owned"
    in_root apt-get purge -y --autoremove skovra || fail "removing the package"
    files_of_root >"$after"
    ! in_root dpkg-query -W skovra || fail "still known to the system"
    comm -13 "$before" "$after" >"$headless_dir/left"
    # Whether it was a file of the package, or bears its name.
    ! comm -12 "$headless_dir/left" "$headless_dir/owned" | grep . || fail "left behind"
    ! grep skovra "$headless_dir/left" || fail "left behind"
    proved "it is removed without a trace ($(wc -l <"$headless_dir/left") files of what it needed stay)"
}

# check_zip SUITE: with what any desktop has, a display's and a sound server's libraries, GTK and OpenGL.
check_zip() {
    install_in_root libasound2 libegl1 libgl1 libgtk-3-0 libpng16-16 libpulse0 libxi6 libxrandr2
    mkdir -p "$headless_dir/media" "$root/media"
    unzip -q -o "$zip" -d "$headless_dir/media"
    mount --bind -o ro "$headless_dir/media" "$root/media"
    play_in_root "/media/$(basename "$zip" .zip)"
    proved "the unpacked zip plays the show to its end in $1, from where nothing can be written"
}

# check_in_root SUITE RELEASE
check_in_root() {
    local deb
    start_display
    make_root "$1"
    deb=$(echo "$packages"/*~deb"$2"u1_"$(dpkg --print-architecture)".deb)
    if [ ! -e "$deb" ]; then
        echo "Not proved: a .deb for $1, which was not made."
        exit 77
    fi
    check_deb "$deb"
    check_zip "$1"
}

case "${1:-}" in
bookworm) check_in_root bookworm 12 ;;
trixie) check_in_root trixie 13 ;;
*)
    headless_begin
    for suite in bookworm trixie; do
        tests/package/verify.sh "$suite" &
        headless_pids+=("$!")
    done
    suites=("${headless_pids[@]}")
    for deb in "$packages"/*.deb; do
        check_form_of_deb "$deb"
    done
    check_made_again
    skipped=false
    for pid in "${suites[@]}"; do
        status=0
        wait "$pid" || status=$?
        [ "$status" -eq 0 ] || [ "$status" -eq 77 ] || fail "what is published does not work"
        [ "$status" -eq 0 ] || skipped=true
    done
    ! $skipped || exit 77
    ;;
esac
