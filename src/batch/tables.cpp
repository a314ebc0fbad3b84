#include "batch/tables.h"

#include <fmt/format.h>

#include <QBuffer>
#include <QImage>
#include <iterator>

#include "fem/load_paths.h"
#include "fem/stress.h"
#include "model/number_text.h"
#include "model/safe_file.h"

namespace quillane {

std::string CellTable(const Model& model) {
  std::string text = "row,column,state,stress,potential,sigma_x,sigma_y,tau_xy\n";
  const auto stresses = ComponentStresses(model);
  for (int i = 1; i <= model.CellRowCount; ++i) {
    for (int j = 1; j <= model.CellColumnCount; ++j) {
      const auto [x, y, xy] = stresses[static_cast<std::size_t>(ElementOfCell(model, i, j))];
      fmt::format_to(std::back_inserter(text), "{},{},{},{:.17g},{:.17g},{:.17g},{:.17g},{:.17g}\n",
                     i, j, model.CellState(i, j), model.CellStress(i, j), model.Potential(i, j), x,
                     y, xy);
    }
  }
  return text;
}

std::string NodeTable(const Model& model) {
  std::string text = "node,x,y,u,v\n";
  for (int k = 1; k <= model.NodeCount; ++k) {
    fmt::format_to(std::back_inserter(text), "{},{:.17g},{:.17g},{:.17g},{:.17g}\n", k,
                   model.NodeXY(k, 1), model.NodeXY(k, 2), model.NodeDisp(k, 1),
                   model.NodeDisp(k, 2));
  }
  return text;
}

std::string CourseHeader() {
  return "step,target,volume,cells_changed,max_stress,mean_stress,min_stress,iterations,"
         "true_residual,converged,connected\n";
}

std::string CourseLine(const Model& model, const SolveReport& report, int step, int cellsChanged) {
  return fmt::format("{},{},{:.17g},{},{:.17g},{:.17g},{:.17g},{},{:.3g},{:d},{:d}\n", step,
                     GeneralText(model.StressTarget), model.Volume, cellsChanged, model.MaxStress,
                     model.AvgStress, model.MinStress, report.iterations, report.trueResidual,
                     report.converged, LostLoads(model).empty());
}

std::string PictureFile(const BatchOptions& options, const Model& model,
                        const RunSummary& summary) {
  PictureOptions picture = options.picture;
  if (options.label) {
    picture.label = fmt::format("step {}   volume {:.1f} %", summary.steps,
                                100 * VolumeFraction(model, summary));
  }
  const QImage image = RenderPicture(model, picture);
  QBuffer png;
  if (image.isNull() || !image.save(&png, "PNG")) {
    throw FileWriteError("the picture cannot be made");
  }
  return png.data().toStdString();
}

}  // namespace quillane
