#include "ui/canvas_view.h"

#include <utility>

#include "display/canvas_drawing.h"
#include "display/palette.h"
#include "display/result_maps.h"
#include "display/view.h"
#include "fem/mesh.h"
#include "model/run_time_error.h"

namespace quillane {
namespace {

/// Throws RunTimeError for a view of no area.
void CheckView(const Model& model) {
  const UserScale scale = CanvasScale(model);
  if (scale.right > scale.left && scale.top > scale.bottom) return;
  throw RunTimeError(ErrorKind::kFloatingPoint, "the width of the area shown is not above 0 mm");
}

}  // namespace

CanvasView::CanvasView(QWidget* parent, Model& model, const EditState& edits)
    : model_(model),
      edits_(edits),
      picColorBar(new PictureWidget("picColorBar", parent)),
      picCanvas(new PictureWidget("picCanvas", parent)) {}

void CanvasView::PlaceAndShowModel(const CanvasLayout& layout) {
  shown_ = [this] { DrawModel(); };
  Draw([&] {
    picCanvas->Place({0, 0, layout.canvasWidth, layout.canvasHeight});
    picColorBar->Place({layout.canvasWidth, 0, layout.colorBarWidth, layout.canvasHeight});
    FitAndDrawModel();
  });
}

void CanvasView::FitAndShowModel() {
  shown_ = [this] { DrawModel(); };
  Draw([this] { FitAndDrawModel(); });
}

void CanvasView::ShowModel() {
  Show([this] { DrawModel(); });
}

void CanvasView::ShowMap(Integer displayMode) {
  Show([this, draw = displayMode == kShowPotential ? DrawNeuronMap : DrawStressMap] {
    CheckView(model_);
    draw(picCanvas->Drawing(), picColorBar->Drawing(), model_, {});
  });
}

void CanvasView::Clear() {
  Show([this] {
    CheckView(model_);
    picCanvasClear(picCanvas->Drawing(), picColorBar->Drawing(), model_);
  });
}

void CanvasView::MarkCorner() {
  Draw([] {});
}

void CanvasView::UnmarkCorner() {
  if (isMarked_ && !HoldsCorner(model_, edits_)) Draw(shown_);
}

void CanvasView::FitAndDrawModel() {
  FitView(model_, picCanvas->width(), picCanvas->height());
  picCanvas->Drawing().SetScale(CanvasScale(model_));
  DrawModel();
}

void CanvasView::DrawModel() {
  MarkActiveNodes(model_);
  CheckView(model_);
  DrawCanvas(picCanvas->Drawing(), model_);
  DrawColorBar(picColorBar->Drawing(), kStressTitle);
}

void CanvasView::Show(std::function<void()> drawing) {
  shown_ = std::move(drawing);
  Draw(shown_);
}

void CanvasView::Draw(const std::function<void()>& drawing) {
  std::string failure;
  try {
    drawing();
    isMarked_ = HoldsCorner(model_, edits_);
    if (isMarked_) DrawMark();
  } catch (const RunTimeError& error) {
    failure = error.what();
    ShowNothing();
  }
  const bool isNews = !failure.empty() && failure != failure_;
  failure_ = std::move(failure);
  if (isNews) emit Undrawable(QString::fromStdString(failure_));
}

void CanvasView::DrawMark() {
  if (edits_.cornerMode == kModeDomain) {
    MarkDomainCorner(picCanvas->Drawing(), model_, static_cast<double>(edits_.cornerX),
                     static_cast<double>(edits_.cornerY));
  } else {
    HighlightCell(picCanvas->Drawing(), model_,
                  ElementOfCell(model_, edits_.cornerCell.row, edits_.cornerCell.column));
  }
}

void CanvasView::ShowNothing() {
  isMarked_ = false;
  picCanvas->Drawing().SetBackground(kBackground);
  picCanvas->Drawing().Clear();
  DrawColorBar(picColorBar->Drawing(), kStressTitle);
}

QRectF CanvasView::PlateArea() const {
  const UserScale scale = CanvasScale(model_);
  const double columns = picCanvas->width() / (scale.right - scale.left);
  const double rows = picCanvas->height() / (scale.top - scale.bottom);
  const QPointF upperLeft((double{model_.DomainX1} - scale.left) * columns,
                          (scale.top - double{model_.DomainY2}) * rows);
  const QPointF lowerRight((double{model_.DomainX2} - scale.left) * columns,
                           (scale.top - double{model_.DomainY1}) * rows);
  const double symbols = picCanvas->width() / 30.0;  // an arrow's length
  return QRectF(upperLeft, lowerRight).adjusted(-symbols, -symbols, symbols, symbols);
}

}  // namespace quillane
