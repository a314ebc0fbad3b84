#!/usr/bin/env bash
# Installs what is missing, builds, and starts the program. Without a display it runs a shipped
# example through quillane-batch instead and leaves the pictures, the history and the final model.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")"

scripts/install_dependencies.sh build
[ -f build/run/build.ninja ] || cmake --preset run
cmake --build --preset run

if [ -n "${DISPLAY:-}${WAYLAND_DISPLAY:-}" ]; then
  exec build/run/src/ui/quillane
fi

model=examples/half-mbb-beam.model
out=out/half-mbb-beam
program=build/run/src/batch/quillane-batch
if [ "$out/model.png" -nt "$program" ] && [ "$out/model.png" -nt "$model" ]; then
  echo "No display here. The shipped half MBB beam was optimized before, and nothing has changed:"
else
  mkdir -p "$out"
  echo "No display here: optimizing the shipped half MBB beam through quillane-batch instead."
  batch() { "$program" "$model" --fit --no-grid "$@"; }
  batch --volume-fraction 0.5 --history "$out/History.tmp" --save "$out/optimized.model" \
    --image "$out/optimized.png" --cells "$out/cells.csv" --nodes "$out/nodes.csv"
  batch --quiet --image "$out/analysed.png"
  batch --quiet --map model --image "$out/model.png"
  echo "Written to $out:"
fi
ls -l "$out"
