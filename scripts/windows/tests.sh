#!/usr/bin/env bash
# Runs the archive of scripts/windows.sh under wine and compares it with the native build: tests, histories,
# pictures, one whole job in the window, the end of the session. Keeps pictures and logs in
# build/windows/seen. Usage: scripts/windows/tests.sh zip libraries
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/../.."
zip=$(realpath "$1")
libraries=$(realpath "$2")
. scripts/lib/virtual_screen.sh
virtual_screen 1100x800
seen=$PWD/build/windows/seen
rm -rf "$seen"
mkdir "$seen"
[ -f build/release/build.ninja ] || cmake --preset release > /dev/null
cmake --build --preset release
here=build/release/src/batch/quillane-batch

# A wine prefix of its own that acts as Windows 10, without the add-ons that wine offers to download.
export WINEPREFIX=$scratch/wine WINEDEBUG=-all WINEDLLOVERRIDES='mscoree,mshtml='
trap 'wineserver --kill; kill "$screen"; rm -rf "$scratch"' EXIT
wineboot --init > /dev/null 2>&1
wine winecfg -v win10
wineserver --wait

step() { echo "== $*"; }

step 'unpack'
place=$scratch/日本語\ のフォルダ
unzip -q "$zip" -d "$place"
folder=$(echo "$place"/*)
(cd "$folder" && find . -type f -not -path './manual/images/*' | sort) | tee "$seen/files"
for program in quillane quillane-batch; do
  printf '#!/bin/sh\nexec wine "%s" "$@"\n' "$folder/$program.exe" > "$scratch/$program"
  chmod +x "$scratch/$program"
done

# Prints the tests of a room that cannot run under wine: patterns of names, each with its reason.
skipped() {
  case $1 in
    ui) cat << 'END' ;;
Window.ARescueFileWithoutAPlace* (Windows removes no folder that a program is in)
States.ANewModelForgets* (without a screen there are no fonts, so the legend shows no numbers)
END
    batch) cat << 'END' ;;
Batch.ATerminalSees* (wine's console rewrites the line before the terminal here shows it)
Study.ARunGoesOnFrom* (likewise)
Study.PipesServe* (a native named pipe is none under wine)
Study.OneOutputThatFails* (/dev/full does not exist there)
Study.ASignal* (native signals end wine itself; Ctrl+C is tried below)
Ending.AFailureAtAStep* (a limit on file sizes would apply to wine itself)
Ending.ARequest* (signals and named pipes)
Ending.ASecondRequest* (signals and named pipes)
Ending.ASecondRun* (it ends the first run by a signal)
Ending.OutputsThatAreOne* (/dev/stdout and named pipes)
Ending.WhatHasNoEffect* (a name that is not UTF-8)
END
  esac
}

step 'tests of each room'
# run_tests ROOM COMMAND...
failed=()
run_tests() {
  local room=$1
  shift
  echo "$room"
  skipped "$room" | sed 's/^/  without /'
  timeout 1200 "$@" --gtest_brief=1 --gtest_filter="-$(skipped "$room" | sed 's/ .*//' | paste -sd:)" ||
    failed+=("$room")
}
toolkit="$libraries/bin;$(echo /usr/lib/gcc/x86_64-w64-mingw32/*-posix);/usr/x86_64-w64-mingw32/lib"
for test in build/windows/tests/*_test.exe build/windows/tests/*/*_test.exe; do
  WINEPATH=$toolkit run_tests "$(basename "$test" _test.exe)" wine "$test"
done

step 'native tests of the command line, with the Windows program'
g++ -std=c++20 -O1 -fPIC -Isrc -Itests -I. -DQUILLANE_BATCH="\"$scratch/quillane-batch\"" \
  -DQUILLANE_SOURCE_DIR="\"$PWD\"" -isystem /usr/include/x86_64-linux-gnu/qt6 \
  -isystem /usr/include/x86_64-linux-gnu/qt6/QtCore -isystem /usr/include/x86_64-linux-gnu/qt6/QtGui \
  tests/batch/*_test.cpp \
  -Wl,--start-group build/release/src/*/libquillane_*.a build/release/tests/libquillane_test_support.a \
  -Wl,--end-group -o "$scratch/batch_test" -lgtest_main -lgtest -lhwy -lfmt -ldxflib -lQt6Gui -lQt6Core
run_tests batch "$scratch/batch_test"

step 'histories of the examples, 150 steps, with each instruction set'
libraries_of() { for room in optimize fem model; do echo "build/$1/src/$room/libquillane_$room.a"; done; }
sources=(-std=c++20 -O2 -ffp-contract=off -Isrc -I. bench/write_histories.cpp)
g++ "${sources[@]}" build/release/examples/libquillane_recipes.a $(libraries_of release) -lhwy \
  -o "$scratch/write_histories"
