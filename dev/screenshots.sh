#!/usr/bin/env bash
# Makes pictures of the program in its main states, into build/screenshots: empty, picking, filled, full-window view, list
# view, menus, the smallest window, the help, the rename window, a slide show with its control window and over the whole
# screen, each in a light and some in a dark palette, and at 150% and 200%. The dialogs stand in frames with their captions:
# save options, camera information, the questions before files are overwritten, a list of failures. It needs Xvfb, xdotool,
# openbox and ImageMagick's import; the program must be built.
#
#   dev/screenshots.sh [PRESET [FOLDER [HOME]]]     release by default, with the samples or the pictures of FOLDER
#
# The dialogs name files of a home that is made for them: in a folder of its own, or in the empty folder HOME.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
bin=$PWD/build/${1:-release}/bin
out=$PWD/build/screenshots
pictures=${2:-$PWD/samples}
for tool in Xvfb xdotool openbox import; do
    command -v "$tool" >/dev/null || {
        echo "$tool is missing: apt-get install xvfb xdotool openbox imagemagick" >&2
        exit 1
    }
done
[ -n "$(ls "$pictures" 2>/dev/null)" ] || "$bin/hv_make_samples" "$pictures"
mkdir -p "$out"

work=$(mktemp -d)
server=0
program=0
manager=0
home=${3:-$work/home}
finish() {
    [ "$program" -eq 0 ] || kill "$program" 2>/dev/null || true
    [ "$manager" -eq 0 ] || kill "$manager" 2>/dev/null || true
    [ "$server" -eq 0 ] || kill "$server" 2>/dev/null || true
    rm -rf "$work"
}
trap finish EXIT

mkdir -p "$work/empty" "$work/many" "$work/run"
chmod 700 "$work/run"
export XDG_RUNTIME_DIR=$work/run LC_ALL=C.UTF-8 QT_QPA_PLATFORM=xcb

start_server() { # start_server SIZE
    [ "$server" -eq 0 ] || { kill "$server" && wait "$server" 2>/dev/null; } || true
    Xvfb -displayfd 3 -screen 0 "$1x24" 3>"$work/display" 2>/dev/null &
    server=$!
    for _ in $(seq 50); do
        [ -s "$work/display" ] && break
        sleep 0.1
    done
    export DISPLAY=:$(cat "$work/display")
    : >"$work/display"
}

start() { # start FOLDER: a first run, with settings and unsaved work of its own
    export XDG_CONFIG_HOME XDG_STATE_HOME
    XDG_CONFIG_HOME=$(mktemp -d "$work/config.XXXX")
    XDG_STATE_HOME=$(mktemp -d "$work/state.XXXX")
    HALVINE_START_FOLDER=$1 "$bin/halvine" &
    program=$!
    xdotool search --sync --onlyvisible --pid "$program" --name Halvine >/dev/null
    sleep 1.5
    window=$(xdotool search --onlyvisible --pid "$program" --name Halvine | head -1) # now that it has come to rest
}

stop() {
    kill "$program" 2>/dev/null || true
    wait "$program" 2>/dev/null || true
    program=0
}

shoot() {
    import -window root "$out/$1.png"
    echo "$out/$1.png"
}

keys() { # keys KEY...: to the window, slowly enough for menus
    for key in "$@"; do
        xdotool key --window "$window" "$key"
        sleep 0.3
    done
}

pick_all() { # the file grid holds the keyboard; all files, then Pick Selected of the File menu
    focus_files
    keys ctrl+a alt+f
    keys Home Return
}

focus_files() { # the file grid is the lower half of the left pane
    xdotool mousemove --window "$window" $((150 * percent / 100)) $((430 * percent / 100)) click 1
    sleep 0.3
}

focus_strip() { # a click on its third cell
    xdotool mousemove --window "$window" $((670 * percent / 100)) $((130 * percent / 100)) click 1
    sleep 0.3
}

shoot_dialog() { # the window that has the keyboard, in its frame
    sleep 1
    import -frame -window "$(xdotool getactivewindow)" "$out/$1.png"
    echo "$out/$1.png"
}

keys_to_active() {
    for key in "$@"; do
        xdotool key "$key"
        sleep 0.4
    done
}

choose_in_file_menu() { # choose_in_file_menu N: its N-th item, from 1
    keys_to_active alt+f Home
    for _ in $(seq 2 "$1"); do keys_to_active Down; done
    keys_to_active Return
}

dialogs() {
    mkdir -p "$home/Documents" "$home/Pictures/Summer" "$home/Pictures/Winter"
    cp "$pictures"/*.jpg "$home/Pictures/Summer"
    cp "$home/Pictures/Summer"/*.jpg "$home/Pictures/Winter"
    openbox 2>/dev/null &
    manager=$!
    sleep 1
    HOME=$home start "$home/Pictures/Summer"
    focus_files
    keys_to_active ctrl+a ctrl+Return
    sleep 3
    keys_to_active ctrl+s
    shoot_dialog dialog-save-options
    keys_to_active Return
    shoot_dialog dialog-save-question
    keys_to_active Escape
    local copy_selected=6
    choose_in_file_menu $copy_selected # into the folder where they stand
    shoot_dialog dialog-failures
    keys_to_active alt+y
    shoot_dialog dialog-failure-list
    keys_to_active Escape
    xdotool mousemove --window "$window" 105 143 click 1 # Winter
    sleep 1
    choose_in_file_menu $copy_selected
    shoot_dialog dialog-overwrite
    keys_to_active Escape
    focus_strip
    keys_to_active alt+Return
    shoot_dialog dialog-camera
    keys_to_active Escape
    stop
    kill "$manager" && wait "$manager" 2>/dev/null || true
    manager=0
}

percent=100
start_server 1280x800
start "$work/empty"
shoot empty
stop

for copy in $(seq 60); do
    for file in "$pictures"/*.jpg; do ln -s "$file" "$work/many/${copy}_$(basename "$file")"; done
done
start "$work/many"
pick_all
shoot picking
stop

tour() { # tour NAME: the states that say most, with the present palette and scale
    start "$pictures"
    pick_all
    sleep 3
    shoot "filled$1"
    keys alt+f
    shoot "menu$1"
    keys Escape Escape
    focus_strip
    keys Return
    sleep 1
    shoot "full-window$1"
    keys Escape alt+o t
    sleep 1
    shoot "list$1"
    keys alt+o t
    xdotool windowsize --sync "$window" $((800 * percent / 100)) $((600 * percent / 100)) || true
    sleep 1
    shoot "smallest$1"
    keys alt+l
    shoot "smallest-menu$1"
    stop
}

start "$pictures"
pick_all
sleep 3
keys F11
sleep 1
shoot slide-show
keys Escape alt+l
shoot slides-menu
keys f F11 # Display Full Window
sleep 0.5
shoot slide-show-screen
stop

start "$pictures"
focus_files
keys F1
sleep 1
shoot help
stop
start "$pictures"
pick_all
sleep 3
keys F2
sleep 1
shoot rename
stop

dialogs

tour ""
HALVINE_PALETTE=dark tour -dark
for percent in 150 200; do
    start_server $((1280 * percent / 100))x$((800 * percent / 100))
    export QT_SCALE_FACTOR=$((percent / 100)).$((percent % 100))
    tour "-$percent"
    HALVINE_PALETTE=dark tour "-$percent-dark"
done
