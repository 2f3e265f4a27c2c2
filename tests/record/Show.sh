#!/usr/bin/env bash
# Recordings of the whole show. Argument: the case to run.
# shellcheck source=tests/record/record.sh
. "$(dirname "$0")/record.sh"

# probe FILE STREAM ENTRY: one value of ffprobe's.
probe() {
    ffprobe -v error -select_streams "$2" -show_entries "stream=$3" -of default=nw=1:nk=1 "$1"
}

EachTickIsAtItsPosition() {
    POSITION_LOG=positions run 0 "$PROGRAMS/skovra-record-positions" --size $small --wav show.wav
    # One after the other, each tick's positions; the last one is past the end.
    cut -d ' ' -f 1 positions | uniq >seen
    seq 0 25 33025 >wanted
    cmp wanted seen || fail "positions that the show was told"
    # In the first tick the show draws once, in all others twice, each time with four positions
    # while there is a picture and three when there is none; the last ends at its first.
    expect_equal "positions told" \
        "$((4 + 8 * 1199 + 6 * 121 + 1))" "$(wc -l <positions)"
}

SoundIsWhatTheMusicDecodesTo() {
    run 0 "$recorder" --wav show.wav
    "$PROGRAMS/sound-check" same show.wav "$PROGRAMS/resources/synchtune.mp3" ||
        fail "the sound is not the music"
    expect_equal "bytes" "$((56 + 8 * 44100 * 33025 / 1000 + 4))" "$(stat -c %s show.wav)"
    expect_nothing_left show.wav
}

# first_time FILE STREAM: when the first of that stream's frames is to be seen or heard, in us.
first_time() {
    ffprobe -v error -select_streams "$2" -read_intervals '%+#5' -show_entries frame=pts_time \
        -of default=nw=1:nk=1 "$1" | awk 'NR == 1 { printf "%d", 1000000 * $1 }'
}

# is_whole FILE: 1321 pictures at 40 a second and as much sound, both from the same moment on.
is_whole() {
    local file=$1 apart duration
    expect_equal "pictures" 1321 \
        "$(ffprobe -v error -count_packets -select_streams v -show_entries stream=nb_read_packets \
            -of default=nw=1:nk=1 "$file")"
    expect_equal "pictures a second" 40/1 "$(probe "$file" v r_frame_rate)"
    expect_equal "colours" "tv bt709 bt709 bt709" \
        "$(probe "$file" v color_range,color_space,color_transfer,color_primaries | xargs)"
    # What the container itself says, which some players go by: by numbers, 1 is BT.709.
    if [ "${file##*.}" = mp4 ]; then
        ffprobe -v trace "$file" 2>&1 | grep 'nclx: pri 1 trc 1 matrix 1 full 0' >/dev/null ||
            fail "the container does not name the colours"
    fi
    expect_equal "pixels" yuv420p "$(probe "$file" v pix_fmt)"
    apart=$(($(first_time "$file" v) - $(first_time "$file" a)))
    # One of the containers tells the time in ms.
    [ "${apart#-}" -le 1000 ] ||
        fail "pictures and sound begin $apart us apart"
    ffmpeg -v error -nostdin -y -i "$file" -f f32le -ac 2 -ar 44100 sound.raw
    duration=$(($(stat -c %s sound.raw) * 1000 / 8 / 44100))
    if [ "$duration" -lt 33024 ] || [ "$duration" -gt 33060 ]; then
        fail "$duration ms of sound"
    fi
    expect_equal "frames that the sound is late" 0 "$("$PROGRAMS/sound-check" lag show.wav sound.raw)"
}

# off FILE EXPECTED: the mean difference of two pictures.
off() {
    compare -metric MAE "$1" "$2" null: 2>&1 | cut -d ' ' -f 1
}

# shows FILE MS: the picture seen at that time is the one drawn for it rather than the one before.
shows() {
    local seconds before=$(($2 - 25)) right wrong
    seconds=$(awk -v ms="$2" 'BEGIN { print ms / 1000 }')
    ffmpeg -v error -nostdin -y -ss "$seconds" -i "$1" -frames:v 1 -pix_fmt rgb24 seen.png
    right=$(off seen.png "$2.png" || :)
    wrong=$(off seen.png "$before.png" || :)
    awk -v right="$right" -v wrong="$wrong" 'BEGIN { exit !(2 * right < wrong) }' ||
        fail "$1: the picture at $2 ms is off by $right, and by $wrong from the one before"
}

WholeShow() {
    local file=show.$1
    run 0 "$recorder" --size $small --wav show.wav --still 4975=4975.png --still 5000=5000.png \
        --still 14975=14975.png --still 15000=15000.png "$file"
    is_whole "$file"
    shows "$file" 5000
    shows "$file" 15000
    [ ! -s out ] || fail "standard output: $(head -c 80 out)"
    expect_nothing_left show.wav "$file" {4975,5000,14975,15000}.png sound.raw seen.png
}

