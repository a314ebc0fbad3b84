#!/usr/bin/python3
"""Makes the tables and figures of docs/validation.md from runs of quillane-batch.

Takes the program from QUILLANE_BATCH or from the release build. The figures need gnuplot.
"""

import math
import subprocess
import tempfile

from lib.examples import IMAGES, PROGRAM, ROOT, make
from lib.markdown_table import insert, table
from lib.plate import EMPTY, Plate, Runner, edge_load, read_plate, von_mises

STEPS = 150


def error(ours, reference):
    return abs(ours - reference) / abs(reference)


def percent(value):
    return f"{100 * value:.2g} %"


def sketch(runner, name):
    """Returns the hand-drawn first layout of an example."""
    return read_plate(make(runner.folder, "sketch", 1, name) / f"{name}.model")


def uniaxial(runner):
    """Pulls a plate at its right edge: u = s x / E, v = -nu s y / E, every stress s."""
    rows = []
    for poisson, thickness, s in ((0.3, 1.0, 50.0), (0.0, 2.5, 50.0), (0.45, 0.4, -120.0)):
        plate = Plate(10, 20, 5.0, poisson=poisson, thickness=thickness)
        for i in range(1, plate.rows + 2):
            plate.hold(i, 1, x=True, y=i == 1)
            share = 0.5 if i in (1, plate.rows + 1) else 1.0
            plate.push(i, plate.columns + 1, share * s * plate.size * thickness, 0)
        result = runner.run(plate)
        u, v = result.disp[plate.rows + 1, plate.columns + 1]
        length, height = plate.columns * plate.size, plate.rows * plate.size
        u_exact, v_exact = s * length / plate.modulus, -poisson * s * height / plate.modulus
        worst = max(error(stress, abs(s)) for stress in result.stress.values())
        rows.append((poisson, thickness, s, f"{u_exact:.8g}", f"{u:.8g}", f"{error(u, u_exact):.1e}",
                     f"{error(v, v_exact):.1e}" if v_exact else f"{abs(v):.1e} mm", f"{worst:.1e}"))
    return table(("ν", "t (mm)", "s (MPa)", "u = sL/E (mm)", "ours", "error", "error of v",
                  "largest error of a stress"), rows)


def patch(runner):
    """Loads a ragged plate with holes by the boundary forces of a constant stress."""
    rows = []
    for sx, sy, txy in ((80.0, 0.0, 0.0), (0.0, 80.0, 0.0), (0.0, 0.0, 80.0), (60.0, -25.0, 40.0)):
        plate = Plate(9, 12, 4.0)
        holes = [(9, j) for j in range(7, 13)] + [(i, 1) for i in range(4, 8)]
        holes += [(4, 5), (5, 5), (5, 6), (3, 9), (7, 11)]
        plate.states = {cell: EMPTY for cell in holes}
        half = plate.size * plate.thickness / 2
        for i, j in plate.cells():
            if not plate.has_material(i, j):
                continue
            for di, dj in ((0, 0), (0, 1), (1, 1), (1, 0)):
                nx, ny = 2 * dj - 1, 2 * di - 1
                plate.push(i + di, j + dj, half * (nx * sx + ny * txy), half * (nx * txy + ny * sy))
        plate.hold(1, 1, x=True, y=True)
        plate.hold(1, plate.columns + 1, y=True)
        result = runner.run(plate)
        ex = (sx - plate.poisson * sy) / plate.modulus
        ey = (sy - plate.poisson * sx) / plate.modulus
        shear = 2 * (1 + plate.poisson) * txy / plate.modulus
        scale = max(math.hypot(*d) for d in result.disp.values())
        worst = 0.0
        for i, j in {(i + di, j + dj) for i, j in plate.cells() if plate.has_material(i, j)
                     for di in (0, 1) for dj in (0, 1)}:
            x, y = (j - 1) * plate.size, (i - 1) * plate.size
            u, v = result.disp[i, j]
            worst = max(worst, math.hypot(u - ex * x - shear * y, v - ey * y) / scale)
        exact = von_mises(sx, sy, txy)
        stresses = [result.stress[cell] for cell in plate.cells() if plate.has_material(*cell)]
        rows.append((f"{sx:g}, {sy:g}, {txy:g}", f"{exact:.6f}", f"{min(stresses):.6f}",
                     f"{max(stresses):.6f}", f"{max(error(s, exact) for s in stresses):.1e}",
                     f"{worst:.1e}"))
    return table(("σx, σy, τxy (MPa)", "von Mises stress", "ours, smallest", "ours, largest", "error",
                  "displacements, error"), rows)


