#!/usr/bin/env bash
# Operates the whole program by mouse and keyboard on a virtual screen and keeps a picture of each
# stage in docs/images. Needs Xvfb, openbox, xdotool, xprop, xwininfo, xclip and ImageMagick.
# Usage: scripts/screenshots.sh [program] [folder for the pictures]
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
program=$(realpath "${1:-build/release/src/ui/quillane}")
mkdir -p "${2:-docs/images}"
images=$(realpath "${2:-docs/images}")
. scripts/lib/virtual_screen.sh
. scripts/lib/window_driver.sh
virtual_screen 1100x800
messages=$scratch/messages
cd "$scratch"
manage_windows
"$program" 2>"$messages" &
quillane=$!
# warning NAME [TITLE]: shoots a message box and closes it.
warning() {
  await "${2:-警告}"
  shoot "warning-$1" "$id"
  key Return
  pause
}

place_main
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
[[ "$(xdotool getwindowname "$main")" = POST ]] || fail 'the minimized window has the wrong title'
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

"$program" 2>>"$messages" &
quillane=$!
await 'Quillane Optimization'
main=$id
menu_open
await 'Open Model'
entry Rescue.model
key Return
await 'by HARROW'
menu_exit
wait "$quillane" || fail 'the program did not exit with 0'
