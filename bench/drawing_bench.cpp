// Full redraws of the largest grid into an image of 1600 x 1000 logical pixels, and the largest
// step beside the map that follows it.
#include <benchmark/benchmark.h>

#include <QGuiApplication>

#include "display/canvas_drawing.h"
#include "display/canvas_layout.h"
#include "display/result_maps.h"
#include "display/view.h"
#include "fem/mesh.h"
#include "image/image_area.h"
#include "optimize/optimization_step.h"

namespace quillane {
namespace {

constexpr int kRows = 180;
constexpr int kColumns = 180;

/// 32761 nodes, a sixth of the cells without material, a supported left edge, a loaded right one.
Model LargestModel() {
  Model model;
  model.ElementSize = 10;
  model.DomainX1 = -900;
  model.DomainX2 = 900;
  model.DomainY1 = -900;
  model.DomainY2 = 900;
  model.DomainWidth = 3300;
  model.DomainDefined = kTrue;
  BuildMesh(model, kRows, kColumns);
  for (int i = 1; i <= kRows; ++i) {
    for (int j = 1; j <= kColumns; ++j) {
      const int kind = (i + 2 * j) % 6;
      model.CellState(i, j) = kind == 0 ? kCellEmpty : kind == 1 ? kCellCutOut : kCellDesign;
      model.CellStress(i, j) = i + j;
    }
    const int left = (i - 1) * (kColumns + 1) + 1;
    model.NodeFreedom(left, 1) = model.NodeFreedom(left, 2) = 1;
    model.NodeLoad(left + kColumns, 2) = -1;
  }
  model.MinStress = 2;
  model.MaxStress = kRows + kColumns;
  return model;
}

struct Pictures {
  ImageArea canvas;
  ImageArea legend;
};

void Prepare(Pictures& pictures, Model& model, double ratio) {
  const CanvasLayout layout = LayOutPicture(1600, 1000);
  pictures.canvas.Resize(layout.canvasWidth, layout.canvasHeight, ratio);
  pictures.legend.Resize(layout.colorBarWidth, layout.canvasHeight, ratio);
  FitView(model, layout.canvasWidth, layout.canvasHeight);
}

void BM_DrawCanvas(benchmark::State& state) {
  Model model = LargestModel();
  Pictures pictures;
  Prepare(pictures, model, static_cast<double>(state.range(0)));
  for (auto _ : state) {
    DrawCanvas(pictures.canvas, model);
    benchmark::DoNotOptimize(pictures.canvas.Image().constBits());
  }
}
BENCHMARK(BM_DrawCanvas)->Arg(1)->Arg(2)->Unit(benchmark::kMillisecond);

/// What a press that changes a cell costs: the edit, the active nodes, the redraw.
void BM_Edit(benchmark::State& state) {
  Model model = LargestModel();
  Pictures pictures;
  Prepare(pictures, model, static_cast<double>(state.range(0)));
  for (auto _ : state) {
    model.CellState(90, 90) = model.CellState(90, 90) == kCellDesign ? kCellEmpty : kCellDesign;
    MarkActiveNodes(model);
    DrawCanvas(pictures.canvas, model);
    benchmark::DoNotOptimize(pictures.canvas.Image().constBits());
  }
}
BENCHMARK(BM_Edit)->Arg(1)->Arg(2)->Unit(benchmark::kMillisecond);

void BM_DrawStressMap(benchmark::State& state) {
  Model model = LargestModel();
  Pictures pictures;
  Prepare(pictures, model, static_cast<double>(state.range(0)));
  for (auto _ : state) {
    DrawStressMap(pictures.canvas, pictures.legend, model);
    benchmark::DoNotOptimize(pictures.canvas.Image().constBits());
  }
}
BENCHMARK(BM_DrawStressMap)->Arg(1)->Arg(2)->Unit(benchmark::kMillisecond);

/// A cantilever of 126 x 127 cells, 32258 equations, analysed.
Model LargestPlate() {
  Model model;
  model.ElementSize = 10;
  model.DomainX2 = 1270;
  model.DomainY2 = 1260;
  model.DomainWidth = 3000;
  model.DomainDefined = kTrue;
  BuildMesh(model, 126, 127);
  for (Integer& state : model.CellState.Raw()) state = kCellDesign;
  for (int k = 1; k <= model.NodeCount; k += 128) {
    model.NodeFreedom(k, 1) = model.NodeFreedom(k, 2) = 1;
  }
  model.NodeLoad(128 * 64, 2) = -1000;
  MarkActiveNodes(model);
  StressAnalysis(model);
  return model;
}

void BM_LargestStep(benchmark::State& state) {
  Model model = LargestPlate();
  for (auto _ : state) Optimization(model);
}
BENCHMARK(BM_LargestStep)->Unit(benchmark::kMillisecond);

void BM_MapOfLargestStep(benchmark::State& state) {
  Model model = LargestPlate();
  Pictures pictures;
  Prepare(pictures, model, static_cast<double>(state.range(0)));
  for (auto _ : state) {
    DrawStressMap(pictures.canvas, pictures.legend, model);
    benchmark::DoNotOptimize(pictures.canvas.Image().constBits());
  }
}
BENCHMARK(BM_MapOfLargestStep)->Arg(1)->Arg(2)->Unit(benchmark::kMillisecond);

/// Every node loaded and supported in both directions.
void BM_DrawCrowdedCanvas(benchmark::State& state) {
  Model model = LargestModel();
  for (int k = 1; k <= model.NodeCount; ++k) {
    model.NodeFreedom(k, 1) = model.NodeFreedom(k, 2) = 1;
    model.NodeLoad(k, 1) = model.NodeLoad(k, 2) = 1;
  }
  Pictures pictures;
  Prepare(pictures, model, static_cast<double>(state.range(0)));
  for (auto _ : state) {
    DrawCanvas(pictures.canvas, model);
    benchmark::DoNotOptimize(pictures.canvas.Image().constBits());
  }
}
BENCHMARK(BM_DrawCrowdedCanvas)->Arg(1)->Arg(2)->Unit(benchmark::kMillisecond);

/// Nearly as many grid lines as can be drawn, 20 to a pixel.
void BM_DrawFinestGrid(benchmark::State& state) {
  Model model;
  model.DomainWidth = 3300;
  model.ElementSize = 0.06F;
  Pictures pictures;
  Prepare(pictures, model, static_cast<double>(state.range(0)));
  for (auto _ : state) {
    DrawCanvas(pictures.canvas, model);
    benchmark::DoNotOptimize(pictures.canvas.Image().constBits());
  }
}
BENCHMARK(BM_DrawFinestGrid)->Arg(1)->Arg(2)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace quillane

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  const QGuiApplication application(argc, argv);
  benchmark::Initialize(&argc, argv);
  benchmark::RunSpecifiedBenchmarks();
}