def bending(runner):
    """Bends a bar of n square cells across its depth by a pure moment: v = M L^2 / (2 E I)."""
    rows, points = [], []
    for n in (1, 2, 3, 4, 6, 8, 12, 16):
        depth, length, s = 48.0, 480.0, 100.0
        plate = Plate(n, 10 * n, depth / n)
        for i in range(1, n + 2):
            plate.hold(i, 1, x=True, y=i == 1)
        for i in range(1, n + 1):
            low, high = edge_load(lambda y: s * (1 - 2 * y / depth), (i - 1) * plate.size,
                                  i * plate.size)
            plate.push(i, plate.columns + 1, low, 0)
            plate.push(i + 1, plate.columns + 1, high, 0)
        v = runner.run(plate).disp[1, plate.columns + 1][1]
        exact = s / (depth / 2) * length**2 / 2 / plate.modulus
        nu = plate.poisson
        stiff = 1 / (1 - nu * nu) + 1 / (2 * (1 + nu)) - 1
        points.append((n, 1 - v / exact))
        rows.append((n, f"{v:.6f}", f"{v / exact:.6f}", f"{1 / (1 + stiff / n**2):.6f}",
                     percent(1 - v / exact)))
    return points, table(("cells across", "v (mm)", "v over exact", "predicted for this element",
                          "too small by"), rows)


