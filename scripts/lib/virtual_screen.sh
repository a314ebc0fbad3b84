# To be sourced: virtual_screen SIZE starts a virtual screen of that size, such as 1200x800, and makes the
# folder $scratch. When the script ends, the screen stops and the folder is removed.
virtual_screen() {
  scratch=$(mktemp -d)
  exec 3<>"$scratch/display"
  Xvfb -displayfd 3 -screen 0 "${1}x24" -nolisten tcp -noreset 2>/dev/null &
  screen=$!
  trap 'kill "$screen" 2>/dev/null; rm -rf "$scratch"' EXIT
  until [ -s "$scratch/display" ]; do sleep 0.1; done
  DISPLAY=:$(cat "$scratch/display")
  export DISPLAY
}
