// The canvas, the legend beside it, and what they show.
#pragma once

#include <functional>
#include <string>

#include "display/canvas_layout.h"
#include "edit/edit_state.h"
#include "ui/picture_widget.h"

namespace quillane {

/// Draws the model and the mark of a held corner. If the model cannot be drawn, as after opening a
/// damaged file, the canvas stays empty.
class CanvasView : public QObject {
  Q_OBJECT

 public:
  /// Creates both widgets in the parent, which owns them.
  CanvasView(QWidget* parent, Model& model, const EditState& edits);

  PictureWidget* Canvas() { return picCanvas; }
  const PictureWidget* Legend() const { return picColorBar; }
  /// Returns the area of the design domain and its symbols on the canvas in logical pixels.
  QRectF PlateArea() const;

  /// Places the widgets, which blanks their pictures; then FitAndShowModel.
  void PlaceAndShowModel(const CanvasLayout& layout);
  /// Sets DomainHeight from the canvas, ViewRight and ViewTop from the origin's fractions and the
  /// canvas scale; then ShowModel.
  void FitAndShowModel();
  /// Marks the active nodes and draws the model beside a bare legend.
  void ShowModel();
  /// Draws the map of the given DisplayMode with its legend.
  void ShowMap(Integer displayMode);
  /// Wipes both: background, axes and grid, bare legend.
  void Clear();

  /// Draws the mark of a held corner over what is shown.
  void MarkCorner();
  /// Removes the mark of a corner that is no longer held by redrawing what was shown.
  void UnmarkCorner();

  /// Allows the same reason to be reported again, for another model.
  void ForgetFailure() { failure_.clear(); }

 signals:
  /// The model cannot be drawn. Emitted once per reason.
  void Undrawable(const QString& reason);

 private:
  /// Draws, and keeps the drawing for UnmarkCorner.
  void Show(std::function<void()> drawing);
  /// Runs a drawing and marks the corner; on RunTimeError the canvas stays empty.
  void Draw(const std::function<void()>& drawing);
  void FitAndDrawModel();
  void DrawModel();
  void DrawMark();
  void ShowNothing();

  Model& model_;
  const EditState& edits_;
  std::function<void()> shown_;
  std::string failure_;  ///< why the last drawing failed
  bool isMarked_ = false;
  PictureWidget* picColorBar;
  PictureWidget* picCanvas;
};

}  // namespace quillane
