#!/usr/bin/env bash
# Installs the missing Debian packages that the named purposes need.
# Usage: install_dependencies.sh build|test|bench|arm64|windows|windows-test|develop|exports ...
# (quick when nothing is missing)
set -euo pipefail

build=(g++ cmake ninja-build qt6-base-dev libfmt-dev libcli11-dev libhwy-dev libdxflib-dev
       fonts-dejavu-core fonts-noto-cjk)
test=("${build[@]}" libgtest-dev)
bench=("${test[@]}" libbenchmark-dev libeigen3-dev libsuitesparse-dev python3)
arm64=(g++-aarch64-linux-gnu qemu-user-static googletest)
# windows: compiles for Windows and packs; windows-test: runs what can be run under wine.
windows=(g++-mingw-w64-x86-64-posix cmake ninja-build qt6-base-dev dpkg-dev pandoc zip)
windows_test=("${test[@]}" "${windows[@]}" wine wine64 unzip xvfb openbox xdotool x11-utils xclip imagemagick)
develop=("${test[@]}" "${bench[@]}" git clang-format clang-tidy cppcheck gcovr xvfb openbox xdotool imagemagick
         x11-utils x11-apps xclip gnuplot-nox parallel desktop-file-utils appstream lintian file man-db
         clang libclang-rt-dev strace librsvg2-bin icoutils)
# Programs that read the exported files: 1.5 GB, so not among the everyday tools.
exports=("${build[@]}" python3-ezdxf librecad admesh librsvg2-bin imagemagick meshio-tools gmsh calculix-ccx
         python3-paraview python3-meshio python3-numpy xvfb openbox xdotool)

packages=()
for purpose in "$@"; do
  case "$purpose" in
    build) packages+=("${build[@]}") ;;
    test) packages+=("${test[@]}") ;;
    bench) packages+=("${bench[@]}") ;;
    arm64) packages+=("${arm64[@]}") ;;
    windows) packages+=("${windows[@]}") ;;
    windows-test) packages+=("${windows_test[@]}") ;;
    develop) packages+=("${develop[@]}") ;;
    exports) packages+=("${exports[@]}") ;;
    *) echo "install_dependencies.sh: unknown purpose: $purpose" >&2; exit 2 ;;
  esac
done

missing=()
for package in "${packages[@]}"; do
  status=$(dpkg-query -W -f '${db:Status-Status}' "$package" 2>/dev/null || true)
  [ "$status" = installed ] || missing+=("$package")
done
[ ${#missing[@]} -gt 0 ] || exit 0

sudo=()
if [ "$(id -u)" -ne 0 ]; then
  command -v sudo >/dev/null || {
    echo "These packages are missing and need root to install: ${missing[*]}" >&2
    exit 1
  }
  sudo=(sudo)
fi
echo "Installing: ${missing[*]}"
"${sudo[@]}" apt-get update -q
# Set after sudo, which does not pass on the caller's environment.
"${sudo[@]}" env DEBIAN_FRONTEND=noninteractive \
  apt-get install -y -q --no-install-recommends "${missing[@]}"