Mp4IsWholeAndInStep() {
    WholeShow mp4
    expect_equal "index first" "ftyp moov" \
        "$(ffprobe -v trace show.mp4 2>&1 | grep -o "type:'\(ftyp\|moov\|mdat\)' parent:'root'" |
            cut -d "'" -f 2 | head -n 2 | xargs)"
    expect_equal "starts" "0.000000 0.000000" \
        "$(ffprobe -v error -show_entries stream=start_time -of default=nw=1:nk=1 show.mp4 | xargs)"
}

MkvIsWholeAndInStep() {
    WholeShow mkv
    # Its sound is not changed at all: 24 bits hold what the music decodes to.
    ffmpeg -v error -nostdin -i show.mkv -map 0:a -c copy sound.flac
    ffmpeg -v error -nostdin -i show.wav -sample_fmt s32 -bits_per_raw_sample 24 expected.flac
    expect_equal "sound" "$(ffmpeg -v error -i expected.flac -f md5 -)" \
        "$(ffmpeg -v error -i sound.flac -f md5 -)"
}

WebmIsWholeAndInStep() { WholeShow webm; }

ColoursAreThoseDrawn() {
    local colour seen
    copy_recorder
    convert -size 64x32 xc:'#c02020' copy/resources/skovr.png
    convert -size 64x32 xc:'#20a0c0' copy/resources/credits.png
    run 0 copy/skovra-record --size $small show.mp4
    for colour in "5 192,32,32" "20 32,160,192"; do
        ffmpeg -v error -nostdin -y -ss "${colour% *}" -i show.mp4 -frames:v 1 \
            -vf scale=flags=accurate_rnd+full_chroma_int,format=rgb24 seen.png
        # Where the picture is and no bar.
        seen=$(convert seen.png -crop 100x20+150+50 -resize '1x1!' -depth 8 \
            -format '%[fx:round(255*r)],%[fx:round(255*g)],%[fx:round(255*b)]' info:)
        awk -F , -v seen="$seen" -v wanted="${colour#* }" 'BEGIN {
            split(seen, s); split(wanted, w)
            for (i = 1; i <= 3; i++) if (s[i] - w[i] > 2 || w[i] - s[i] > 2) exit 1
        }' || fail "${colour#* } is seen as $seen"
    done
}

TwoRecordingsAreTheSame() {
    local n
    for n in 1 2; do
        run 0 "$recorder" --size $small --wav $n.wav --frames $n $n.mp4
        (cd $n && md5sum -- *.png) >$n.sums
        ffmpeg -v error -i $n.mp4 -f framemd5 - >$n.framemd5
    done
    expect_equal "pictures" 1321 "$(wc -l <1.sums)"
    cmp 1.sums 2.sums || fail "the pictures differ"
    cmp 1.wav 2.wav || fail "the sounds differ"
    cmp 1.framemd5 2.framemd5 || fail "the videos differ"
}

WhatIsNotSeenChangesNoPicture() {
    run 0 "$recorder" --size $small --still 0=a0.png --still 25=a25.png --still 20000=a20.png
    run 0 "$PROGRAMS/skovra-record-all-drawn" --size $small --still 0=b0.png --still 25=b25.png \
        --still 20000=b20.png
    local moment
    for moment in 0 25 20; do
        cmp "a$moment.png" "b$moment.png" || fail "pictures differ"
    done
}

AStillEndsTheShowEarly() {
    POSITION_LOG=positions run 0 "$PROGRAMS/skovra-record-positions" --size 33x17 --still 1010=a.png
    expect_equal "last position" 1000 "$(tail -n 1 positions | cut -d ' ' -f 1)"
    expect_equal "size" 33x17 "$(identify -format %wx%h a.png)"
    expect_nothing_left a.png positions
}

FramesAreTheStills() {
    run 0 "$recorder" --size 64x48 --frames new/folder --still 0=a.png --still 33000=b.png
    expect_equal "pictures" 1321 "$(find new/folder -name '*.png' | wc -l)"
    cmp a.png new/folder/00000.png
    cmp b.png new/folder/01320.png
}

TraceIsWhatTheShowPrints() {
    run 0 "$recorder" --size $small --trace --still 50=a.png
    expect_equal "first line" '"QVZ 02 - Skovra"' "$(head -n 1 out)"
    expect_equal "last line" 11111 "$(tail -n 1 out)"
}

LargePicturesAreRecorded() {
    run 0 "$recorder" --size 3840x2160 --still 5000=a.png
    expect_equal "size" 3840x2160 "$(identify -format %wx%h a.png)"
    # The same picture, larger: the engine's own reshape was told.
    run 0 "$recorder" --size 960x540 --still 5000=b.png
    convert a.png -resize 25% c.png
    local difference
    difference=$(off b.png c.png || :)
    awk -v found="$difference" 'BEGIN { exit !(found < 1000) }' || fail "off by $difference"
}

"$1"
