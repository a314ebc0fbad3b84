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

out=out/cantilever
mkdir -p "$out"
echo "No display here: optimizing the shipped cantilever through quillane-batch instead."
build/run/src/batch/quillane-batch examples/cantilever.model --volume-fraction 0.5 \
  --history "$out/History.tmp" --save "$out/optimized.model" --image "$out/optimized.png" \
  --cells "$out/cells.csv" --nodes "$out/nodes.csv"
build/run/src/batch/quillane-batch examples/cantilever.model --quiet --image "$out/analysed.png"
build/run/src/batch/quillane-batch examples/cantilever.model --quiet --map model \
  --image "$out/model.png"
echo "Written to $out:"
ls -l "$out"
