#!/usr/bin/python3
"""Checks the outlines of check_exports.sh with other programs.

Usage: check_outlines.py FOLDER NAME...   with NAME.json, NAME-plain.dxf, NAME-smooth.svg, NAME-round.json
and so on in FOLDER. The areas of all files of a shape must agree, and those of the plain one with the
volume.
"""
import json
import math
import re
import subprocess
import sys

import ezdxf
import meshio
import numpy as np


def run(*command):
    return subprocess.run(command, check=True, capture_output=True, text=True).stdout


def dxf_area(path):
    """Returns the area of a drawing (mm^2) in which ezdxf finds no fault."""
    drawing = ezdxf.readfile(path)
    audit = drawing.audit()
    assert not audit.errors and not audit.fixes, f"{path}: {audit.errors + audit.fixes}"
    assert drawing.units == ezdxf.units.MM, f"{path}: the unit is {drawing.units}"
    area = 0
    for entity in drawing.modelspace():
        assert entity.dxf.layer == "OUTLINE", path
        if entity.dxftype() == "CIRCLE":
            area -= math.pi * entity.dxf.radius ** 2
            continue
        assert entity.dxftype() == "LWPOLYLINE" and entity.closed, path
        points = entity.get_points("xyb")
        for (x, y, bulge), (next_x, next_y, _) in zip(points, points[1:] + points[:1]):
            area += (x * next_y - next_x * y) / 2
            if bulge:
                angle = 4 * math.atan(bulge)
                radius = math.hypot(next_x - x, next_y - y) / 2 / math.sin(angle / 2)
                area += radius ** 2 / 2 * (angle - math.sin(angle))
    return area


def svg_area(path):
    """Returns the area filled in a picture of the drawing, mm^2."""
    width, height = (float(re.search(rf'{name}="([\d.]+)mm"', open(path).read())[1])
                     for name in ("width", "height"))
    picture = path + ".png"
    run("rsvg-convert", "--background-color=white", "--width=3000", "--keep-aspect-ratio", path,
        "--output", picture)
    return (1 - float(run("convert", picture, "-format", "%[fx:mean]", "info:"))) * width * height


def stl_volume(path):
    """Returns the volume of a solid (mm^3) in which admesh finds nothing to repair."""
    report = run("admesh", path)
    for what in ("Total disconnected facets", "Degenerate facets", "Edges fixed", "Facets removed",
                 "Facets added", "Facets reversed", "Backwards edges", "Normals fixed"):
        assert re.search(rf"{what}\s*:\s*0\b", report), f"{path}: {report}"
    mesh = meshio.read(path)  # admesh sums the volume in single precision
    a, b, c = np.moveaxis(mesh.points[mesh.cells_dict["triangle"]].astype(float), 1, 0)
    return np.sum(a * np.cross(b, c)) / 6


def differs(a, b, tolerance):
    return abs(a / b - 1) > tolerance


folder, names = sys.argv[1], sys.argv[2:]
print(f"{'':24}{'by the volume':>14}{'DXF':>14}{'SVG':>14}{'STL':>14}   mm^2")
for name in names:
    summary = json.load(open(f"{folder}/{name}.json"))
    expected = summary["volume"] / summary["thickness"]
    for kind in ("plain", "smooth", "round"):
        shape = f"{folder}/{name}-{kind}"
        dxf, svg = dxf_area(shape + ".dxf"), svg_area(shape + ".svg")
        stl = stl_volume(shape + ".stl") / summary["thickness"]
        print(f"{name + ' ' + kind:24}{expected:14.3f}{dxf:14.3f}{svg:14.3f}{stl:14.3f}")
        assert not differs(dxf, expected, 1e-9 if kind == "plain" else 0.01)
        # Facets cut a little off arcs.
        assert not differs(stl, dxf, 1e-3 if kind == "round" else 1e-6)
        assert not differs(svg, dxf, 1e-3)
    outline = json.load(open(f"{folder}/{name}-round.json"))["outline"]
    circles = [entity for entity in ezdxf.readfile(f"{folder}/{name}-round.dxf").modelspace()
               if entity.dxftype() == "CIRCLE"]
    assert len(circles) == len(outline["circles"]), name
    print(f"{name}: {outline['pieces']} pieces, {len(circles)} circles, {len(outline['arcs'])} arcs, "
          f"shortest segment {outline['shortestSegment']:.3f} mm, "
          f"narrowest neck {outline['narrowestNeck']['width']:.3f} mm")
