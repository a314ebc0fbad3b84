#!/usr/bin/env bash
# Makes the PNG sizes and the Windows icon from packaging/icons/quillane.svg (rsvg-convert, librsvg2-bin;
# icotool, icoutils).
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/../packaging/icons"

for size in 16 22 24 32 48 64 128 256 512; do
  rsvg-convert --width "$size" --height "$size" quillane.svg --output "quillane-$size.png"
done
icotool --create --output=../windows/quillane.ico quillane-{16,24,32,48,64}.png --raw=quillane-256.png
