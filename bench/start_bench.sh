#!/usr/bin/env bash
# Measures the start of the desktop program: from the exec to the last time that its window was brought to the screen before
# it came to rest, with the folder listed. It runs on an Xvfb of its own, with fresh settings, on a folder of pictures.
#
#   bench/start_bench.sh HALVINE FOLDER [ROUNDS]     21 rounds by default; the first one only warms up
#
# The times are those that the toolkit writes when it flushes a window; that nothing is painted after them shows that the
# list of files was already there. The last round leaves a picture of the screen in START_PICTURE, when that is set.
set -euo pipefail
halvine=$(realpath "$1")
folder=$(realpath "$2")
rounds=${3:-21}
work=$(mktemp -d)
server=0
finish() {
    [ "$server" -eq 0 ] || kill "$server" 2>/dev/null || true
    rm -rf "$work"
}
trap finish EXIT

mkdir -m 700 "$work/run" "$work/settings"
Xvfb -displayfd 3 -screen 0 1400x1000x24 3>"$work/display" 2>/dev/null &
server=$!
for _ in $(seq 50); do
    [ -s "$work/display" ] && break
    sleep 0.1
done
export DISPLAY=:$(cat "$work/display") QT_QPA_PLATFORM=xcb XDG_RUNTIME_DIR=$work/run XDG_CONFIG_HOME=$work/settings
export LC_ALL=C.UTF-8 TZ=UTC HALVINE_START_FOLDER=$folder
export QT_LOGGING_RULES='qt.widgets.painting=true' QT_MESSAGE_PATTERN='%{time yyyy-MM-ddThh:mm:ss.zzz} %{message}'

for round in $(seq 0 "$rounds"); do
    begin=$(date +%s%3N)
    "$halvine" 2>"$work/log" &
    program=$!
    sleep 1.2
    if [ "$round" -eq "$rounds" ] && [ -n "${START_PICTURE:-}" ]; then import -window root "$START_PICTURE"; fi
    kill "$program"
    wait "$program" 2>/dev/null || true
    first=$(grep -m 1 ' Flushing QRegion' "$work/log" | cut -d ' ' -f 1)
    last=$(grep ' Flushing QRegion' "$work/log" | tail -n 1 | cut -d ' ' -f 1)
    [ "$round" -gt 0 ] || continue
    echo "$(($(date -d "$first" +%s%3N) - begin)) $(($(date -d "$last" +%s%3N) - begin))"
done | sort -n >"$work/times"

middle=$(((rounds + 1) / 2))
echo "| start, warm, $rounds rounds | median | longest |"
echo "|---|---|---|"
echo "| exec to the first time that the window is on the screen | $(sed -n "${middle}p" "$work/times" | cut -d ' ' -f 1) ms | $(tail -n 1 "$work/times" | cut -d ' ' -f 1) ms |"
sort -n -k 2 "$work/times" -o "$work/times"
echo "| exec to the last, nothing is left to paint | $(sed -n "${middle}p" "$work/times" | cut -d ' ' -f 2) ms | $(tail -n 1 "$work/times" | cut -d ' ' -f 2) ms |"
