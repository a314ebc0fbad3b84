# To be sourced after virtual_screen.sh: operates the program with the window by mouse and keyboard.
# Variables of the script: $main, number of the main window; $images, folder for the pictures; $messages,
# file with the program's standard error.
pause() { sleep "${1:-0.25}"; }

fail() {
  echo "$(basename "$0"): $1" >&2
  cat "$messages" >&2
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

# Sets x, y, width and height of a window's contents on the screen.
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

# shoot NAME [WINDOW]: takes a picture of the window with its frame; by default the main window.
shoot() {
  pause
  locate "${2:-$main}"
  import -window root -crop "$((width + 2))x$((height + 21))+$((x - 1))+$((y - 20))" +repage \
    "$images/window-$1.png"
  echo "window-$1.png"
}

# Opens the menu "File" and selects its first item.
open_menus() {
  locate "$main"
  press_at $((x + 20)) $((y + 9))
  key Down
}

# menu RIGHT DOWN: chooses an item, DOWN places below the first, of the menu RIGHT places beside "File".
menu() {
  open_menus
  repeat Right "$1"
  repeat Down "$2"
  key Return
  pause
}

# dialog TITLE NAME: waits for a dialog and takes a picture of it.
dialog() {
  await "$1"
  shoot "dialog-$2" "$id"
}

menu_open() { menu 0 0; }
menu_save() { menu 0 1; }
menu_copy() { menu 0 2; }
menu_history() { menu 0 3; }
menu_exit() { # from the end, because Down skips disabled items
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

# Finds the canvas on the screen: the light yellow area before there is a domain.
find_canvas() {
  locate "$main"
  import -window "$main" "$scratch/start.png"
  local box
  box=$(convert "$scratch/start.png" -fill black +opaque 'rgb(255,255,128)' -format '%@' info:)
  IFS='x+' read -r canvas_width canvas_height canvas_x canvas_y <<<"$box"
  canvas_x=$((canvas_x + x))
  canvas_y=$((canvas_y + y))
}

# Opens the optimization dialog; its first button has the focus.
optimization() {
  menu_optimization
  await '^Optimization$'
}

# point X Y: presses on the canvas at a place in mm, in the initial view.
point() {
  press_at $((canvas_x + canvas_width / 2 + $1 * canvas_width / 2000)) \
    $((canvas_y + canvas_height / 2 - $2 * canvas_width / 2000))
}

# choose UP: selects the option UP places above the last one and presses OK.
choose() {
  repeat Up "$1"
  key Return
  pause
}

# Starts a window manager and waits for it.
manage_windows() {
  openbox > /dev/null 2>&1 &
  until xprop -root _NET_SUPPORTING_WM_CHECK | grep -q 'window id'; do sleep 0.1; done
}

# Waits for the main window and gives it a fixed place and size.
place_main() {
  await 'Quillane Optimization'
  main=$id
  xdotool windowsize --sync "$main" 960 700 windowmove "$main" 60 60
  pause 1
  find_canvas
}
