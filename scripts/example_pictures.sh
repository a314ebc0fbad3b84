#!/usr/bin/env bash
# Makes the pictures of docs/examples.md anew and prints its table of numbers.
# The program is taken from QUILLANE_BATCH, or from the release build.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
batch=${QUILLANE_BATCH:-build/release/src/batch/quillane-batch}
steps=150

# The number behind a name in a summary of quillane-batch.
value() { awk -v name="$2" 'index($0, name) == 1 { sub(name, ""); print $1 }' <<<"$1"; }

echo "| example | target (MPa) | volume (mm³) | after | max stress (MPa) | after | mean stress (MPa) | after |"
echo "|---|---|---|---|---|---|---|---|"
for name in cantilever half-mbb-beam bridge l-bracket two-bar-truss bolted-lever; do
  model=examples/$name.model
  image=docs/images/example-$name
  start=$("$batch" "$model" --size 900x600 --image "$image-start.png" 2>/dev/null)
  end=$("$batch" "$model" --steps $steps --size 900x600 --image "$image-end.png" 2>/dev/null)
  if grep -q converge <<<"$start$end"; then echo "$name: the solver did not converge" >&2; exit 1; fi
  awk -v name="$name" -v target="$(tail -n 1 "$model" | cut -d, -f1)" \
    -v v0="$(value "$start" volume)" -v v1="$(value "$end" volume)" \
    -v x0="$(value "$start" "max stress")" -v x1="$(value "$end" "max stress")" \
    -v m0="$(value "$start" "mean stress")" -v m1="$(value "$end" "mean stress")" \
    'BEGIN { printf "| %s | %g | %g | %g (%.0f %%) | %.1f | %.1f | %.1f | %.1f |\n", name, target, v0, v1,
             100 * v1 / v0, x0, x1, m0, m1 }'
done
