#!/usr/bin/env bash
# The sound library beside its peers, on either server: positions, dropouts, cost. Sourced by run.sh.
# shellcheck disable=SC2034,SC2154 # variables are shared with run.sh

# Position ----------------------------------------------------------------------------------------

compare() {
    keep "$1" "$("$PROGRAMS/bench-truth" position "$music" "$sink_log" "$2")"
}

# play MODE: by our player, whose answers are in $answers.
play() {
    answers=$headless_dir/answers
    start_server
    "$PROGRAMS/bench-player" "$1" "$music" "$answers" "${until_heard[@]}"
    end_server
}

measure_ours() {
    local answers kind
    play poll
    for kind in playhead position spectrum; do
        compare "$1.$kind" "$answers.$kind"
    done
    play pause
    compare "$1.pause" "$answers.playhead"
}

measure_sdl() {
    [ -x "$PROGRAMS/bench-sdl-player" ] || return 0
    start_server
    SDL_AUDIODRIVER=$server "$PROGRAMS/bench-sdl-player" "$music" "$headless_dir/answers.sdl"
    end_server
    compare "$1.sdl" "$headless_dir/answers.sdl"
}

measure_mpv() {
    has mpv || return 0
    local socket=$headless_dir/mpv-socket pid
    rm -f "$socket"
    start_server
    "${mpv[@]}" --input-ipc-server="$socket" "$music" &
    pid=$!
    headless_pids+=("$pid")
    headless_wait_until 10 "mpv" [ -S "$socket" ]
    "$PROGRAMS/bench-mpv-position" "$socket" "$headless_dir/answers.mpv"
    headless_stop "$pid"
    end_server
    compare "$1.mpv" "$headless_dir/answers.mpv"
}

measure_positions() {
    say "$server: positions, $1"
    measure_ours "$1"
    measure_sdl "$1"
    measure_mpv "$1"
}

# Dropouts ----------------------------------------------------------------------------------------

measure_shows() {
    local show line show_underruns whole=0 dropouts=0 underruns=0 lost=0
    export UNDERRUN_LOG=$headless_dir/underruns
    start_load
    for ((show = 1; show <= shows; show++)); do
        start_server
        headless_forget_windows
        rm -f "$UNDERRUN_LOG"
        open_in_window "$PROGRAMS/bench-show"
        expect_exit 0 120
        end_server
        line=$("$PROGRAMS/bench-truth" dropouts "$PROGRAMS/resources/synchtune.mp3" "$sink_log")
        show_underruns=$(cat "$UNDERRUN_LOG")
        say "$server: show $show of $shows: $line underruns=$show_underruns"
        keep show "$line"
        whole=$((whole + (${result[show.dropouts]} == 0)))
        dropouts=$((dropouts + ${result[show.dropouts]}))
        underruns=$((underruns + show_underruns))
        lost=$(awk "BEGIN { print $lost + ${result[show.lost]} }")
    done
    end_load
    keep shows "whole=$whole dropouts=$dropouts underruns=$underruns lost=$lost"
}

# Cost --------------------------------------------------------------------------------------------

cost() {
    local name=$1 line
    shift
    line=$("$PROGRAMS/bench-measure" "$@")
    keep "cost.$name" "$line"
    printf '%s\n' "${result[cost.$name.cpu]}" >>"$headless_dir/cost.$name"
}

measure_cost() {
    local round name
    rm -f "$headless_dir"/cost.*
    start_server
    for ((round = 1; round <= rounds; round++)); do
        say "$server: cost, round $round of $rounds"
        cost play "$PROGRAMS/bench-player" play "$half_music"
        ! has mpg123 || cost mpg123 mpg123 -q -o pulse "$half_music"
        cost show "$PROGRAMS/bench-player" show "$half_music"
        ! [ -x "$PROGRAMS/bench-sdl-player" ] ||
            SDL_AUDIODRIVER=$server cost sdl "$PROGRAMS/bench-sdl-player" "$half_music"
        ! has mpv || cost mpv "${mpv[@]}" "$half_music"
    done
    end_server
    for name in play show mpg123 sdl mpv; do
        [ -e "$headless_dir/cost.$name" ] || continue
        result[cost.$name.cpu]=$(median <"$headless_dir/cost.$name")
        if has mpg123; then
            result[cost.$name.ratio]=$(awk "BEGIN {
                print ${result[cost.$name.cpu]} / $(median <"$headless_dir/cost.mpg123") }")
        fi
    done
    say "memory without a server"
    without_sound
    keep silent "$("$PROGRAMS/bench-measure" "$PROGRAMS/bench-player" show "$half_music" 2>/dev/null)"
}

# Single operations -------------------------------------------------------------------------------

measure_calls() {
    has strace || return 0
    local log=$headless_dir/calls
    start_server
    strace -o "$log" "$PROGRAMS/bench-player" call "$music" || return 0
    end_server
    keep calls "$(awk '
        /^write\(-1, "/ { split($0, part, "\""); name = part[2]; next }
        name != "" && name != "end" && !/^clock_gettime/ { count[name]++ }
        END {
            print "update=" count["update"] / 1000 " getPosition=" count["getPosition"] / 1000 \
                " getSpectrum=" count["getSpectrum"] / 1000
        }' "$log")"
}

