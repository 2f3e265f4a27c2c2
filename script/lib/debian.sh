# Other Debian systems than this one, made in a folder. Sourced, from bash.
# shellcheck shell=bash

# debian_sources FOLDER [SUITE]: copies what says where this machine gets its packages to FOLDER, as
# of SUITE if there is one, and leaves the copies' names in debian_sources. Answers 1 without any.
debian_sources() {
    local source copy change=
    [ $# -lt 2 ] || change="s/\b(bookworm|trixie)\b/$2/g"
    debian_sources=()
    mkdir -p "$1"
    for source in /etc/apt/sources.list /etc/apt/sources.list.d/*.{list,sources}; do
        if grep -qwE 'bookworm|trixie' "$source" 2>/dev/null; then
            copy=$1/${source##*/}
            sed -E "$change" "$source" >"$copy"
            debian_sources+=("$copy")
        fi
    done
    [ ${#debian_sources[@]} -gt 0 ]
}

# make_debian SUITE FOLDER OPTION...: that Debian, by mmdebstrap with these options, from where this
# machine gets its packages. Says why not, and answers 1, where it cannot be made.
make_debian() {
    local suite=$1 folder=$2
    shift 2
    if [ "$(id -u)" -ne 0 ] || ! command -v mmdebstrap >/dev/null; then
        echo "No Debian $suite can be made here: it takes root and mmdebstrap." >&2
    elif ! debian_sources "$folder.sources" "$suite"; then
        echo "No Debian $suite can be made here: this machine gets no packages of Debian." >&2
    elif ! mmdebstrap --quiet --mode=root "$@" "$suite" "$folder" "${debian_sources[@]}" \
        >"$folder.log" 2>&1; then
        tail -n 5 "$folder.log" >&2
        echo "No Debian $suite can be made here: mmdebstrap failed." >&2
    else
        cp /etc/resolv.conf "$folder/etc/resolv.conf"
        return 0
    fi
    return 1
}

# unpack_packages FOLDER PACKAGES [OPTION...]: this Debian's packages for 64-bit ARM and what they
# depend on, from debian_sources, with more options for mmdebstrap. None is installed: no program of
# theirs runs. Answers 1, and says why, where that fails.
unpack_packages() {
    local folder=$1 packages=$2 suite mode=root
    shift 2
    [ "$(id -u)" -eq 0 ] || mode=chrootless # any user may unpack
    suite=$(. /etc/os-release && echo "$VERSION_CODENAME")
    mmdebstrap --quiet --mode=$mode --arch=arm64 --variant=extract --skip=check/qemu \
        --include="$packages" "$@" "$suite" "$folder" "${debian_sources[@]}" >"$folder.log" 2>&1 || {
        tail -n 5 "$folder.log" >&2
        return 1
    }
}
