#!/usr/bin/env bash
# Cross-compiles the core and its tests for 64-bit Arm, runs them under emulation, and compares the
# histories of the example sketches with those of this machine, byte by byte.
set -euo pipefail
shopt -s extglob
cd "$(dirname "${BASH_SOURCE[0]}")/.."
scripts/install_dependencies.sh build arm64

out=build/arm64
rm -rf "$out"
mkdir -p "$out/include" "$out/here" "$out/there"
ln -s /usr/include/hwy "$out/include/hwy"  # not the rest of this machine's headers
gtest=/usr/src/googletest/googletest
core=(src/model/!(*_windows).cpp src/fem/*.cpp src/optimize/*.cpp)
flags=(-std=c++20 -O2 -ffp-contract=off -Isrc -Itests -I. -isystem "$out/include")
arm=(aarch64-linux-gnu-g++ "${flags[@]}" -static -march=armv8-a+crypto -DHWY_COMPILE_ONLY_STATIC
     -isystem "$gtest/include" "-I$gtest" "-DQUILLANE_SOURCE_DIR=\"$PWD\"")

"${arm[@]}" "${core[@]}" examples/recipes.cpp bench/write_histories.cpp -o "$out/write_histories"
g++ "${flags[@]}" "${core[@]}" examples/recipes.cpp bench/write_histories.cpp -lhwy \
  -o "$out/write_histories_here"
"$out/write_histories_here" "$out/here"
qemu-aarch64-static "$out/write_histories" "$out/there"
diff -r "$out/here" "$out/there"
echo "The histories are the same: $(ls "$out/there" | wc -l) of them."

for tests in model fem; do
  "${arm[@]}" "${core[@]}" tests/support/{plates,solver_forms}.cpp "tests/$tests"/*_test.cpp \
    "$gtest/src/gtest-all.cc" "$gtest/src/gtest_main.cc" -o "$out/${tests}_test"
  qemu-aarch64-static "$out/${tests}_test" --gtest_brief=1
done