x86_64-w64-mingw32-g++-posix "${sources[@]}" -isystem "$libraries/include" \
  build/windows/examples/libquillane_recipes.a $(libraries_of windows) "$libraries/lib/libhwy.a" \
  -o "$scratch/write_histories.exe"
mkdir "$seen"/{histories,histories-here}
"$scratch/write_histories" "$seen/histories-here"
(cd "$seen" && WINEPATH=$toolkit wine "$scratch/write_histories.exe" histories each)
for set in "$seen"/histories/*; do
  diff -r "$seen/histories-here" "$set"
  echo "$(basename "$set"): $(ls "$set" | wc -l) histories are the same"
done

# different_pixels MODEL MAP A B: counts the pixels in which two pictures differ outside text, that is, outside
# the pixels in which a picture with another font size differs from the first one.
different_pixels() {
  QT_QPA_PLATFORM='' QT_FONT_DPI=60 "$here" "$1" --quiet --map "$2" --image "$scratch/letters.png"
  convert "$3" "$scratch/letters.png" -compose difference -composite -separate -evaluate-sequence max \
    -threshold 0 -morphology Dilate Square:6 "$scratch/text.png"
  convert "$3" "$4" -compose difference -composite -separate -evaluate-sequence max -threshold 0 \
    \( "$scratch/text.png" -negate \) -compose multiply -composite -format '%[fx:round(mean*w*h)]' info:
}

step 'pictures, equal except for text'
mkdir "$seen"/{pictures,pictures-here}
for model in examples/*.model; do
  for map in stress potential model; do
    name=$(basename "$model" .model)-$map.png
    "$here" "$model" --quiet --map "$map" --image "$seen/pictures-here/$name"
    "$scratch/quillane-batch" "$model" --quiet --map "$map" --image "$seen/pictures/$name"
    count=$(different_pixels "$model" "$map" "$seen/pictures-here/$name" "$seen/pictures/$name")
    echo "$name: $count"
    [ "$count" = 0 ] || failed+=("$name")
  done
done

step 'Ctrl+C in the console'
cp examples/half-mbb-beam.model "$place/梁.model"
lines() { cat "$place/履歴.tmp" 2> /dev/null | wc -l; }
course_runs() { for _ in {1..600}; do [ "$(lines)" -le 30 ] || break; sleep 0.1; done; }
(course_runs; printf '\003'; sleep 5) | (cd "$place" && script -qec "wine '$folder/quillane-batch.exe' \
  梁.model --steps 32767 --history 履歴.tmp --save 終.model --json 結果.json" /dev/null) > "$seen/console" ||
  echo "ended with $?" | tee -a "$seen/console"
grep -q 'ended with 130' "$seen/console"
steps=$(sed -n 's/.*"steps": *\([0-9]*\).*/\1/p' "$place/結果.json")
"$here" examples/half-mbb-beam.model --steps "$steps" --quiet --history "$scratch/h" --save "$scratch/m"
cmp "$place/履歴.tmp" "$scratch/h"
cmp "$place/終.model" "$scratch/m"
echo "ended after $steps steps; history and model equal the native ones"

step 'the end of the session'
. scripts/lib/window_driver.sh
images=$seen/session
messages=$images/messages
mkdir "$images"
manage_windows
# session_ends WIDTH: opens the plate, sets the width shown unless WIDTH is empty, and logs off.
session_ends() {
  "$scratch/quillane" 2> "$messages" &
  local quillane=$!
  place_main
  menu_open
  await 'Open Model'
  entry 'plate.model'
  key Return
  await 'by HARROW'
  if [ -n "$1" ]; then
    menu_width
    await 'Width'
    key ctrl+a
    entry "$1"
    key Return
    pause
  fi
  shoot "before${1:+-$1}"
  timeout 60 wineboot --end-session
  wait "$quillane" || true
}
mkdir "$place/session"
cp examples/half-mbb-beam.model "$place/session/plate.model"
cd "$place/session"
session_ends ''
[ ! -e Rescue.model ] || fail 'a rescue file although everything was saved'
session_ends 3000
sed '1s/^[^,]*/3000/' plate.model | cmp - Rescue.model
echo 'a rescue file only where changes are unsaved'
cd - > /dev/null

step 'a whole job in the window'
wineserver --wait
scripts/windows/window_job.sh "$scratch/quillane" examples/half-mbb-beam.model "$seen/window"
steps=$(($(wc -l < "$seen/window/History.tmp") - 2))
"$here" examples/half-mbb-beam.model --steps "$steps" --quiet --history "$scratch/h" --save "$scratch/m"
cmp "$seen/window/History.tmp" "$scratch/h"
cmp "$seen/window/optimized.model" "$scratch/m"
echo "history and model after $steps steps equal the native ones"

[ ${#failed[@]} -eq 0 ] || { echo "failed: ${failed[*]}" >&2; exit 1; }