def cantilever(runner):
    """Compares a cantilever under a parabolic end shear with the plane-stress solution."""
    rows, points = [], []
    p, depth, length = 1000.0, 64.0, 256.0
    inertia = depth**3 / 12
    for n in (2, 4, 8, 16, 32):
        plate = Plate(n, 4 * n, depth / n)
        plate.hold(1, 1, x=True)
        plate.hold(n + 1, 1, x=True)
        plate.hold(n // 2 + 1, 1, y=True)
        for i in range(1, n + 1):
            ends = [(k - 1) * plate.size - depth / 2 for k in (i, i + 1)]
            shear = edge_load(lambda y: p / (2 * inertia) * (depth**2 / 4 - y * y), *ends)
            normal = edge_load(lambda y: p * length * y / inertia, *ends)
            for k in (0, 1):
                plate.push(i + k, plate.columns + 1, 0, shear[k])
                plate.push(i + k, 1, normal[k], -shear[k])
        result = runner.run(plate)
        v = result.disp[n // 2 + 1, plate.columns + 1][1]
        nu = plate.poisson
        exact = p / (6 * plate.modulus * inertia) * ((4 + 5 * nu) * depth**2 * length / 4
                                                     + 2 * length**3)
        column = plate.columns // 2
        x, y = (column - 0.5) * plate.size, (n - 0.5) * plate.size - depth / 2
        stress = von_mises(-p * (length - x) * y / inertia, 0,
                           p / (2 * inertia) * (depth**2 / 4 - y * y))
        points.append((n, 1 - v / exact))
        rows.append((n, n * plate.columns, f"{v:.6f}", f"{exact:.6f}", percent(1 - v / exact),
                     f"{result.stress[n, column]:.3f}", f"{stress:.3f}",
                     percent(error(result.stress[n, column], stress))))
    return points, table(("cells across", "cells", "v (mm)", "exact", "too small by",
                          "stress (MPa)", "exact", "error"), rows)


def truss(runner):
    """Compares the two-bar example with statics: bars at 45 degrees, volume 2 P L / s."""
    plate = sketch(runner, "two-bar-truss")
    (row, column), (_, fy) = next(item for item in plate.loads.items() if item[1] != (0.0, 0.0))
    span = (column - 2) * plate.size  # from the wall's column to the load
    rows = []
    for steps in (0, 50, 100, STEPS):
        result = runner.run(plate, steps)
        bars = [(i, j) for i, j in result.layout() if j > 1]
        volume = len(bars) * plate.size**2 * plate.thickness
        stress = sum(result.stress[cell] for cell in bars) / len(bars)
        reference = 2 * abs(fy) * span / stress
        xs = range(4, column - 6)
        heights = [[i for i, j in bars if j == x and i >= row] for x in xs]
        ys = [sum(h) / len(h) for h in heights]
        mx, my = sum(xs) / len(xs), sum(ys) / len(ys)
        slope = (sum((x - mx) * (y - my) for x, y in zip(xs, ys))
                 / sum((x - mx)**2 for x in xs))
        rows.append((steps, f"{math.degrees(math.atan(-slope)):.1f}°", f"{stress:.2f}",
                     f"{reference:.0f}", f"{volume:.0f}", percent(volume / reference - 1)))
    return table(("steps", "angle of the bars", "mean stress s (MPa)", "2PL/s (mm³)",
                  "volume of the bars", "above"), rows)


def mirror(runner):
    """Optimizes each example and its mirror image."""
    rows = []
    for name in ("l-bracket", "half-mbb-beam", "bolted-lever"):
        plate = sketch(runner, name)
        one, two = runner.run(plate, STEPS), runner.run(plate.mirrored(), STEPS)
        image = {(i, plate.columns + 1 - j) for i, j in two.layout()}
        stress = max(abs(one.stress[i, j] - two.stress[i, plate.columns + 1 - j])
                     for i, j in plate.cells())
        rows.append((name, len(one.layout()), len(one.layout() ^ image),
                     f"{stress / max(one.stress.values()):.1e}"))
    return table(("example", f"cells after {STEPS} steps", "cells that differ",
                  "largest difference of a stress over the maximum"), rows)


def scaling(runner):
    """Compares a plate with the same one whose loads and target, or whose modulus, are k times as large."""
    plate = sketch(runner, "cantilever")
    base = runner.run(plate, STEPS)
    tip = (11, plate.columns + 1)
    rows = []
    for what, k, load, modulus in (("loads and target", 8, 8, 1), ("loads and target", 0.3, 0.3, 1),
                                   ("loads and target", 1000, 1000, 1), ("modulus", 4, 1, 4),
                                   ("modulus", 1 / 3, 1, 1 / 3)):
        other = Plate(**vars(plate))
        other.loads = {at: (fx * load, fy * load) for at, (fx, fy) in plate.loads.items()}
        other.target, other.modulus = plate.target * load, plate.modulus * modulus
        result = runner.run(other, STEPS)
        course = max(error(b[1], load * a[1]) for a, b in zip(base.history, result.history))
        disp = error(result.disp[tip][1], base.disp[tip][1] * load / modulus)
        rows.append((what, f"{k:g}", len(base.layout() ^ result.layout()), f"{course:.1e}",
                     f"{disp:.1e}"))
    return table(("times k", "k", f"cells that differ after {STEPS} steps",
                  "largest error of the maximum stress in the course", "error of the tip"), rows)


def figure(name, xlabel, series, extra=""):
    """Draws errors against cells across the depth, both on logarithmic axes."""
    data = "\n".join(f"${key} << EOD\n" + "\n".join(f"{x} {y}" for x, y in points) + "\nEOD"
                     for key, (_, points) in series.items())
    plots = [f'${key} with linespoints lw 2 pt 7 title "{title}"'
             for key, (title, _) in series.items()]
    script = f"""
set terminal pngcairo size 900,500 font "DejaVu Sans,11"
set output "{IMAGES / name}"
set logscale xy 2
set format y "%.3g %%"
set xlabel "{xlabel}"
set ylabel "displacement too small by"
set grid
{data}
plot {', '.join(plots + ([extra] if extra else []))}
"""
    subprocess.run(["gnuplot"], input=script, text=True, check=True)


def main():
    with tempfile.TemporaryDirectory() as folder:
        runner = Runner(PROGRAM, folder)
        bending_points, bending_table = bending(runner)
        cantilever_points, cantilever_table = cantilever(runner)
        tables = {"uniaxial": uniaxial(runner), "patch": patch(runner), "bending": bending_table,
                  "cantilever": cantilever_table, "truss": truss(runner), "mirror": mirror(runner),
                  "scaling": scaling(runner)}
    figure("validation-refinement.png", "cells across the depth",
           {"bending": ("pure bending", [(n, 100 * e) for n, e in bending_points]),
            "shear": ("cantilever", [(n, 100 * e) for n, e in cantilever_points])},
           '48 / x**2 dashtype 2 lc black title "second order"')
    insert(ROOT / "docs/validation.md", tables)


if __name__ == "__main__":
    main()
