#!/usr/bin/env bash
# Makes the pictures of docs/export.md and prints the numbers of its re-analysis. Needs what
# check_exports.sh installs; runs on a virtual screen.
# Usage: export_pictures.sh [FOLDER for the pictures]   (docs/images by default)
set -euo pipefail
cd "$(dirname "$0")/../.."
images=${1:-docs/images}
batch=build/release/src/batch/quillane-batch
. scripts/lib/virtual_screen.sh
virtual_screen 1200x800
plate=$scratch/plate

"$batch" examples/cantilever.model --volume-fraction 0.5 --save "$plate.model" --quiet
"$batch" "$plate.model" --outline "$plate-plain.dxf" --vtu "$plate.vtu" --cells "$plate.csv" --quiet
"$batch" "$plate.model" --outline "$plate-smooth.dxf" --smooth | tail -1
scripts/exports/outline_over_cells.py "$plate-plain.dxf" "$plate-smooth.dxf" "$plate.svg"
rsvg-convert --width 1000 "$plate.svg" --output "$images/export-smoothing.png"

lever=$scratch/lever
"$batch" examples/bolted-lever.model --volume-fraction 0.5 --save "$lever.model" --quiet
"$batch" "$lever.model" --outline "$lever-plain.dxf" --quiet
"$batch" "$lever.model" --outline "$lever-smooth.dxf" --smooth --quiet
"$batch" "$lever.model" --outline "$lever-round.dxf" --smooth-edges all | tail -4
for kind in smooth round; do
  scripts/exports/outline_over_cells.py "$lever-plain.dxf" "$lever-$kind.dxf" "$lever-$kind.svg"
  rsvg-convert --width 900 "$lever-$kind.svg" --output "$lever-$kind.png"
done
convert "$lever-smooth.png" "$lever-round.png" -append "$images/export-circles.png"

scripts/exports/reanalysis.py "$plate.model" "$plate-smooth.dxf" "$plate.csv" "$plate-again.vtu"
pvpython scripts/exports/export_views.py "$plate.vtu" "$plate-again.vtu" "$images/export-paraview.png" \
    "$scratch/ours.png" "$scratch/theirs.png" 2>/dev/null
convert "$scratch/ours.png" "$scratch/theirs.png" -append "$images/export-reanalysis.png"
for picture in "$images"/export-*.png; do mogrify -resize '900x>' "$picture"; done
