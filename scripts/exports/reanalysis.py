#!/usr/bin/python3
"""Analyses a smoothed shape again with other programs: gmsh meshes it, CalculiX solves it.

Usage: reanalysis.py MODEL SHAPE.dxf CELLS.csv RESULT.vtu   (MODEL: the plate that SHAPE and CELLS
belong to). Prints the largest stresses of both analyses, in the whole plate and away from point loads,
supports and the corners that the smoothing kept. Writes stresses and displacements to RESULT.vtu.
"""
import csv
import math
import os
import subprocess
import sys
import tempfile
from pathlib import Path

import ezdxf
import meshio
import numpy as np

sys.path.append(str(Path(__file__).resolve().parents[1]))
from lib.plate import read_plate

ELEMENTS_PER_CELL = 5  # edges of triangles along a cell's edge
AWAY = 3               # cells from point loads, supports and sharp corners


class PlateArrays:
    """The plate of a model file as the re-analysis needs it: one row per node, columns x and y."""

    def __init__(self, path):
        plate = read_plate(path)
        self.cell, self.young, self.poisson = plate.size, plate.modulus, plate.poisson
        self.thickness = plate.thickness
        self.place = np.array([plate.place(*node) for node in plate.nodes()])
        self.held = np.array([plate.held[node] for node in plate.nodes()])
        self.load = np.array([plate.loads[node] for node in plate.nodes()])
        self.used = self.place[self.held.any(axis=1) | (self.load != 0).any(axis=1)]


def distance(p, a, b):
    along = b - a
    part = np.clip(np.dot(p - a, along) / np.dot(along, along), 0, 1)
    return np.linalg.norm(p - a - part * along)


def polygons(path, plate):
    """Returns the loops of a drawing, with every supported and loaded node on them as a point."""
    loops = []
    for line in ezdxf.readfile(path).modelspace():
        corners = [np.array(p) for p in line.get_points("xy")]
        loop = []
        for a, b in zip(corners, corners[1:] + corners[:1]):
            between = [p for p in plate.used if distance(p, a, b) < 1e-6 * plate.cell
                       and min(np.linalg.norm(p - a), np.linalg.norm(p - b)) > 1e-6 * plate.cell]
            loop += [a] + sorted(between, key=lambda p: np.linalg.norm(p - a))
        loops.append(loop)
    return loops


def triangles(loops, size, folder):
    """Returns a mesh of second order by gmsh: places of nodes, and six nodes of each element."""
    text, count, curves = "Mesh.Algorithm = 6;\nMesh.ElementOrder = 2;\n", 0, []
    for loop in loops:
        first = count + 1
        for p in loop:
            count += 1
            text += f"Point({count}) = {{{p[0]:.12g}, {p[1]:.12g}, 0, {size}}};\n"
        for k in range(first, count + 1):
            text += f"Line({k}) = {{{k}, {k + 1 if k < count else first}}};\n"
        text += f"Curve Loop({first}) = {{{first}:{count}}};\n"
        curves.append((first, abs(sum(a[0] * b[1] - b[0] * a[1] for a, b in zip(loop, loop[1:] + loop[:1])))))
    curves.sort(key=lambda curve: -curve[1])  # the outer one first
    text += f"Plane Surface(1) = {{{', '.join(str(c) for c, _ in curves)}}};\nPhysical Surface(1) = {{1}};\n"
    geometry = os.path.join(folder, "shape.geo")
    with open(geometry, "w") as file:
        file.write(text)
    mesh = os.path.join(folder, "shape.msh")
    subprocess.run(["gmsh", "-2", "-format", "msh2", "-o", mesh, geometry], check=True,
                   capture_output=True)
    read = meshio.read(mesh)
    return read.points[:, :2], read.cells_dict["triangle6"]


def conditions(plate, places):
    """Returns which components of the mesh's nodes are held, and the forces on them. A node is held
    if it lies on a held node or between two held neighbours."""
    held, force = np.zeros(places.shape, bool), np.zeros(places.shape)
    for d in range(2):
        nodes = plate.place[plate.held[:, d]]
        for k, p in enumerate(places):
            gaps = np.linalg.norm(nodes - p, axis=1)
            near = nodes[gaps < plate.cell * (1 + 1e-6)]
            held[k, d] = gaps.min() < 1e-6 * plate.cell or any(
                distance(p, a, b) < 1e-6 * plate.cell and
                np.linalg.norm(b - a) < plate.cell * (1 + 1e-6)
                for a in near for b in near if a is not b and not np.array_equal(a, b))
    for place, load in zip(plate.place, plate.load):
        if not load.any():
            continue
        k = np.linalg.norm(places - place, axis=1).argmin()
        assert np.linalg.norm(places[k] - place) < 1e-6 * plate.cell, place
        force[k] += load
    return held, force


