#!/usr/bin/env bash
# Prints the measured tables of docs/choosing-parameters.md and draws its figure (gnuplot).
# The program is taken from QUILLANE_BATCH, or from the release build.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
batch=${QUILLANE_BATCH:-build/release/src/batch/quillane-batch}
full=examples/cantilever.model
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT

# The number behind a name in a summary of quillane-batch.
value() { awk -v name="$2" 'index($0, name) == 1 { sub(name, ""); print $1 }' <<<"$1"; }

# Runs the program on a model and prints: label, volume, maximum and mean stress, solves that failed.
measure() {
  local label=$1 summary failed
  shift
  summary=$("$batch" "$@" 2>/dev/null) || [ $? -eq 3 ]  # did not converge
  failed=$(sed -n 's/^the solver did not converge in \([0-9]*\) of.*/\1/p' <<<"$summary")
  echo "$label $(value "$summary" volume) $(value "$summary" "max stress")" \
    "$(value "$summary" "mean stress") ${failed:-0}"
}

# Rows of measure as a table; the stresses of a plate that came apart are no stresses.
table() {
  echo
  {
    printf '%s\tvolume (mm³)\tmax stress (MPa)\tmean stress (MPa)\tsolves without convergence\n' "$1"
    awk '{ if ($5 > 0) printf "%s\t%g\t-\t-\t%d\n", $1, $2, $5
           else printf "%s\t%g\t%.1f\t%.1f\t0\n", $1, $2, $3, $4 }'
  } | scripts/lib/markdown_table.py
}

build/release/examples/quillane-make-examples "$scratch" sketch
sketch=$scratch/cantilever.model

for target in 10 20 24 28 32 36 38 40 44; do
  measure $target "$sketch" --steps 150 --stress-target $target
done >"$scratch/sketch"
for target in 4 8 10 12 13 14 16 20 28; do
  measure $target "$full" --steps 150 --lambda 0.05 --stress-target $target
done >"$scratch/full"
cp "$full" "$scratch/stage.model"
for target in 8 10 12 14 16 18 20 24 28; do
  measure $target "$scratch/stage.model" --steps 75 --lambda 0.1 --stress-target $target \
    --save "$scratch/stage.model"
done >"$scratch/stages"

table "target, from the sketch" <"$scratch/sketch"
table "target, from the full rectangle" <"$scratch/full"
table "target, raised in stages" <"$scratch/stages"
for epsilon in 1 2 3 4 5 6 7 9; do
  measure $epsilon "$sketch" --steps 150 --epsilon $epsilon
done | table Epsilon
for lambda in 0.01 0.02 0.05 0.1 0.2 0.5 1; do
  measure $lambda "$sketch" --steps 150 --lambda $lambda
done | table Lambda

gnuplot <<EOF
set terminal pngcairo size 900,500 font "DejaVu Sans,11"
set output "docs/images/choosing-target.png"
set xlabel "stress target (MPa)"
set ylabel "volume after optimization (mm³)"
set xrange [0:46]
set yrange [0:90000]
set grid
plot "$scratch/full" using 1:2 with linespoints lw 2 pt 5 title "from the full rectangle", \
     "$scratch/sketch" using 1:2 with linespoints lw 2 pt 7 title "from the sketch", \
     "$scratch/stages" using 1:2 with linespoints lw 2 pt 9 title "from the full rectangle, in stages"
EOF
