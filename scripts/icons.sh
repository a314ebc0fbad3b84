#!/usr/bin/env bash
# Makes the icon's PNG sizes from packaging/icons/quillane.svg (rsvg-convert, librsvg2-bin).
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/../packaging/icons"

for size in 16 22 24 32 48 64 128 256 512; do
  rsvg-convert --width "$size" --height "$size" quillane.svg --output "quillane-$size.png"
done
