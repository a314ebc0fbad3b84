#!/usr/bin/env bash
# Saves under bad conditions: no space, a read-only file or folder, a kill during the save. Afterwards the
# old or the new file must be there, whole.
# Usage: damage_tests.sh [path/to/quillane-batch, default the release build]
#        [kills at random moments, default 0]
set -euo pipefail
batch=$(realpath "${1:-$(dirname "${BASH_SOURCE[0]}")/../build/release/src/batch/quillane-batch}")
rounds=${2:-0}
example=$(realpath "$(dirname "${BASH_SOURCE[0]}")/../examples/cantilever.model")
export ASAN_OPTIONS=detect_leaks=0 # leak detection cannot run under strace

work=$(mktemp -d)
trap 'chmod -R u+w "$work" && rm -rf "$work"' EXIT
cd "$work"
export GCOV_PREFIX=$work/coverage # the counts of a killed program are unreliable
failures=0
fail() { echo "FAILED: $*" >&2; failures=$((failures + 1)); }

"$batch" "$example" --quiet --save old.model
"$batch" "$example" --quiet --steps 15 --save new.model
! cmp -s old.model new.model || { echo "both models are the same" >&2; exit 1; }

save_new() { "$batch" "$example" --quiet --steps 15 --save "$1" 2>&1; }

# Checks that a failed save into a folder gave this status and message and left only the old file.
expect_refused() {
  local what=$1 folder=$2 status=$3 message=$4
  [ "$status" -eq 2 ] || fail "$what: exit status $status, not 2"
  [[ $message == *"kept.model: the f"* ]] || fail "$what: the message is: $message"
  cmp -s "$folder/kept.model" old.model || fail "$what: the old file is damaged"
  [ "$(ls -A "$folder")" = kept.model ] || fail "$what: left behind: $(ls -A "$folder")"
}

no_space() {
  mkdir full
  cp old.model full/kept.model
  local kilobytes status message
  for kilobytes in 0 1 8 40; do
    status=0
    message=$(trap '' XFSZ; ulimit -f "$kilobytes"; save_new full/kept.model) || status=$?
    expect_refused "no space after $kilobytes KiB" full "$status" "$message"
  done
  status=0
  message=$(trap '' XFSZ; ulimit -f 1
            "$batch" "$example" --quiet --steps 60 --history course.csv 2>&1) || status=$?
  [ "$status" -eq 2 ] || fail "history without space: exit status $status, not 2"
  [[ $message == *"the history course.csv"*"disk has room"* ]] ||
    fail "history without space: the message is: $message"
}

# Does the same on a disk that is really full: a file system in memory that only this shell sees.
full_disk() {
  mkdir disk
  unshare -rm true 2>/dev/null || { echo "full disk skipped: user namespaces are disabled"; return 0; }
  unshare -rm bash -euo pipefail -s "$batch" "$example" <<'INSIDE' || fail "full disk"
mount -t tmpfs -o size=64k tmpfs disk
cp old.model disk/kept.model
status=0
message=$("$1" "$2" --quiet --steps 15 --save disk/kept.model 2>&1) || status=$?
echo "full disk: status $status, $message"
[ $status -eq 2 ]
cmp old.model disk/kept.model
[ "$(ls -A disk)" = kept.model ]
head -c 65536 /dev/zero >disk/filler 2>/dev/null || true
status=0
message=$("$1" "$2" --quiet --steps 3 --history disk/History.tmp 2>&1) || status=$?
echo "full disk: status $status, $message"
[ $status -eq 2 ]
INSIDE
}

read_only_file_and_folder() {
  mkdir -m 777 locked
  cp old.model locked/kept.model
  chmod 444 locked/kept.model
  local status message what somebody=()
  if [ "$(id -u)" -eq 0 ]; then # root may write anywhere
    somebody=(setpriv --reuid=65534 --regid=65534 --clear-groups)
    chmod 755 "$work"
  fi
  cp "$batch" "$example" . # where others can reach them
  for what in "read-only file" "read-only folder"; do
    status=0
    message=$("${somebody[@]}" "./${batch##*/}" "${example##*/}" --quiet --save locked/kept.model \
      2>&1) || status=$?
    expect_refused "$what" locked "$status" "$message"
    chmod 666 locked/kept.model
    chmod 555 locked
  done
}

# Checks that the file is the old or the new one and counts which.
expect_whole() {
  if cmp -s "$2" old.model; then old=$((old + 1))
  elif cmp -s "$2" new.model; then new=$((new + 1))
  else fail "$1: neither the old nor the new file, $(wc -c <"$2") bytes"; fi
}

# Kills the program at the first, second, third ... of each kind of system call of a save.
killed_at_every_call() {
  mkdir killed
  local call number status points=0 old=0 new=0 kept=$work/killed/kept.model
  for call in newfstatat openat writev write close fsync fchmodat rename exit_group; do
    for ((number = 1; number < 50; ++number)); do
      rm -f killed/*
      cp old.model "$kept"
      local paths=(-P "$kept" -P "$work/killed/quillane1.part")
      [ "$call" != exit_group ] || paths=()
      status=0
      (strace -f -o strace.log "${paths[@]}" -e trace="$call" \
        -e inject="$call":signal=KILL:when="$number" \
        "$batch" "$example" --quiet --steps 15 --save "$kept"
      exit $?) >/dev/null 2>&1 || status=$?
      expect_whole "killed at $call $number" "$kept"
      [ "$status" -ne 0 ] || break # it survived: the save makes no more such calls
      points=$((points + 1))
      save_new "$kept" && cmp -s "$kept" new.model || fail "$call $number: the next save failed"
    done
  done
  echo "killed at $points system calls of a save: old file $old times, new file $new times"
  [ "$points" -ge 8 ] || fail "too few kills hit the save"
}

# Kills the program at random moments while it saves again and again.
killed_at_random() {
  mkdir random
  cp old.model random/kept.model
  local round program old=0 new=0
  set -m # every round is a process group of its own
  for ((round = 1; round <= rounds; ++round)); do
    (while :; do
      "$batch" "$example" --quiet --save random/kept.model
      "$batch" "$example" --quiet --steps 15 --save random/kept.model
    done) >/dev/null 2>&1 &
    program=$!
    sleep "0.$((RANDOM % 900 + 100))"
    kill -KILL -- "-$program"
    wait "$program" 2>/dev/null || true
    rm -f random/quillane*.part # what a killed save leaves beside the file
    expect_whole "killed at random" random/kept.model
  done
  echo "killed $rounds times at random: old file $old times, new file $new times"
}

no_space
full_disk
read_only_file_and_folder
if command -v strace >/dev/null && strace -o strace.log true 2>/dev/null; then
  killed_at_every_call
else
  echo "kills at system calls skipped: strace cannot run here"
fi
[ "$rounds" -eq 0 ] || killed_at_random
[ "$failures" -eq 0 ] && echo "Every save left the old or the new file whole."
