#!/usr/bin/env bash
# readme-commands.sh README BUILD: each command of the document is run by a test of that build.
# A command that this list does not know fails, and so does a test of it that is not there.
set -euo pipefail

declare -A tests=(
    ["script/web --serve"]=web.Build.ServesTheSite
    ["script/run"]=endtoend.RunScript.PlaysTheWholeShowWithoutADisplay
    ["script/package"]=package.Published
    ["script/package --here"]=package.Published
    ["apt-get install ./build/packages/skovra_*~deb12u1_amd64.deb"]=package.Published
    ["script/record skovra.mp4"]=record.Script.MakesTheVideoOfTheReadme
    ["script/record --help"]=record.Script.MakesTheVideoOfTheReadme
    ["script/build release skovra-gallery"]=endtoend.RunScript.BuildsTheGallery
    ["build/release/bin/skovra-gallery"]=endtoend.RunScript.BuildsTheGallery
)
# What runs this can hardly be run by it.
runners=("script/test" "script/test --all")

commands() {
    sed -n 's/^    //p' "$1"
    # shellcheck disable=SC2016 # a code span, not a command
    grep -oE '`(script|build/release/bin)/[^`]*`' "$1" | tr -d '`'
}

there=$(ctest --test-dir "$2" -N | sed -n 's/^ *Test *#[0-9]*: //p')
failures=0
found=0
while read -r command; do
    if grep -qxF -- "$command" <<<"$(printf '%s\n' "${runners[@]}")"; then
        continue
    fi
    found=$((found + 1))
    if ! grep -qxF -- "${tests[$command]:-of no name}" <<<"$there"; then
        echo "no test runs: $command"
        failures=$((failures + 1))
    fi
done < <(commands "$1")
[ "$found" -ge "${#tests[@]}" ] && [ "$failures" -eq 0 ]
