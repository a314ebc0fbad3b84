#!/usr/bin/env bash
# Installs other programs and has them check what quillane-batch exports: the optimized examples as
# outlines (plain, smoothed, with circles) and as fields. Stops at the first finding.
# Usage: check_exports.sh [FOLDER]   (out/exports by default; keeps pictures to inspect)
set -euo pipefail
cd "$(dirname "$0")/../.."
scripts/install_dependencies.sh exports

batch=build/release/src/batch/quillane-batch
folder=${1:-out/exports}
rm -rf "$folder"
mkdir -p "$folder"

# The cantilever with two round holes, one of them cut by the upper edge: 20 rows of 40 cells.
mkdir "$folder/drilled"
awk 'BEGIN { RS = ORS = "\r\n" }
     NR > 6 && NR <= 806 {
       x = (NR - 7) % 40 + 0.5; y = int((NR - 7) / 40) + 0.5
       if ((x - 18) ^ 2 + (y - 20) ^ 2 < 30 || (x - 28) ^ 2 + (y - 9) ^ 2 < 10) $0 = -3
     }
     { print }' examples/cantilever.model >"$folder/drilled/drilled-cantilever.model"

names=()
for model in examples/*.model "$folder"/drilled/*.model; do
  name=$(basename "$model" .model)
  names+=("$name")
  base=$folder/$name
  "$batch" "$model" --volume-fraction 0.5 --save "$base.model" --quiet || [ $? = 4 ]  # or as far as it goes
  "$batch" "$base.model" --quiet --json "$base.json" --cells "$base-cells.csv" \
      --nodes "$base-nodes.csv" --vtu "$base.vtu"
  for format in svg dxf stl; do
    "$batch" "$base.model" --quiet --outline "$base-plain.$format"
    "$batch" "$base.model" --quiet --outline "$base-smooth.$format" --smooth
    "$batch" "$base.model" --quiet --outline "$base-round.$format" --smooth-edges all \
        --json "$base-round.json"
  done
done
name=${names[0]}
"$batch" "$folder/$name.model" --quiet --steps 10 --frames "$folder/$name-frames" --size 300x200 \
    --vtu "$folder/$name.vtu" --cells "$folder/$name-cells.csv" --nodes "$folder/$name-nodes.csv"

scripts/exports/check_outlines.py "$folder" "${names[@]}"
pvpython scripts/exports/check_fields.py "$folder" "${names[@]}"

# meshio converts the fields for another solver; the number of elements must stay.
for name in "${names[@]}"; do
  meshio convert --float-format .12e "$folder/$name.vtu" "$folder/$name.inp" >/dev/null
  elements=$(meshio info "$folder/$name.inp" | sed -n 's/.*quad: *\([0-9]*\).*/\1/p')
  printf '%-24s%8s quads in the input that meshio made of it\n' "$name" "$elements"
  [ "$elements" = "$(awk -F, 'NR > 1 && $3 > 0' "$folder/$name-cells.csv" | wc -l)" ]
done

# Pictures to inspect: all outlines on one sheet, and each drawing with circles in LibreCAD.
montage "$folder"/*.svg.png'[900x500]' -tile 3x -geometry 900x500+20+20 "$folder/outlines.png"
. scripts/lib/virtual_screen.sh
virtual_screen 1200x800
export HOME=$scratch XDG_CONFIG_HOME=$scratch
openbox >/dev/null 2>&1 &
for name in "${names[@]}"; do
  librecad "$folder/$name-round.dxf" >/dev/null 2>&1 &
  program=$!
  sleep 5
  xdotool key Return  # answers the questions of a first start
  sleep 3
  xdotool type za     # shows all
  xdotool key Return
  sleep 2
  import -window root "$folder/$name-librecad.png"
  kill "$program"
  wait "$program" || true
done
echo "to inspect: $folder/outlines.png, $folder/*-librecad.png"
