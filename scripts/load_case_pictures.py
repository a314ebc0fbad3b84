#!/usr/bin/python3
"""Makes the pictures and the table of the load cases in docs/examples.md from runs of quillane-batch.

The program is taken from QUILLANE_BATCH, or from the release build, whose quillane-make-examples
makes the models.
"""

import json
import os
import subprocess
import tempfile
from pathlib import Path

from lib.markdown_table import insert, table
from lib.plate import read_plate

ROOT = Path(__file__).resolve().parent.parent
PROGRAM = os.environ.get("QUILLANE_BATCH", ROOT / "build/release/src/batch/quillane-batch")
MAKE_EXAMPLES = ROOT / "build/release/examples/quillane-make-examples"
IMAGES = ROOT / "docs/images"
LOOK = ("--fit", "--no-grid", "--size", "900x600")

# Example, cells in place of each (in a row), share of the volume, and the forces of each case by
# the coarse node.
STUDIES = {
    "bridge": ("bridge", 1, 0.4, [{(25, column): (0, -8000)} for column in (41, 21, 61)]),
    "bracket": ("l-bracket", 2, 0.5, [{(17, 40): (0, -400)}, {(17, 40): (-400, 0)}]),
}


def save(plate, loads, refinement, path):
    plate.loads = {((i - 1) * refinement + 1, (j - 1) * refinement + 1): force
                   for (i, j), force in loads.items()}
    plate.write(path)
    return path


def run(models, *options):
    """The summary of a run of the first model with the others as load cases."""
    others = [word for model in models[1:] for word in ("--load-case", model)]
    output = subprocess.run([PROGRAM, models[0], *others, "--quiet", "--json", "-", *options],
                            check=True, capture_output=True, text=True).stdout
    return json.loads(output)


def study(scratch, name):
    example, refinement, share, cases = STUDIES[name]
    subprocess.run([MAKE_EXAMPLES, scratch, "full", str(refinement), example], check=True)
    start = read_plate(scratch / f"{example}.model")
    models = [save(start, loads, refinement, scratch / f"{name}-{number}.model")
              for number, loads in enumerate(cases, 1)]
    together = {at: tuple(map(sum, zip(*(loads.get(at, (0, 0)) for loads in cases))))
                for loads in cases for at in loads}
    both = save(start, together, refinement, scratch / f"{name}-sum.model")
    rows = []
    for kind, inputs in (("cases", models), ("sum", [both])):
        end = scratch / "end.model"
        run(inputs, "--volume-fraction", str(share), "--save", end, *LOOK,
            "--image", IMAGES / f"load-cases-{name}-{kind}.png")
        shape = read_plate(end)
        figures = run([save(shape, loads, refinement, scratch / f"{kind}-{number}.model")
                       for number, loads in enumerate(cases, 1)])
        rows.append((f"{name}, {'as cases' if kind == 'cases' else 'all at once'}",
                     f"{figures['rows']} x {figures['columns']}", f"{share}",
                     *(f"{figures[key]:.5g}" for key in ("compliance", "maxStress")),
                     " + ".join(f"{case['compliance']:.4g}" for case in figures["loadCases"])))
    return rows


TITLES = ("the loads of the search", "cells", "volume fraction", "compliance (N mm)",
          "max stress (MPa)", "compliance of each case (N mm)")


def main():
    with tempfile.TemporaryDirectory() as scratch:
        rows = [row for name in STUDIES for row in study(Path(scratch), name)]
    insert(ROOT / "docs/examples.md", {"load-cases": table(TITLES, rows)})


if __name__ == "__main__":
    main()
