#!/usr/bin/python3
"""Makes the pictures and tables of docs/examples.md from runs of quillane-batch."""

import csv
import math
import os
import tempfile
from concurrent.futures import ThreadPoolExecutor
from pathlib import Path

from lib import examples
from lib.examples import IMAGES, LOOK, ROOT, make
from lib.markdown_table import insert, table
from lib.plate import read_plate

EXAMPLES = ("cantilever", "half-mbb-beam", "bridge", "l-bracket", "two-bar-truss", "bolted-lever")
AWAY = 2.5  # cells from the next loaded or held node


def run(model, *options):
    """Returns the summary of a run with the largest stress away from loads and supports added."""
    cells = model.with_suffix(".csv")
    summary = examples.run([model], "--cells", cells, *options)
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
