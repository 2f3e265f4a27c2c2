#!/usr/bin/env bash
# What `cmake --install` leaves. Argument: the case to run; $BUILD is the build folder.
# shellcheck source=script/lib/show.sh
. "$(dirname "$0")/../../script/lib/show.sh"
# shellcheck source=tests/package/form.sh
. "$(dirname "$0")/form.sh"
export LC_ALL=C.UTF-8

# installed: the tree, in $prefix.
installed() {
    prefix=$headless_dir/"some where"/usr
    cmake --install "$BUILD" --prefix "$prefix" >"$headless_dir/install.log" || {
        cat "$headless_dir/install.log"
        fail "installing"
    }
}

# installed_folder: what is packed into one, in $folder.
installed_folder() {
    folder=$headless_dir/"some where"/portable
    cmake --install "$BUILD" --component portable --prefix "$folder" >/dev/null || fail "installing"
}

required_files() {
    local size
    printf 'bin/%s\n' skovra skovra-gallery skovra-record
    printf 'share/skovra/%s\n' credits.png skovr.png synchtune.mp3 texture.png
    printf 'share/man/%s.gz\n' man1/skovra-record.1 man6/skovra.6 man6/skovra-gallery.6
    printf 'share/doc/skovra/%s\n' changelog.Debian.gz copyright
    for size in 48 64 128 256; do
        echo "share/icons/hicolor/${size}x$size/apps/skovra.png"
    done
    echo share/icons/hicolor/scalable/apps/skovra.svg
    echo share/applications/skovra.desktop
    echo share/metainfo/example.halvmork.skovra.metainfo.xml
}

EachFileIsInItsPlace() {
    headless_begin
    installed
    diff <(required_files | sort) <(cd "$prefix" && find . -type f | sed 's/^\.\///' | sort) ||
        fail "installed files"
    local size
    for size in 48 64 128 256; do
        expect_equal "icon's size" "${size}x$size" \
            "$(identify -format '%wx%h' "$prefix/share/icons/hicolor/${size}x$size/apps/skovra.png")"
    done
}