measure_operations() {
    say "single operations"
    make_long_music
    without_sound
    keep opening "$("$PROGRAMS/bench-micro" opening "$headless_dir/minutes.mp3" \
        "$headless_dir/hours.mp3" 2>/dev/null)"
    keep spectrum "$("$PROGRAMS/bench-micro" spectrum "$music" 2>/dev/null)"
    measure_calls
}

measure_players() {
    measure_positions idle
    start_load
    measure_positions busy
    end_load
    measure_cost
    measure_operations
}

# The table ---------------------------------------------------------------------------------------

position_rows() {
    local when=$1 title=$2 range=$3
    row "play head, ms off, $title: median (p1..p99)" "≤ ±0.3 ($range)" \
        "$(figure "$spread" "$when".playhead.{median,p1,p99})" \
        "$(figure "$spread" "$when".sdl.{median,p1,p99})" \
        "$(figure "$spread" "$when".mpv.{median,p1,p99})" –
    row "the same of \`getPosition\`, whole ms" – \
        "$(figure "$spread" "$when".position.{median,p1,p99})" – – –
    row "went back, times" 0 "$(figure %d "$when.playhead.back")" "$(figure %d "$when.sdl.back")" \
        "$(figure %d "$when.mpv.back")" –
    row "same answer 1 ms later: play head; \`getPosition\`" "0 %; –" \
        "$(figure '%.1f %%; %.1f %%' "$when".{playhead,position}.same)" \
        "$(figure '%.0f %%' "$when.sdl.same")" "$(figure '%.0f %%' "$when.mpv.same")" –
    row "worst from the first sample to the last, ms" "≤ ±1 idle" \
        "$(figure %+.2f "$when.playhead.worst")" "$(figure %+.0f "$when.sdl.worst")" \
        "$(figure %+.0f "$when.mpv.worst")" –
    row "worst through pauses, ms" "≤ ±1 idle" "$(figure %+.2f "$when.pause.worst")" – – –
    row "spectrum: last sample analysed to heard, ms" "≤ ±0.3 ($range)" \
        "$(figure "$spread" "$when".spectrum.{median,p1,p99})" – – –
}

cost_rows() {
    row "processor time of playing $((seconds / 2)) s, s" – "$(figure %.3f cost.play.cpu)" \
        "$(figure %.3f cost.sdl.cpu)" "$(figure %.3f cost.mpv.cpu)" "$(figure %.3f cost.mpg123.cpu)"
    row "… against mpg123" "≤ 1.1" "$(figure %.2f cost.play.ratio)" "$(figure %.2f cost.sdl.ratio)" \
        "$(figure %.2f cost.mpv.ratio)" 1
    row "… with 40 positions and spectra a second, s (against mpg123)" – \
        "$(figure '%.3f (%.2f)' cost.show.{cpu,ratio})" – – –
    row "memory at most (resident at the end), MB" "≤ 12" "$(figure '%.1f (%.1f)' cost.show.{most,rss})" \
        "$(figure '%.1f (%.1f)' cost.sdl.{most,rss})" "$(figure '%.1f (%.1f)' cost.mpv.{most,rss})" \
        "$(figure '%.1f (%.1f)' cost.mpg123.{most,rss})"
    row "… without a server" "≤ 12" "$(figure '%.1f (%.1f)' silent.{most,rss})" – – –
}

operation_rows() {
    row "opening 10 hours, against 10 minutes" "≤ 2" \
        "$(figure '%.2f (%.3f ms, %.3f ms)' opening.{ratio,long,short})" – – –
    row "… bytes read for that" – "$(figure '%d, %d' opening.{longBytes,shortBytes})" – – –
    row "\`getSpectrum\`, against its window and KissFFT alone" "≤ 1.5" \
        "$(figure '%.2f (%.1f us, %.1f us)' spectrum.{ratio,spectrum,bare})" – – –
    row "system calls in \`update\`, \`getPosition\`, \`getSpectrum\`" "0, 0, 0" \
        "$(figure '%g, %g, %g' calls.{update,getPosition,getSpectrum})" – – –
}

print_players() {
    echo "### $server"
    echo
    row "figure" "aim" "Skovra" "SDL2_mixer" "mpv" "mpg123"
    row --- --- --- --- --- ---
    position_rows idle "idle" "±1"
    position_rows busy "beside 4 busy processes" "±3"
    row "shows of 33 s without a dropout beside 4 busy processes" "$shows of $shows" \
        "$(figure "%d of $shows" shows.whole)" – – –
    row "… dropouts in all (ms lost); of them the decoder's" 0 \
        "$(figure '%d (%.0f); %d' shows.{dropouts,lost,underruns})" – – –
    cost_rows
    operation_rows
    local missing=() peer
    for peer in mpg123 mpv strace; do
        has "$peer" || missing+=("$peer")
    done
    [ -x "$PROGRAMS/bench-sdl-player" ] || missing+=("SDL2_mixer")
    if [ ${#missing[@]} -gt 0 ]; then
        echo
        echo "Not measured, not installed: ${missing[*]}."
    fi
    echo
}
