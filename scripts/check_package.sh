#!/usr/bin/env bash
# Installs the packages of out/, uses each as a new user would, removes them and looks for leftovers.
# Needs root, and xvfb, xdotool, lintian, appstream, desktop-file-utils.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
shopt -s nullglob
names=(quillane quillane-batch quillane-doc)
packages=(out/quillane_*.deb out/quillane-batch_*.deb out/quillane-doc_*.deb)
[ ${#packages[@]} -eq 3 ] || { echo "out/ must hold three packages: scripts/package.sh" >&2; exit 2; }

step() { echo "== $*"; }

step "lintian, appstreamcli, desktop-file-validate"
lintian --allow-root --fail-on error "${packages[@]}"
appstreamcli validate --no-net packaging/linux/org.quillane.quillane.metainfo.xml
desktop-file-validate packaging/linux/quillane.desktop

step "install"
dpkg -i "${packages[@]}"
mapfile -t files < <(dpkg -L "${names[@]}")
work=$(mktemp -d)
trap 'rm -rf "$work"; dpkg -r "${names[@]}" >/dev/null 2>&1 || true' EXIT

step "the installed manual does not refer to the sources"
! grep -rnE '(scripts|src|tests|bench|build|packaging)/[a-z]|make-examples|CONTRIBUTING|design\.md' \
  /usr/share/doc/quillane/*.md
for link in $(grep -ohE '\]\([^)#:]+' /usr/share/doc/quillane/*.md | cut -c3- | grep -vx 'https\?' | sort -u); do
  [ -e "/usr/share/doc/quillane/$link" ] || { echo "the manual links to a missing file: $link" >&2; exit 1; }
done
cd "$work"

step "quillane-batch on an installed example, without a display"
env -u DISPLAY quillane-batch /usr/share/quillane/examples/cantilever.model --steps 5 \
  --save optimized.model --image stress.png
[ -s optimized.model ] && [ -s stress.png ]

step "quillane opens its window"
xvfb-run -a bash -c '
  quillane & program=$!
  xdotool search --sync --onlyvisible --name "Quillane Optimization" >/dev/null
  xdotool search --name "Quillane Optimization" getwindowname
  kill -0 $program && kill $program && wait $program || true'

step "man pages"
for page in quillane quillane-batch; do man -w "$page"; done

step "remove without leftovers"
dpkg -r "${names[@]}"
for file in "${files[@]}"; do
  case "$file" in *quillane*) [ ! -e "$file" ] || { echo "left behind: $file" >&2; exit 1; } ;; esac
done
echo "The packages install, start and remove cleanly."
