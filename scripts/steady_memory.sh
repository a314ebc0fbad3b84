#!/usr/bin/env bash
# Samples the resident memory of one long optimization, which must not grow once all arrays are allocated.
# Usage: steady_memory.sh [path/to/quillane-batch, default the release build] [steps, default 10000]
#        [model]
set -euo pipefail
batch=$(realpath "${1:-$(dirname "${BASH_SOURCE[0]}")/../build/release/src/batch/quillane-batch}")
steps=${2:-10000}
model=$(realpath "${3:-$(dirname "${BASH_SOURCE[0]}")/../examples/half-mbb-beam.model}")

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
"$batch" "$model" --steps "$steps" --history "$work/course.csv" >"$work/summary" &
program=$!
while resident=$(awk '/VmRSS/ { print $2 }' "/proc/$program/status" 2>/dev/null) &&
      [ -n "$resident" ]; do
  echo "$resident" >>"$work/memory"
  sleep 0.1
done
wait "$program"

cat "$work/summary"
awk 'NR == 1 { next }                    # still opening
     NR <= 11 { if ($1 > early) early = $1 }
     { if ($1 > most) most = $1; last = $1 }
     END {
       printf "%d samples: at most %d kB in the first second, %d kB ever, %d kB at the end\n",
              NR, early, most, last
       exit NR < 20 || last > 1.05 * early + 512
     }' "$work/memory" || { echo "The memory grew, or the run was too short to decide." >&2; exit 1; }
