#!/usr/bin/env bash
# content/build gives the files of resources/ and the icons again: pictures pixel by pixel, the
# music, decoded, to within -90 dB of full scale.
set -euo pipefail
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/../.." && pwd)
again=$(mktemp -d)
trap 'rm -rf "$again"' EXIT

RESOURCES=$again ICONS=$again "$root/content/build"

status=0
for picture in "$root"/resources/*.png "$root"/packaging/icons/*.png; do
    differing=$(compare -metric AE "$picture" "$again/${picture##*/}" null: 2>&1) || :
    echo "${picture##*/}: $differing pixels differ"
    [ "$differing" = 0 ] || status=1
done

decode() {
    ffmpeg -nostdin -v error -i "$1" -f f32le "$2"
}
decode "$root/resources/synchtune.mp3" "$again/committed"
decode "$again/synchtune.mp3" "$again/built"
if [ "$(stat -c %s "$again/committed")" != "$(stat -c %s "$again/built")" ]; then
    echo "synchtune.mp3: another length"
    exit 1
fi
# The louder channel of the difference, in dB of full scale; -inf where there is none.
peak=$(ffmpeg -nostdin -hide_banner -nostats -f f32le -ar 44100 -ac 2 -i "$again/committed" \
    -f f32le -ar 44100 -ac 2 -i "$again/built" \
    -filter_complex "[1]volume=-1[b];[0][b]amix=inputs=2:normalize=0,astats=measure_perchannel=none" \
    -f null - 2>&1 | sed -n 's/.*Peak level dB: //p')
echo "synchtune.mp3: differs by $peak dB of full scale"
awk -v peak="$peak" 'BEGIN { exit !(peak == "-inf" || (peak != "" && peak + 0 <= -90)) }' || status=1
exit "$status"
