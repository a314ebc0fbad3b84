#include "ui/canvas_view.h"

#include "display/canvas_drawing.h"
#include "display/palette.h"
#include "display/result_maps.h"
#include "display/view.h"
#include "fem/mesh.h"

namespace quillane {

CanvasView::CanvasView(QWidget* parent, Model& model, const EditState& edits)
    : model_(model),
      edits_(edits),
      colorTable_(MakeColorTable()),
      picColorBar(new PictureWidget(QStringLiteral("picColorBar"), parent)),
      picCanvas(new PictureWidget(QStringLiteral("picCanvas"), parent)) {}

void CanvasView::Place(const CanvasLayout& layout) {
  picCanvas->Place({0, 0, layout.canvasWidth, layout.canvasHeight});
  picColorBar->Place({layout.canvasWidth, 0, layout.colorBarWidth, layout.canvasHeight});
}

void CanvasView::FitAndShowModel() {
  FitView(model_, picCanvas->width(), picCanvas->height());
  picCanvas->Drawing().SetScale(CanvasScale(model_));
  ShowModel();
}

void CanvasView::CheckView() const {
  const UserScale scale = CanvasScale(model_);
  if (scale.right > scale.left && scale.top > scale.bottom) return;
  throw RunTimeError(ErrorKind::kFloatingPoint, "the width of the area shown is not above 0 mm");
}

void CanvasView::ShowModel() {
  MarkActiveNodes(model_);
  CheckView();
  DrawCanvas(picCanvas->Drawing(), model_);
  DrawColorBar(picColorBar->Drawing(), colorTable_, kStressTitle);
  MarkCorner();
}

void CanvasView::ShowMap(Integer displayMode) {
  CheckView();
  const auto draw = displayMode == kShowPotential ? DrawNeuronMap : DrawStressMap;
  draw(picCanvas->Drawing(), picColorBar->Drawing(), model_, colorTable_, {});
  MarkCorner();
}

void CanvasView::Clear() {
  CheckView();
  picCanvasClear(picCanvas->Drawing(), picColorBar->Drawing(), model_, colorTable_);
  showsCorner_ = false;
}

void CanvasView::ShowNothing() {
  picCanvas->Drawing().SetBackground(kBackground);
  picCanvas->Drawing().Clear();
  DrawColorBar(picColorBar->Drawing(), colorTable_, kStressTitle);
  showsCorner_ = false;
}

void CanvasView::MarkCorner() {
  showsCorner_ = HoldsCorner(model_, edits_);
  if (!showsCorner_) return;
  if (edits_.cornerMode == kModeDomain) {
    MarkDomainCorner(picCanvas->Drawing(), model_, static_cast<double>(edits_.cornerX),
                     static_cast<double>(edits_.cornerY));
  } else {
    HighlightCell(picCanvas->Drawing(), model_,
                  ElementOfCell(model_, edits_.cornerCell.row, edits_.cornerCell.column));
  }
}

}  // namespace quillane
