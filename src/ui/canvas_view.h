// The canvas and the legend beside it: what is drawn on them, and how the canvas sees the model.
#pragma once

#include "display/canvas_layout.h"
#include "display/color_scale.h"
#include "edit/edit_state.h"
#include "ui/picture_widget.h"

namespace quillane {

/// Draws the present model. A drawing throws RunTimeError for a model that cannot be drawn, as a
/// damaged file leaves one.
class CanvasView {
 public:
  /// Makes both widgets in the parent, which owns them.
  CanvasView(QWidget* parent, Model& model, const EditState& edits);
  CanvasView(const CanvasView&) = delete;
  CanvasView& operator=(const CanvasView&) = delete;

  PictureWidget* Canvas() { return picCanvas; }

  /// Places the widgets and blanks their pictures.
  void Place(const CanvasLayout& layout);

  /// DomainHeight from the canvas, ViewRight and ViewTop from the origin's fractions, canvas scale;
  /// then ShowModel.
  void FitAndShowModel();

  /// Marks the active nodes and draws the model, a held corner with it, beside a bare legend.
  void ShowModel();

  /// Draws the map of the given DisplayMode with its legend, a held corner with it.
  void ShowMap(Integer displayMode);

  /// Wipes both: background, axes and grid, bare legend.
  void Clear();

  /// An empty canvas beside a bare legend; never throws RunTimeError.
  void ShowNothing();

  /// Marks the corner, where one is held, on what is drawn.
  void MarkCorner();
  /// The drawing bears a corner's mark.
  bool ShowsCorner() const { return showsCorner_; }

 private:
  /// Throws for a view that shows no part of the plane.
  void CheckView() const;

  Model& model_;
  const EditState& edits_;
  ColorTable colorTable_;
  bool showsCorner_ = false;
  PictureWidget* picColorBar;
  PictureWidget* picCanvas;
};

}  // namespace quillane
