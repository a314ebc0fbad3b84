#!/usr/bin/env bash
# Writes the measured tables of docs/choosing-parameters.md and draws its figure (gnuplot): a study
# of 60 stress targets and 3 wished volumes, and searches with one Lambda or Epsilon. With a file name
# as argument, writes the whole study to it as CSV.
# Takes the program from QUILLANE_BATCH or from the release build.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
export batch=${QUILLANE_BATCH:-build/release/src/batch/quillane-batch}
export model=examples/cantilever.model
scratch=$(mktemp -d)
export scratch
trap 'rm -rf "$scratch"' EXIT

# run NAME OPTIONS...: writes the summary to NAME.json, even if the run did not converge or reach its volume.
run() { "$batch" "$model" --quiet --json "$scratch/$1.json" "${@:2}" 2>/dev/null || [ $? -ge 3 ]; }
export -f run

{
  for target in $(seq 0.5 0.5 30); do echo "target-$target --until-steady --steps 2000 --stress-target $target"; done
  for share in 0.7 0.5 0.3; do echo "wish-$share --volume-fraction $share --jobs 1"; done
  for epsilon in 3 5 7; do echo "narrow-e$epsilon --volume-fraction 0.5 --epsilon $epsilon --jobs 1"; done
  for lambda in 0.5 0.2 0.1; do echo "narrow-l$lambda --volume-fraction 0.5 --lambda $lambda --jobs 1"; done
} | xargs -P "$(nproc)" -L 1 bash -c 'run "$@"' run

rows() {  # kind, files: kind, name, fraction, compliance, maximum stress, connected
  jq -r --arg kind "$1" '. as $run | input_filename | split("/")[-1][:-5] | split("-")[1] as $name
      | [$kind, $name, $run.volumeFraction, $run.compliance, $run.maxStress,
         (if $run.connected and $run.converged then "yes" else "no" end)] | @csv' "${@:2}" | tr -d '"'
}
{
  rows target $(ls -v "$scratch"/target-*.json)
  rows wish $(ls -v "$scratch"/wish-*.json)
} >"$scratch/study.csv"
[ $# -eq 0 ] || { echo kind,value,fraction,compliance,max_stress,connected; cat "$scratch/study.csv"; } >"$1"

table() { scripts/lib/markdown_table.py >"$scratch/$1"; }
{
  printf '\tfraction\tcompliance (N mm)\tcompliance times fraction\tmax stress (MPa)\tconnected\n'
  awk -F, '$1 == "wish" || $2 ~ /^(4|8|10|12|12.5|13|20)(\.0)?$/ {
    whole = $6 == "yes"
    printf "%s %g%s\t%.3f\t%s\t%s\t%s\t%s\n", $1, $2, $1 == "target" ? " MPa" : "", $3,
           whole ? sprintf("%.1f", $4) : "-", whole ? sprintf("%.1f", $3 * $4) : "-",
           whole ? sprintf("%.1f", $5) : "-", $6 }' "$scratch/study.csv"
} | table study
{
  printf 'all attempts with\tattempts\tsteps tried\tfraction\tcompliance (N mm)\n'
  for run in wish-0.5 narrow-e3 narrow-e5 narrow-e7 narrow-l0.5 narrow-l0.2 narrow-l0.1; do
    case $run in
      wish*) name="no limit" ;;
      *-e*) name="\`Epsilon\` ${run#*-e}" ;;
      *) name="\`Lambda\` ${run#*-l}" ;;
    esac
    jq -r --arg name "$name" '[$name, (.attempts | length), ([.attempts[].stepsTried] | add),
        (.volumeFraction * 1000 | round / 1000),
        if .exitStatus == 0 then (.compliance * 10 | round / 10) else "not reached" end] | @tsv' \
      "$scratch/$run.json"
  done
} | table narrowed

for name in study narrowed; do
  awk -v name="$name" -v file="$scratch/$name" '
    $0 == "<!-- end -->" { inside = 0 }
    !inside { print }
    $0 == "<!-- " name " -->" { inside = 1; while ((getline line < file) > 0) print line }' \
    docs/choosing-parameters.md >"$scratch/page"
  cp "$scratch/page" docs/choosing-parameters.md
done

awk -F, -v OFS=, '$6 == "yes"' "$scratch/study.csv" >"$scratch/whole.csv"
gnuplot <<EOF
set terminal pngcairo size 900,500 font "DejaVu Sans,11"
set output "docs/images/choosing-target.png"
set datafile separator ","
set xlabel "fraction of the volume"
set ylabel "compliance (N mm)"
set xrange [0.25:1.02]
set yrange [0:*]
set grid
plot "< grep target $scratch/whole.csv" using 3:4 with points pt 7 title "one target, until the layout rests", \
     "< grep wish $scratch/whole.csv" using 3:4 with points pt 5 ps 1.6 title "a wish of 0.7, 0.5, 0.3"
EOF
