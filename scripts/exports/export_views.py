"""Makes ParaView's pictures of the fields for docs/export.md.

Usage: pvpython export_views.py PLATE.vtu AGAIN.vtu FIELD.png OURS.png THEIRS.png
PLATE: the fields that quillane-batch wrote; AGAIN: the re-analysis of its smoothed shape.
"""
import sys

from paraview.simple import *

plate_file, again_file, field_png, ours_png, theirs_png = sys.argv[1:]


def picture(source, association, largest, png, title, edges):
    """Saves a view from above, coloured by stress from 0 to `largest`."""
    view = CreateView("RenderView")
    view.ViewSize = [1200, 640]
    view.UseColorPaletteForBackground = 0
    view.Background = [1, 1, 1]
    view.OrientationAxesVisibility = 0
    shown = Show(source, view)
    shown.Representation = "Surface With Edges" if edges else "Surface"
    ColorBy(shown, (association, "stress"))
    colours = GetColorTransferFunction("stress")
    colours.ApplyPreset("Turbo", True)
    colours.RescaleTransferFunction(0, largest)
    bar = GetScalarBar(colours, view)
    bar.Title, bar.ComponentTitle = "von Mises (MPa)", ""
    bar.TitleColor = bar.LabelColor = [0, 0, 0]
    bar.Orientation, bar.WindowLocation, bar.ScalarBarLength = "Horizontal", "Lower Center", 0.5
    shown.SetScalarBarVisibility(view, True)
    text = Text(Text=title)
    label = Show(text, view)
    label.Color, label.FontSize, label.WindowLocation = [0, 0, 0], 22, "Upper Center"
    view.InteractionMode = "2D"
    ResetCamera(view)
    view.CameraParallelScale *= 0.62
    Render(view)
    SaveScreenshot(png, view, ImageResolution=view.ViewSize)


plate = OpenDataFile(plate_file)
plate.UpdatePipeline()
bounds = plate.GetDataInformation().GetBounds()
moved = plate.GetPointDataInformation().GetArray("displacement")
most = max(abs(end) for d in range(2) for end in moved.GetComponentRange(d))
factor = 0.08 * (bounds[1] - bounds[0]) / most
factor = float(f"{factor:.1g}")
warped = WarpByVector(Input=plate, Vectors=["POINTS", "displacement"], ScaleFactor=factor)
largest = plate.GetCellDataInformation().GetArray("stress").GetRange()[1]
picture(warped, "CELLS", largest, field_png, f"displacements {factor:g}-fold", True)
picture(plate, "CELLS", 0.7 * largest, ours_png, "quillane-batch: cells", False)
again = OpenDataFile(again_file)
picture(again, "POINTS", 0.7 * largest, theirs_png, "gmsh and CalculiX: the smoothed shape", False)
