#!/usr/bin/python3
"""Makes the tables and the picture of the shapes in docs/validation.md from shape_bench.

Usage: shape_tables.py [seed, default 2026]   Takes some minutes on one core.
"""
import subprocess
import sys
import tempfile
from pathlib import Path

from lib.examples import IMAGES, ROOT
from lib.markdown_table import insert

PAIRS = 8  # the first plates, one of every kind


def main():
    seed = sys.argv[1] if len(sys.argv) > 1 else "2026"
    subprocess.run([ROOT / "scripts/build_benchmarks.sh", "shape_bench"], check=True,
                   stdout=subprocess.DEVNULL)
    program = ROOT / "build/release/bench/shape_bench"
    with tempfile.TemporaryDirectory() as folder:
        command = [program, "--seed", seed, "--pictures", folder, "--montage", str(PAIRS),
                   "--columns", "2"]
        output = subprocess.run(command, check=True, capture_output=True, text=True).stdout
        (IMAGES / "validation-shapes.png").write_bytes((Path(folder) / "montage.png").read_bytes())
    plates, summary, worst = output.strip().split("\n\n")
    titles = plates.splitlines()[:2]
    examples = [line for line in plates.splitlines() if "-x" in line.split("|")[1]]
    insert(ROOT / "docs/validation.md",
           {"shapes": summary, "worst shapes": worst, "example shapes": "\n".join(titles + examples)})


if __name__ == "__main__":
    main()
