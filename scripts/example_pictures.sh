#!/usr/bin/env bash
# Makes the pictures of docs/examples.md anew and prints its table of numbers.
# The program is taken from QUILLANE_BATCH, or from the release build.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
batch=${QUILLANE_BATCH:-build/release/src/batch/quillane-batch}
steps=150
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT

# The number behind a name in a summary of quillane-batch.
value() { awk -v name="$2" 'index($0, name) == 1 { sub(name, ""); print $1 }' <<<"$1"; }

# The first step of a history from which on the stresses stay as they end; "-" where they do not.
steady() {
  awk -F, 'NR > 1 { row[NR - 2] = $2 "," $3 "," $4; last = NR - 2 }
           END { while (last > 0 && row[last - 1] == row[NR - 2]) --last
                 print last < NR - 2 ? last : "-" }' "$1"
}

for name in cantilever half-mbb-beam bridge l-bracket two-bar-truss bolted-lever; do
  model=examples/$name.model
  image=docs/images/example-$name
  start=$("$batch" "$model" --size 900x600 --image "$image-start.png")
  end=$("$batch" "$model" --steps $steps --size 900x600 --image "$image-end.png" \
    --history "$scratch/history")
  if grep -q converge <<<"$start$end"; then
    echo "$name: the solver did not converge" >&2
    exit 1
  fi
  printf '%s\t%g\t%g (%.0f %%)\t%s\t%.1f\t%.1f\t%.1f\t%.1f\n' "$name" \
    "$(value "$start" volume)" "$(value "$end" volume)" \
    "$(awk "BEGIN { print 100 * $(value "$end" volume) / $(value "$start" volume) }")" \
    "$(steady "$scratch/history")" \
    "$(value "$start" "max stress")" "$(value "$end" "max stress")" \
    "$(value "$start" "mean stress")" "$(value "$end" "mean stress")" >>"$scratch/rows"
done
{
  printf '%s\t' example "volume (mm³)" after "steady from step" "max stress (MPa)" after "mean stress (MPa)"
  echo after
  cat "$scratch/rows"
} | scripts/markdown_table.py
