#!/usr/bin/env bash
# Works the whole program by mouse and keyboard on a screen of its own and keeps a picture of each
# station in docs/images. Needs Xvfb, openbox, xdotool, xprop, xwininfo, xclip and ImageMagick.
# Usage: scripts/screenshots.sh [program] [folder for the pictures]
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
program=$(realpath "${1:-build/release/src/ui/quillane}")
mkdir -p "${2:-docs/images}"
images=$(realpath "${2:-docs/images}")
. scripts/lib/virtual_screen.sh
virtual_screen 1100x800
cd "$scratch"
openbox >"$scratch/openbox" 2>&1 &
until xprop -root _NET_SUPPORTING_WM_CHECK | grep -q 'window id'; do sleep 0.1; done
"$program" 2>"$scratch/messages" &
quillane=$!
pause() { sleep "${1:-0.25}"; }

fail() {
  echo "screenshots.sh: $1" >&2
  cat "$scratch/messages" >&2
  import -window root "$images/failed.png"
  exit 1
}

# Waits for the window whose title matches; id is its number.
await() {
  for ((n = 0; n < 100; ++n)); do
    id=$(xdotool search --onlyvisible --name "$1" 2>/dev/null | tail -1) || true
    [ -z "$id" ] || break
    sleep 0.1
  done
  [ -n "$id" ] || fail "no window \"$1\""
  pause
}

# x, y, width and height of a window's contents on the screen.
locate() {
  local info
  info=$(xwininfo -id "$1")
  x=$(awk '/Absolute upper-left X/ {print $4}' <<<"$info")
  y=$(awk '/Absolute upper-left Y/ {print $4}' <<<"$info")
  width=$(awk '/Width:/ {print $2}' <<<"$info")
  height=$(awk '/Height:/ {print $2}' <<<"$info")
}

key() { for k in "$@"; do xdotool key "$k"; sleep 0.05; done; }
repeat() { for ((n = 0; n < $2; ++n)); do key "$1"; done; }
entry() { printf %s "$1" | xdotool type --delay 20 --file -; }
press_at() { xdotool mousemove "$1" "$2" click 1; pause 0.15; }

# shoot NAME [WINDOW]: what is seen where the window with its frame is, the main window by default.
shoot() {
  pause
  locate "${2:-$main}"
  import -window root -crop "$((width + 2))x$((height + 21))+$((x - 1))+$((y - 20))" +repage \
    "$images/window-$1.png"
  echo "window-$1.png"
}

# Opens "File" on its first item.
open_menus() {
  locate "$main"
  press_at $((x + 20)) $((y + 9))
  key Down
}

# menu RIGHT DOWN: the menu so many to the right of "File", its item so many below the first.
menu() {
  open_menus
  repeat Right "$1"
  repeat Down "$2"
  key Return
  pause
}

# dialog TITLE NAME: shoots the dialog that is to be seen now.
dialog() {
  await "$1"
  shoot "dialog-$2" "$id"
}

menu_open() { menu 0 0; }
menu_save() { menu 0 1; }
menu_copy() { menu 0 2; }
menu_history() { menu 0 3; }
menu_exit() { # from the end, for greyed items above are skipped
  open_menus
  key Up Return
}
menu_width() { menu 1 0; }
menu_origin() { menu 1 1; }
menu_graphics() { menu 1 2; }
menu_values() { menu 1 3; }
menu_clear() { menu 1 4; }
menu_shape() { menu 2 0; }
menu_material() { menu 3 0; }
menu_freedom() { menu 3 1; }
menu_load() { menu 3 2; }
menu_parameter() { menu 3 3; }
menu_fea() { menu 4 0; }
menu_optimization() { menu 5 0; }

# Where the canvas is on the screen: all that is light yellow before there is a domain.
find_canvas() {
  locate "$main"
  import -window "$main" "$scratch/start.png"
  local box
  box=$(convert "$scratch/start.png" -fill black +opaque 'rgb(255,255,128)' -format '%@' info:)
  IFS='x+' read -r canvas_width canvas_height canvas_x canvas_y <<<"$box"
  canvas_x=$((canvas_x + x))
  canvas_y=$((canvas_y + y))
}

