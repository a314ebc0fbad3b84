#!/usr/bin/env bash
# One whole job in the window, by mouse and keyboard on a screen of its own: a model is opened, analysed,
# its history recorded, optimized automatically, saved, its picture copied. Leaves pictures
# of the stages, optimized.model, History.tmp and copied.png in the folder.
# Usage: scripts/windows/window_job.sh program model folder
set -euo pipefail
lib=$(cd "$(dirname "${BASH_SOURCE[0]}")/../lib" && pwd)
program=$(realpath "$1")
mkdir -p "$3"
images=$(realpath "$3")
. "$lib/virtual_screen.sh"
. "$lib/window_driver.sh"
work=$images/仕事
rm -rf "$work"
mkdir "$work"
cp "$2" "$work/はり.model"
virtual_screen 1100x800
messages=$images/messages
cd "$work"
manage_windows
"$program" 2> "$messages" &
quillane=$!
place_main

menu_open
await 'Open Model'
locate "$id"
press_at $((x + width / 4)) $((y + 22))
shoot drives "$id"
key Escape
press_at $((x + width * 3 / 4)) $((y + 22))
shoot open "$id"
key Return
await 'by HARROW'
shoot opened

key F10
shoot menus
repeat Right 4
key Return
shoot stress
menu_history
optimization
key space
pause 4
key Tab space
shoot optimization "$id"
key Escape
shoot optimized

menu_save
await 'Save Model'
entry optimized.model
shoot save "$id"
key Return
pause 1
menu_copy
pause 1
for kind in image/png image/bmp; do
  xclip -selection clipboard -t "$kind" -o > "$scratch/copied" 2> /dev/null || true
  [ ! -s "$scratch/copied" ] || break
done
convert "$scratch/copied" "$images/copied.png"
key Alt_L
key Up Up Return
# On a busy machine wine kills a program that takes longer than a second to exit.
wait "$quillane" || [ $? -eq 137 ] || fail 'the program did not exit with 0'
mv "$work"/{optimized.model,History.tmp} "$images"
