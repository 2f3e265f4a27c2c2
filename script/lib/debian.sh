#!/usr/bin/env bash
# Other Debian systems than this one, made in a folder. Sourced, from bash.

# make_debian SUITE FOLDER OPTION...: that Debian, by mmdebstrap with these options, from where this
# machine gets its packages. Says why not, and fails, where it cannot be made.
make_debian() {
    local suite=$1 folder=$2 scratch source sources=()
    shift 2
    if [ "$(id -u)" -ne 0 ] || ! command -v mmdebstrap >/dev/null; then
        echo "No Debian $suite can be made here: it takes root and mmdebstrap." >&2
        return 1
    fi
    scratch=$(mktemp -d)
    for source in /etc/apt/sources.list /etc/apt/sources.list.d/*.{list,sources}; do
        if grep -qwE 'bookworm|trixie' "$source" 2>/dev/null; then
            sources+=("$scratch/${source##*/}")
            sed -E "s/\b(bookworm|trixie)\b/$suite/g" "$source" >"${sources[-1]}"
        fi
    done
    if [ ${#sources[@]} -eq 0 ]; then
        echo "No Debian $suite can be made here: this machine gets no packages of Debian." >&2
    elif mmdebstrap --quiet --mode=root "$@" "$suite" "$folder" "${sources[@]}" \
        >"$scratch/log" 2>&1; then
        cp /etc/resolv.conf "$folder/etc/resolv.conf"
        rm -r "$scratch"
        return
    else
        tail -n 5 "$scratch/log" >&2
        echo "No Debian $suite can be made here: mmdebstrap failed." >&2
    fi
    rm -r "$scratch"
    return 1
}
