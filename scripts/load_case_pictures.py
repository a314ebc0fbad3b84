#!/usr/bin/python3
"""Makes the pictures and the table of the load cases in docs/examples.md from runs of quillane-batch."""

import tempfile
from pathlib import Path

from lib.examples import IMAGES, LOOK, ROOT, make, run
from lib.markdown_table import insert, table
from lib.plate import read_plate

# Example, refinement, share of the volume, and the forces of each case by node of the unrefined grid.
STUDIES = {
    "bridge": ("bridge", 1, 0.4, [{(25, column): (0, -8000)} for column in (41, 21, 61)]),
    "bracket": ("l-bracket", 2, 0.5, [{(17, 40): (0, -400)}, {(17, 40): (-400, 0)}]),
}


def save(plate, loads, refinement, path):
    plate.loads = {((i - 1) * refinement + 1, (j - 1) * refinement + 1): force
                   for (i, j), force in loads.items()}
    plate.write(path)
    return path


def study(scratch, name):
    example, refinement, share, cases = STUDIES[name]
    start = read_plate(make(scratch, "full", refinement, example) / f"{example}.model")
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
