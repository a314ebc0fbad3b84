"""Plates for the scripts: reads and writes model files and runs quillane-batch on them."""

import csv
import math
import subprocess
from dataclasses import dataclass, field
from pathlib import Path

EMPTY, DESIGN = 0, 1


@dataclass
class Plate:
    """A grid of rows x columns cells of the given size (mm), lower left corner at (left, lower) mm.

    Cells are (row, column) from 1, as the program counts them; nodes are (row, column) from 1 on
    the grid of rows + 1 by columns + 1 points. Modulus in MPa, thickness in mm, forces in N.
    """

    rows: int
    columns: int
    size: float
    modulus: float = 210000.0
    poisson: float = 0.3
    thickness: float = 1.0
    target: float = 0.0
    epsilon: int = 5
    lam: float = 0.05
    left: float = 0.0
    lower: float = 0.0
    states: dict = field(default_factory=dict)
    held: dict = field(default_factory=dict)
    loads: dict = field(default_factory=dict)

    def state(self, row, column):
        return self.states.get((row, column), DESIGN)

    def has_material(self, row, column):
        return self.state(row, column) > 0

    def hold(self, row, column, x=False, y=False):
        was = self.held.get((row, column), (False, False))
        self.held[row, column] = (was[0] or x, was[1] or y)

    def push(self, row, column, fx, fy):
        was = self.loads.get((row, column), (0.0, 0.0))
        self.loads[row, column] = (was[0] + fx, was[1] + fy)

    def node(self, row, column):
        return (row - 1) * (self.columns + 1) + column

    def place(self, row, column):
        """Returns the place of a node, (x, y) in mm."""
        return self.left + (column - 1) * self.size, self.lower + (row - 1) * self.size

    def nodes(self):
        return [(i, j) for i in range(1, self.rows + 2) for j in range(1, self.columns + 2)]

    def cells(self):
        return [(i, j) for i in range(1, self.rows + 1) for j in range(1, self.columns + 1)]

    def write(self, path):
        width = 1.25 * self.columns * self.size
        records = [(width, self.size, 0.9, 0.6), (self.rows, self.columns), self.place(1, 1),
                   self.place(self.rows + 1, self.columns + 1),
                   (self.modulus, self.poisson, self.thickness),
                   (len(self.nodes()), len(self.cells()))]
        records += [(self.state(i, j),) for i, j in self.cells()]
        records += [(self.node(*at), *self.place(*at)) for at in self.nodes()]
        for e, (i, j) in enumerate(self.cells(), 1):
            low = self.node(i, j)
            high = self.node(i + 1, j)
            records.append((e, low, low + 1, high + 1, high))
        for at in self.nodes():
            x, y = self.held.get(at, (False, False))
            records.append((self.node(*at), int(x), int(y)))
        records += [(self.node(*at), *self.loads.get(at, (0.0, 0.0))) for at in self.nodes()]
        records.append((self.target, self.epsilon, self.lam))
        text = "".join(",".join(repr(value) for value in record) + "\r\n" for record in records)
        Path(path).write_text(text, newline="")

    def mirrored(self):
        """Returns the plate seen from behind: left and right exchanged."""
        image = Plate(**{**vars(self), "states": {}, "held": {}, "loads": {}})
        for (i, j), state in self.states.items():
            image.states[i, self.columns + 1 - j] = state
        for (i, j), held in self.held.items():
            image.held[i, self.columns + 2 - j] = held
        for (i, j), (fx, fy) in self.loads.items():
            image.loads[i, self.columns + 2 - j] = (-fx, fy)
        return image


def read_plate(path):
    """Returns the plate of a model file with one record per line, as the programs write it."""
    fields = [[float(value) for value in line.split(",")]
              for line in Path(path).read_text().split("\n") if line.strip()]
    rows, columns = (int(value) for value in fields[1])
    plate = Plate(rows, columns, fields[0][1], *fields[4], left=fields[2][0], lower=fields[2][1])
    nodes, cells = plate.nodes(), plate.cells()
    at = 6
    plate.states = {cell: int(fields[at + k][0]) for k, cell in enumerate(cells)}
    at += len(cells) + len(nodes) + len(cells)
    plate.held = {node: (fields[at + k][1] != 0, fields[at + k][2] != 0)
                  for k, node in enumerate(nodes)}
    at += len(nodes)
    plate.loads = {node: tuple(fields[at + k][1:]) for k, node in enumerate(nodes)}
    plate.target, plate.epsilon, plate.lam = fields[-1][0], int(fields[-1][1]), fields[-1][2]
    return plate


@dataclass
class Result:
    """Displacements (mm) by node, stress (MPa) and state by cell, and the rows of the history."""

    disp: dict
    stress: dict
    state: dict
    history: list

    def layout(self):
        return {cell for cell, state in self.state.items() if state > 0}


class Runner:
    """Runs the program on plates in a scratch folder."""

    def __init__(self, program, folder):
        self.program, self.folder = Path(program), Path(folder)

    def run(self, plate, steps=0):
        names = {key: str(self.folder / key) for key in ("model", "nodes", "cells", "history")}
        plate.write(names["model"])
        summary = subprocess.run(
            [self.program, names["model"], "--steps", str(steps), "--nodes", names["nodes"],
             "--cells", names["cells"], "--history", names["history"]],
            check=True, capture_output=True, text=True).stdout
        if "converge" in summary:
            raise RuntimeError(summary)
        grid = plate.nodes()
        with open(names["nodes"], encoding="ascii") as file:
            disp = {grid[int(r["node"]) - 1]: (float(r["u"]), float(r["v"]))
                    for r in csv.DictReader(file)}
        with open(names["cells"], encoding="ascii") as file:
            cells = {(int(r["row"]), int(r["column"])): r for r in csv.DictReader(file)}
        history = Path(names["history"]).read_text(encoding="ascii").split("\n")[1:]
        return Result(disp, {at: float(r["stress"]) for at, r in cells.items()},
                      {at: int(r["state"]) for at, r in cells.items()},
                      [[float(v) for v in line.split(",")] for line in history if line.strip()])


def von_mises(sx, sy, txy):
    return math.sqrt(sx * sx + sy * sy - sx * sy + 3 * txy * txy)


def edge_load(traction, y1, y2):
    """Returns the forces at y1 and y2 that are equivalent to a traction along the edge between them.

    Uses three Gauss points: exact for tractions up to degree four.
    """
    half, middle = (y2 - y1) / 2, (y1 + y2) / 2
    lower = upper = 0.0
    for point, weight in ((-math.sqrt(0.6), 5 / 9), (0.0, 8 / 9), (math.sqrt(0.6), 5 / 9)):
        force = weight * half * traction(middle + half * point)
        lower += force * (1 - point) / 2
        upper += force * (1 + point) / 2
    return lower, upper