def calculix(plate, places, elements, held, force, folder):
    """Returns von Mises stress (MPa) and displacement (mm) at the nodes, by CalculiX."""
    job = os.path.join(folder, "shape")
    with open(job + ".inp", "w") as file:
        file.write("*NODE, NSET=ALL\n")
        for k, p in enumerate(places, 1):
            file.write(f"{k}, {p[0]:.12g}, {p[1]:.12g}, 0\n")
        file.write("*ELEMENT, TYPE=CPS6, ELSET=PLATE\n")
        for k, nodes in enumerate(elements, 1):
            file.write(f"{k}, {', '.join(str(n + 1) for n in nodes)}\n")
        file.write(f"*MATERIAL, NAME=M\n*ELASTIC\n{plate.young}, {plate.poisson}\n")
        file.write(f"*SOLID SECTION, ELSET=PLATE, MATERIAL=M\n{plate.thickness}\n*BOUNDARY\n")
        for k, d in zip(*np.nonzero(held)):
            file.write(f"{k + 1}, {d + 1}\n")
        file.write("*STEP\n*STATIC\n*CLOAD\n")
        for k, d in zip(*np.nonzero(force)):
            file.write(f"{k + 1}, {d + 1}, {force[k, d]:.12g}\n")
        file.write("*NODE FILE, OUTPUT=2D\nU\n*EL FILE\nS\n*END STEP\n")
    subprocess.run(["ccx", "-i", job], check=True, capture_output=True, cwd=folder)
    blocks, block = {}, None
    with open(job + ".frd") as file:
        for line in file:
            if line.startswith(" -4"):
                block = blocks.setdefault(line.split()[1], {})
            elif line.startswith(" -3"):
                block = None
            elif line.startswith(" -1") and block is not None:
                values = line[13:].rstrip("\n")
                block[int(line[3:13])] = [float(values[i:i + 12]) for i in range(0, len(values), 12)]
    number = range(1, len(places) + 1)
    x, y, _, xy, _, _ = np.array([blocks["STRESS"][n] for n in number]).T
    return np.sqrt(x * x + y * y - x * y + 3 * xy * xy), np.array([blocks["DISP"][n][:3] for n in number])


def value_at(p, places, elements, values):
    """Interpolates linearly between the corners of the triangle that contains p."""
    a, b, c = (places[elements[:, k]] for k in range(3))
    det = (b - a)[:, 0] * (c - a)[:, 1] - (b - a)[:, 1] * (c - a)[:, 0]
    u = ((p - a)[:, 0] * (c - a)[:, 1] - (p - a)[:, 1] * (c - a)[:, 0]) / det
    v = ((b - a)[:, 0] * (p - a)[:, 1] - (b - a)[:, 1] * (p - a)[:, 0]) / det
    k = np.minimum(np.minimum(u, v), 1 - u - v).argmax()
    weights = np.array([1 - u[k] - v[k], u[k], v[k]])
    assert weights.min() > -1e-6, p
    return weights @ values[elements[k, :3]]


def sharp(loops):
    """Returns the points of the loops at which the edge turns by more than 50 degrees."""
    points = []
    for loop in loops:
        for before, here, after in zip(loop[-1:] + loop[:-1], loop, loop[1:] + loop[:1]):
            turn = math.atan2(*(after - here)[::-1]) - math.atan2(*(here - before)[::-1])
            if abs(math.remainder(turn, 2 * math.pi)) > math.radians(50):
                points.append(here)
    return points


def main():
    model, drawing, table, result = sys.argv[1:]
    plate = PlateArrays(model)
    loops = polygons(drawing, plate)
    with tempfile.TemporaryDirectory() as folder:
        places, elements = triangles(loops, plate.cell / ELEMENTS_PER_CELL, folder)
        held, force = conditions(plate, places)
        stress, moved = calculix(plate, places, elements, held, force, folder)

    with open(table, newline="") as file:
        cells = [row for row in csv.DictReader(file) if int(row["state"]) > 0]
    centres = plate.place[0] + plate.cell * (np.array(
        [[float(row["column"]), float(row["row"])] for row in cells]) - 0.5)
    ours = np.array([float(row["stress"]) for row in cells])
    theirs = np.array([value_at(p, places, elements, stress) for p in centres])
    left_out = np.array([*plate.used, *sharp(loops)])

    def away(points):
        return np.array([np.linalg.norm(left_out - p, axis=1).min() for p in points]) > AWAY * plate.cell

    print(f"nodes, elements of the re-analysis    {len(places)}, {len(elements)}")
    print(f"reaction to the loads, N              {-force.sum(axis=0)}")
    inside, at_edge = away(centres), away(places)
    for name, ours_there, theirs_there in (("everywhere", ours, stress),
                                           ("away, in middles of cells", ours[inside], theirs[inside]),
                                           ("away, anywhere", ours[inside], stress[at_edge])):
        print(f"largest stress {name:26} ours {ours_there.max():8.2f}   theirs {theirs_there.max():8.2f} MPa")
    print(f"middles of cells away: {inside.sum()} of {len(cells)}, mean stress ours "
          f"{ours[inside].mean():.2f}, theirs {theirs[inside].mean():.2f} MPa, "
          f"root mean square difference {np.sqrt(((ours - theirs)[inside] ** 2).mean()):.2f}")
    meshio.write(result, meshio.Mesh(np.c_[places, np.zeros(len(places))], [("triangle6", elements)],
                                     point_data={"stress": stress, "displacement": moved}))


main()
