#!/usr/bin/env bash
# Installs the package of out/, uses it as a newcomer would, removes it and looks for leftovers.
# Needs root, and xvfb, xdotool, lintian, appstream, desktop-file-utils.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
shopt -s nullglob
packages=(out/quillane_*.deb)
[ ${#packages[@]} -eq 1 ] || { echo "out/ must hold one package: scripts/package.sh" >&2; exit 2; }

step() { echo "== $*"; }

step "judged by lintian, appstreamcli, desktop-file-validate"
lintian --allow-root --fail-on error "${packages[0]}"
appstreamcli validate --no-net packaging/linux/org.quillane.quillane.metainfo.xml
desktop-file-validate packaging/linux/quillane.desktop

step "installed"
dpkg -i "${packages[0]}"
mapfile -t files < <(dpkg -L quillane)
work=$(mktemp -d)
trap 'rm -rf "$work"; dpkg -r quillane >/dev/null 2>&1 || true' EXIT
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

step "removed without leftovers"
dpkg -r quillane
for file in "${files[@]}"; do
  case "$file" in *quillane*) [ ! -e "$file" ] || { echo "left behind: $file" >&2; exit 1; } ;; esac
done
echo "The package installs, starts and removes cleanly."
