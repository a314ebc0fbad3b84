#!/usr/bin/python3
"""Makes the pictures and tables of docs/examples.md from runs of quillane-batch.

The program is taken from QUILLANE_BATCH, or from the release build, whose quillane-make-examples
makes the models.
"""

import csv
import json
import math
import os
import subprocess
import tempfile
from concurrent.futures import ThreadPoolExecutor
from pathlib import Path

from lib.markdown_table import insert, table
from lib.plate import read_plate

ROOT = Path(__file__).resolve().parent.parent
PROGRAM = os.environ.get("QUILLANE_BATCH", ROOT / "build/release/src/batch/quillane-batch")
MAKE_EXAMPLES = ROOT / "build/release/examples/quillane-make-examples"
IMAGES = ROOT / "docs/images"
EXAMPLES = ("cantilever", "half-mbb-beam", "bridge", "l-bracket", "two-bar-truss", "bolted-lever")
LOOK = ("--fit", "--no-grid", "--size", "900x600")
AWAY = 2.5  # cells from the next loaded or held node


def make(folder, start, refinement, *name):
    folder.mkdir()
    subprocess.run([MAKE_EXAMPLES, folder, start, str(refinement), *name], check=True)
    return folder


def run(model, *options):
    """The summary of a run, with the largest stress away from loads and supports added."""
    cells = model.with_suffix(".csv")
    output = subprocess.run([PROGRAM, model, "--quiet", "--json", "-", "--cells", cells, *options],
                            check=True, capture_output=True, text=True).stdout
    summary = json.loads(output)
    plate = read_plate(model)
    points = [at for at, held in plate.held.items() if any(held)]
    points += [at for at, load in plate.loads.items() if any(load)]
    with open(cells, encoding="ascii") as file:
        summary["away"] = max(
            float(r["stress"]) for r in csv.DictReader(file)
            if all(math.hypot(int(r["row"]) + 0.5 - i, int(r["column"]) + 0.5 - j) > AWAY
                   for i, j in points))
    return summary


def row(name, summary):
    return (name, f"{summary['rows']} x {summary['columns']}", f"{summary['startVolume']:.8g}",
            f"{summary['volume']:.8g} ({100 * summary['volumeFraction']:.0f} %)", len(summary["stages"]),
            f"{summary['compliance']:.4g}", f"{summary['away']:.1f}", f"{summary['meanStress']:.1f}")


TITLES = ("example", "cells", "volume (mm³)", "at the end", "stages", "compliance (N mm)",
          "max stress away (MPa)", "mean stress (MPa)")


def main():
    with tempfile.TemporaryDirectory() as scratch, ThreadPoolExecutor(os.cpu_count()) as pool:
        scratch = Path(scratch)
        full, fine = make(scratch / "full", "full", 1), make(scratch / "fine", "full", 2)
        finest = make(scratch / "finest", "full", 4, "cantilever")
        by_half = ("--volume-fraction", "0.5", "--fit", "--no-grid", "--image")
        runs = {"half": {}, "fine": {}}
        pool.submit(run, finest / "cantilever.model", "--fit", "--no-grid", "--image",
                    IMAGES / "cantilever-finest-start.png", "--size", "1200x640")
        last = pool.submit(run, finest / "cantilever.model", *by_half,
                           IMAGES / "cantilever-finest.png", "--size", "1200x640")
        for name in EXAMPLES:
            image, model = IMAGES / f"example-{name}", f"{name}.model"
            pool.submit(run, full / model, *LOOK, "--image", f"{image}-start.png").result()
            for kind, folder, end in (("half", full, "end"), ("fine", fine, "fine")):
                runs[kind][name] = pool.submit(run, folder / model, *by_half,
                                               f"{image}-{end}.png", "--size", "900x600")
        last.result()
        insert(ROOT / "docs/examples.md",
               {kind: table(TITLES, [row(name, done.result()) for name, done in found.items()])
                for kind, found in runs.items()})


if __name__ == "__main__":
    main()
