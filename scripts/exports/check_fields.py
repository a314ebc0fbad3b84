"""Compares every number of the fields of check_exports.sh, read by VTK, with the tables.

Usage: pvpython check_fields.py FOLDER NAME...   with NAME.vtu, NAME-cells.csv, NAME-nodes.csv in
FOLDER; if there is a folder NAME-frames, also its series, whose last step must be NAME.vtu.
"""
import csv
import os
import sys

from paraview.simple import OpenDataFile
from vtkmodules.vtkCommonDataModel import VTK_QUAD
from vtkmodules.vtkIOXML import vtkXMLUnstructuredGridReader


def table(path):
    with open(path, newline="") as file:
        return list(csv.DictReader(file))


def grid(path):
    reader = vtkXMLUnstructuredGridReader()
    reader.SetFileName(path)
    reader.Update()
    assert reader.GetErrorCode() == 0, path
    return reader.GetOutput()


def check(path, cells, nodes):
    """Compares a VTU file with the tables of the same model; returns the numbers compared."""
    plate = grid(path)
    points, quads, compared = plate.GetPointData(), plate.GetCellData(), 0
    nodes = {int(row["node"]): row for row in nodes}
    for k in range(plate.GetNumberOfPoints()):
        row = nodes[int(points.GetArray("node").GetTuple1(k))]
        u = points.GetArray("displacement").GetTuple3(k)
        for value, name in zip((*plate.GetPoint(k)[:2], *u[:2]), ("x", "y", "u", "v")):
            assert value == float(row[name]), (path, k, name, value, row)
            compared += 1
    present = [row for row in cells if int(row["state"]) > 0]
    assert plate.GetNumberOfCells() == len(present), path
    for k, row in enumerate(present):
        assert plate.GetCellType(k) == VTK_QUAD, path
        for name in ("row", "column", "state", "stress", "potential"):
            value = quads.GetArray(name).GetTuple1(k)
            assert value == float(row[name]), (path, k, name, value, row)
            compared += 1
    return compared


def check_series(folder, last):
    """Opens a series as ParaView does; checks that its steps are complete and the last is the file `last`."""
    series = OpenDataFile(f"{folder}/frames.pvd")
    times = list(series.TimestepValues)
    assert times == list(range(len(times))), times
    for time in times:
        series.UpdatePipeline(time)
        assert series.GetDataInformation().GetNumberOfCells() > 0, time
    with open(f"{folder}/frame-{len(times) - 1:05}.vtu") as frame, open(last) as file:
        assert frame.read() == file.read()
    return len(times)


folder = sys.argv[1]
for name in sys.argv[2:]:
    base = f"{folder}/{name}"
    compared = check(base + ".vtu", table(base + "-cells.csv"), table(base + "-nodes.csv"))
    print(f"{name:24}{compared:8} numbers of the fields as in the tables")
    if os.path.isdir(base + "-frames"):
        steps = check_series(base + "-frames", base + ".vtu")
        print(f"{name:24}{steps:8} steps in its series")
