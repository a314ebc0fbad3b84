#!/usr/bin/env bash
# Builds what the programs need on Windows from Debian's source packages, once: the toolkit (half an hour on
# two cores) and the small libraries. The argument is the folder for them; they are installed in its
# libraries/, and everything else there can be deleted afterwards.
set -euo pipefail
root=$1
toolchain="$(cd "$(dirname "${BASH_SOURCE[0]}")/../.." && pwd)/cmake/windows.cmake"
prefix="$root/libraries"
mkdir -p "$root/src" "$root/build" "$root/apt/lists/partial" "$prefix/built" "$prefix/licences"

# Fetches and unpacks a source package. A separate list of sources makes root unnecessary.
fetch() {
  local list="$root/apt/sources.list"
  local apt=(apt-get -qq -o Dir::Etc::SourceList="$list" -o Dir::Etc::SourceParts=/dev/null
             -o Dir::State::Lists="$root/apt/lists" -o APT::Sandbox::User=root)
  if [ ! -f "$list" ]; then
    echo "deb-src [signed-by=/usr/share/keyrings/debian-archive-keyring.gpg]" \
         "http://deb.debian.org/debian bookworm main" > "$list"
    "${apt[@]}" update
  fi
  rm -rf "${root:?}/src/$1"
  mkdir "$root/src/$1"
  (cd "$root/src/$1" && "${apt[@]}" source "$1")
}

# Configures, builds and installs an unpacked source package: by_cmake NAME OPTIONS...
by_cmake() {
  local name=$1
  shift
  cmake -S "$root/src/$name"/*/ -B "$root/build/$name" -G Ninja -DCMAKE_BUILD_TYPE=Release \
    -DCMAKE_TOOLCHAIN_FILE="$toolchain" -DQUILLANE_WINDOWS_LIBRARIES="$prefix" \
    -DCMAKE_INSTALL_PREFIX="$prefix" -DBUILD_TESTING=OFF "$@"
  nice cmake --build "$root/build/$name"
  cmake --install "$root/build/$name" --strip > /dev/null
}

# Builds only what the window uses. It draws into images, so no GPU; it renders text by the interface that
# every Windows has; it uses few widgets. Tools that run at build time are native.
build_qt6-base() {
  local off=(sql network dbus printsupport concurrent xml tabletevent direct2d direct2d1_1 directwrite
             directwrite3 vulkan glib zstd icu gif ico jpeg system_zlib system_png system_freetype
             system_harfbuzz system_pcre2 system_doubleconversion style_windowsvista
             graphicsview graphicseffect calendarwidget colordialog columnview commandlinkbutton
             datawidgetmapper dial errormessage filedialog fontcombobox fontdialog inputdialog
             keysequenceedit lcdnumber mdiarea progressdialog scroller splashscreen toolbox undoview wizard)
  local options=("${off[@]/#/-DFEATURE_}")
  by_cmake qt6-base "${options[@]/%/=OFF}" -DINPUT_opengl=no -DQT_QMAKE_TARGET_MKSPEC=win32-g++ \
    -DBUILD_SHARED_LIBS=ON -DQT_BUILD_EXAMPLES=OFF -DQT_BUILD_TESTS=OFF -DQT_HOST_PATH=/usr \
    -DQT_HOST_PATH_CMAKE_DIR="/usr/lib/$(dpkg-architecture -qDEB_HOST_MULTIARCH)/cmake"
}

build_fmtlib() { by_cmake fmtlib -DFMT_TEST=OFF -DFMT_DOC=OFF; }
build_cli11() { by_cmake cli11 -DCLI11_BUILD_TESTS=OFF -DCLI11_BUILD_EXAMPLES=OFF -DCLI11_BUILD_DOCS=OFF; }
build_highway() { by_cmake highway -DHWY_ENABLE_CONTRIB=OFF -DHWY_ENABLE_EXAMPLES=OFF; }
build_googletest() { by_cmake googletest -DBUILD_GMOCK=OFF; }

# Compiles the two sources directly: the package has files for another build system only.
build_dxflib() {
  local source
  for source in "$root"/src/dxflib/*/src/*.cpp; do
    x86_64-w64-mingw32-g++-posix -O2 -c "$source" -o "$root/build/$(basename "$source").o"
  done
  mkdir -p "$prefix/include/dxflib" "$prefix/lib"
  cp "$root"/src/dxflib/*/src/*.h "$prefix/include/dxflib"
  x86_64-w64-mingw32-ar rcs "$prefix/lib/libdxflib.a" "$root"/build/dl_*.cpp.o
}

for name in fmtlib cli11 highway dxflib googletest qt6-base; do
  [ ! -f "$prefix/built/$name" ] || continue
  echo "Building $name for Windows."
  fetch "$name"
  "build_$name"
  cp "$root/src/$name"/*/debian/copyright "$prefix/licences/$name.txt"
  echo "$name $(sed -n 's/^Version: //p' "$root/src/$name"/*.dsc)" > "$prefix/built/$name"
done
