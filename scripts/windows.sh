#!/usr/bin/env bash
# Makes out/quillane-VERSION-windows-x64.zip, a folder to unpack on 64-bit Windows, on Debian 12.
# Usage: scripts/windows.sh [--test]     --test also runs tests and window under wine
# The libraries are built once (half an hour, 1.3 GB) and kept in ${XDG_CACHE_HOME:-~/.cache}/quillane-windows.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
case "${1:-}" in
  '') purpose=windows tests=OFF ;;
  --test) purpose=windows-test tests=ON ;;
  *) echo "Usage: scripts/windows.sh [--test]" >&2; exit 2 ;;
esac
scripts/install_dependencies.sh "$purpose"

cache="${XDG_CACHE_HOME:-$HOME/.cache}/quillane-windows"
libraries="$cache/libraries"
scripts/windows/libraries.sh "$cache"

cmake --preset windows -DQUILLANE_WINDOWS_LIBRARIES="$libraries" -DQUILLANE_TESTS="$tests" > /dev/null
cmake --build --preset windows

version=$(sed -n 's/^CMAKE_PROJECT_VERSION:STATIC=//p' build/windows/CMakeCache.txt)
name=quillane-$version-windows-x64
folder=build/windows/$name
rm -rf "$folder"
cmake --install build/windows --prefix "$folder" --strip > /dev/null

# Adds the DLLs that the programs and the platform plugin need and Windows does not include.
runtime=(/usr/lib/gcc/x86_64-w64-mingw32/*-posix /usr/x86_64-w64-mingw32/lib)
add_libraries() {
  local needed place
  for needed in $(x86_64-w64-mingw32-objdump -p "$1" | sed -n 's/^\tDLL Name: //p'); do
    [ ! -e "$folder/$needed" ] || continue
    for place in "$libraries/bin" "${runtime[@]}"; do
      [ -e "$place/$needed" ] || continue
      x86_64-w64-mingw32-strip -o "$folder/$needed" "$place/$needed"
      add_libraries "$folder/$needed"
    done
  done
}
mkdir "$folder/platforms"
x86_64-w64-mingw32-strip -o "$folder/platforms/qwindows.dll" "$libraries/plugins/platforms/qwindows.dll"
for program in "$folder"/*.exe "$folder/platforms/qwindows.dll"; do add_libraries "$program"; done

# The manual without the chapters about the sources; links between chapters lead to the pages.
mkdir -p "$folder/manual/images"
for chapter in docs/*.md; do
  title=$(basename "$chapter" .md)
  case "$title" in design | performance) continue ;; esac
  pandoc --from gfm --to html5 --standalone --metadata pagetitle="Quillane: $title" \
    --css manual.css "$chapter" | sed -E 's/href="([a-z-]+)\.md/href="\1.html/g' > "$folder/manual/$title.html"
done
cp packaging/windows/manual.css "$folder/manual"
for image in $(grep -oh 'images/[a-z0-9-]*\.png' "$folder"/manual/*.html | sort -u); do
  cp "docs/$image" "$folder/manual/images"
done

licences="$folder/licences"
cp -r "$libraries/licences" "$licences"
rm -f "$licences/googletest.txt"
cp LICENSE "$licences/quillane.txt"
for text in GPL-2 GPL-3 LGPL-3; do cp "/usr/share/common-licenses/$text" "$licences/$text.txt"; done
cp /usr/share/doc/mingw-w64-x86-64-dev/copyright "$licences/mingw-w64.txt"
cp /usr/share/doc/gcc-mingw-w64-x86-64-posix-runtime/copyright "$licences/gcc.txt"
{
  sed "s/@VERSION@/$version/" packaging/windows/SOURCES.txt.in
  {
    cat "$libraries"/built/* | grep -v '^googletest '
    dpkg-query -W -f '${source:Package} ${source:Version}\n' mingw-w64-x86-64-dev gcc-mingw-w64-x86-64-posix-runtime
    dpkg-query -W -f '${Built-Using}\n' gcc-mingw-w64-x86-64-posix-runtime | sed 's/ (= / /; s/)//'
  } | sed 's,^\(.*\) \(.*\)$,  https://snapshot.debian.org/package/\1/\2/,'
} > "$licences/SOURCES.txt"

mkdir -p out
rm -f "out/$name.zip"
(cd build/windows && zip -qr -9 "../../out/$name.zip" "$name")
ls -l "out/$name.zip"

[ "$tests" = OFF ] || scripts/windows/tests.sh "out/$name.zip" "$libraries"