EachDocumentTellsThisVersion() {
    local version release package
    headless_begin
    installed
    version=$("$prefix/bin/skovra-record" --version | cut -d' ' -f2)
    release=$(sed -n 's/.*<release version="\(.*\)" date="\(.*\)".*/\1 (\2)/p' \
        "$prefix"/share/metainfo/* | head -n 1)
    expect_equal "the metainfo's version" "$version" "${release% *}"
    expect_equal "the newest of CHANGELOG.md" "## $release" "$(grep -m 1 '^## ' "$SOURCES/CHANGELOG.md")"
    # shellcheck source=/dev/null
    . /etc/os-release
    package=$(zcat "$prefix/share/doc/skovra/changelog.Debian.gz" | head -n 1)
    [[ $package == "skovra ($version-1~"*"${VERSION_ID:-}"*") ${VERSION_CODENAME:-}; urgency=medium" ]] ||
        fail "the package's version: $package"
}

# needed FILE...: the names of the libraries that these ask for.
needed() {
    readelf --dynamic --wide "$@" | sed -n 's/.*(NEEDED).*\[\(.*\)\]$/\1/p'
}

# libraries_of PROGRAM: "NAME FILE" of each that it is linked with.
libraries_of() {
    awk 'NR == FNR { needed[$1]; next } $1 in needed' \
        <(needed "$1") \
        <(ldd "$1" | sed -n 's/^[[:space:]]*\([^ ]*\) => \(.*\) (0x.*/\1 \2/p')
}

# package_of FILE: the Debian package it came with.
package_of() {
    local file
    file=$(readlink -e "$1") || return
    file=${file#/usr} # known with or without
    { dpkg-query --search "/usr$file" 2>/dev/null || dpkg-query --search "$file"; } | sed 's/[:,].*//'
}

# package_of_library NAME: the same of the one that a program gets by that name.
package_of_library() {
    package_of "$(/sbin/ldconfig -p | awk -v name="$1" '$1 == name && !found++ { print $NF }')"
}

# licence_of PACKAGE: its line of LICENSES.md, which has Debian 12's names: the next one's may end
# with t64, and name another version.
licence_of() {
    local name=${1%t64}
    grep -F "| $name " "$SOURCES/LICENSES.md" ||
        grep -E "\| ${name%%[0-9.]*}[0-9.-]* " "$SOURCES/LICENSES.md" ||
        fail "LICENSES.md lacks $1"
}

EachLibraryHasItsLicenceListed() {
    local program name file package letter count=0
    headless_begin
    installed
    installed_folder
    while read -r name file; do
        package=$(package_of "$file") || fail "$name is of no package"
        licence_of "$package" >"$headless_dir/line"
        for program in skovra=S skovra-record=R skovra-gallery=G; do
            letter=${program#*=}
            if needed "$prefix/bin/${program%=*}" | grep -xF "$name" >/dev/null; then
                cut -d '|' -f 6 "$headless_dir/line" | grep -wF "$letter" >/dev/null ||
                    fail "LICENSES.md does not say that ${program%=*} is linked with $package"
            fi
        done
        count=$((count + 1))
    done < <(for program in "$prefix"/bin/* "$folder"/lib/*; do libraries_of "$program"; done | sort -u)
    [ "$count" -ge 25 ] || fail "only $count libraries were found"
}

# What a program loads only where it is there, nothing installs unless it is recommended.
EachLibraryLoadedAtRunTimeIsRecommended() {
    local name package count=0
    headless_begin
    installed
    while read -r name; do
        package=$(package_of_library "$name") || fail "$name is of no package"
        grep "^set(CPACK_DEBIAN_PACKAGE_RECOMMENDS " "$BUILD/CPackConfig.cmake" |
            grep -qE "[ \"]${package}[,\" ]" || fail "the package does not recommend $package ($name)"
        licence_of "$package" >"$headless_dir/line"
        count=$((count + 1))
    done < <(strings "$prefix/bin/skovra" | grep -x 'lib[^ /]*\.so\.[0-9.]*' | sort -u |
        comm -23 - <(needed "$prefix/bin/skovra" | sort))
    [ "$count" -ge 1 ] || fail "none was found"
}

# newest NAME FILE...: the newest version of that library's functions that these call.
newest() {
    readelf --version-info --wide "${@:2}" | grep -o "Name: $1_[0-9.]*" | sed 's/.*_//' | sort -uV | tail -n 1
}

TheFolderBringsWhatADesktopMayLack() {
    local programs program name file package
    headless_begin
    installed_folder
    programs=("$folder"/skovra "$folder"/skovra-{record,gallery})
    for program in "${programs[@]}"; do
        while read -r name file; do
            [ ! -e "$folder/lib/$name" ] || expect_equal "$name" "$folder/lib/$name" "$file"
        done < <(libraries_of "$program")
    done
    # Of all that is asked for, LICENSES.md says what is brought; the rest skovra.nfo asks of the system.
    while read -r name; do
        package=$(package_of_library "$name") || fail "$name is of no package"
        licence_of "$package" >"$headless_dir/line"
        if [ -e "$folder/lib/$name" ]; then
            [ -s "$folder/licences/$package.txt" ] || fail "no licence of $name"
            grep -q '| lib/ |$' "$headless_dir/line" || fail "LICENSES.md lacks $package, in lib/"
        else
            ! grep -q '| lib/ |$' "$headless_dir/line" || fail "lib/ lacks $name"
        fi
    done < <(needed "${programs[@]}" "$folder"/lib/* | grep -v '^ld-linux' | sort -u)
    bash "$SOURCES/tests/docs/links.sh" "$folder/licences/LICENSES.md" || fail "links in LICENSES.md"
    for name in libglut libcubeb libmpg123 libsoxr libkissfft-float; do
        compgen -G "$folder/lib/$name.so.*" >/dev/null || fail "it lacks $name"
    done
    expect_equal "which texts lie beside the programs" "FILE_ID.DIZ skovra.nfo" \
        "$(cd "$folder" && echo *.DIZ *.nfo)"
    expect_equal "columns of skovra.nfo" 80 "$(wc -L <"$folder/skovra.nfo")"
    for name in "glibc $(newest GLIBC "${programs[@]}" "$folder"/lib/*) and" \
        "(GLIBCXX_$(newest GLIBCXX "${programs[@]}" "$folder"/lib/*))"; do
        grep -qF " $name" "$folder/skovra.nfo" || fail "skovra.nfo does not ask for $name"
    done
}

TheDesktopUnderstandsWhatIsForIt() {
    local element
    headless_begin
    installed
    check_form "$prefix"
    # What software centres show or refuse to go without, and validators only mention.
    for element in '<content_rating type="oars-1.1"' '<screenshot type="default">'; do
        grep -qF "$element" "$prefix"/share/metainfo/* || fail "the metainfo lacks $element"
    done
}

TheShowPlaysWhereverItIsMoved() {
    start_display
    installed
    mv "$prefix" "$headless_dir/elsewhere"
    open_in_window "$headless_dir/elsewhere/bin/skovra"
    leave
    expect_output
}

# By the other programs, too.
TheShowsResourcesAreFoundWhereverItIsMoved() {
    start_display
    installed
    mv "$prefix" "$headless_dir/elsewhere"
    headless_launch "$headless_dir/elsewhere/bin/skovra-record" --still "0=$headless_dir/0.png"
    expect_exit 0 60
    expect_equal "words of the recorder" "" "$(grep 'not found' "$headless_err")"
    headless_launch "$headless_dir/elsewhere/bin/skovra-gallery"
    headless_wait_active "Skovra gallery"
    headless_key Escape
    expect_exit 0
    expect_equal "words of the gallery" "" "$(cat "$headless_err")"
}

"$1"
