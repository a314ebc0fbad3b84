#!/usr/bin/python3
"""Draws a smoothed outline over the plain one.

Usage: outline_over_cells.py CELLS.dxf OUTLINE.dxf PICTURE.svg
"""
import sys

import ezdxf
import ezdxf.path


def path(file):
    loops = [[(p.x, p.y) for p in ezdxf.path.make_path(entity).flattening(0.01)]
             for entity in ezdxf.readfile(file).modelspace()]
    corners = [p for loop in loops for p in loop]
    return " ".join("M " + " L ".join(f"{x} {-y}" for x, y in loop) + " Z" for loop in loops), corners


(plain, corners), (smooth, _) = path(sys.argv[1]), path(sys.argv[2])
left, right = min(x for x, _ in corners), max(x for x, _ in corners)
low, high = min(y for _, y in corners), max(y for _, y in corners)
margin = 0.02 * (right - left)
with open(sys.argv[3], "w") as picture:
    picture.write(f"""<svg xmlns="http://www.w3.org/2000/svg" fill-rule="evenodd"
 viewBox="{left - margin} {-high - margin} {right - left + 2 * margin} {high - low + 2 * margin}">
<rect x="{left - margin}" y="{-high - margin}" width="100%" height="100%" fill="white"/>
<path d="{plain}" fill="#d3d9e4"/>
<path d="{smooth}" fill="none" stroke="#b3261e" stroke-width="{margin / 6}"/>
</svg>
""")