# Opens the optimization dialog on its first button.
optimization() {
  menu_optimization
  await '^Optimization$'
}

# point X Y: a press at millimetres on the canvas, the view as it starts.
point() {
  press_at $((canvas_x + canvas_width / 2 + $1 * canvas_width / 2000)) \
    $((canvas_y + canvas_height / 2 - $2 * canvas_width / 2000))
}

# choose UP: the option so many above the last one, then OK.
choose() {
  repeat Up "$1"
  key Return
  pause
}

# warning NAME [TITLE]: shoots a message box and closes it.
warning() {
  await "${2:-警告}"
  shoot "warning-$1" "$id"
  key Return
  pause
}

await 'Quillane Optimization'
main=$id
xdotool windowsize --sync "$main" 960 700 windowmove "$main" 60 60
pause 1
find_canvas
shoot start

menu_width
dialog 'Width and Mesh Density' width
key Escape
menu_shape
choose 1
warning domain-first
menu_shape
dialog '^Shape$' shape
choose 5
point -800 -400
point 800 400
shoot domain

menu_shape
choose 4
point -750 -350
shoot corner
point 750 350
menu_shape
choose 2
point 650 -350
point 750 350
menu_shape
choose 1
point -150 -50
point 150 50
menu_shape
choose 3
point -150 350
point 250 350
point 950 0
warning outside

menu_freedom
dialog 'Freedom Conditions' freedom
choose 1
for row in -400 -300 -200 -100 0 100 200 300 400; do point -800 "$row"; done
menu_load
await 'Applied Load'
key Tab
entry -1000
shoot dialog-load "$id"
key Return
point 800 0
menu_material
dialog 'Design Property' material
key Return
menu_parameter
await 'Optimization Parameter'
entry 4
key Tab
entry 5
shoot dialog-parameter "$id"
key Return
shoot cells

menu_save
await 'Save Model'
entry plate.model
shoot dialog-save "$id"
key Return
pause
[ -s plate.model ] || fail 'no model was saved'

menu_fea
shoot stress
menu_history
menu_history
warning history
menu_values
dialog '^Values$' values
choose 3
point 800 0
shoot displacement

# Thirty steps by hand with the potentials shown, then automatic ones for two seconds.
menu_graphics
dialog 'Graphics' graphics
key Down Return
optimization
key Tab Tab
repeat space 30
shoot dialog-optimization "$id"
key Escape
shoot potential
optimization
key space
pause 2
key Tab space
shoot dialog-optimization-at-rest "$id"
key Escape
shoot automatic

menu_copy
xclip -selection clipboard -t image/png -o >"$scratch/copied.png"
copied_width=$(identify -format %w "$scratch/copied.png")
((copied_width >= canvas_width && copied_width < canvas_width + 4)) ||
  fail "the copied image is $copied_width wide, not $canvas_width"
menu_clear
shoot cleared
[ "$(wc -l <History.tmp)" -gt 60 ] || fail 'the history lacks steps'

xdotool windowminimize "$main"
pause
[[ "$(xdotool getwindowname "$main")" = POST ]] || fail 'the title of the minimized window'
xdotool windowactivate "$main"
pause

menu_open
await 'Open Model'
entry plate.model
shoot dialog-open "$id"
key Return
shoot opened

menu_shape
choose 5
point -500 0
point -500 300
warning grid
menu_freedom
choose 0
for grid_row in -400 -300 -200 -100 0 100 200 300 400; do point -800 "$grid_row"; done
menu_fea
warning not-converged
menu_values
choose 1
point -750 0
await 'エラー'
shoot error "$id"
key Return
status=0
wait "$quillane" || status=$?
[ "$status" = 1 ] || fail "the error ended the program with $status"

"$program" 2>>"$scratch/messages" &
quillane=$!
await 'Quillane Optimization'
main=$id
menu_open
await 'Open Model'
entry Rescue.model
key Return
await 'by HARROW'
menu_exit
wait "$quillane" || fail 'the exit status'
