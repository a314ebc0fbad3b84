#include "batch/tables.h"

#include <fmt/format.h>

#include <iterator>

#include "fem/stress.h"

namespace quillane {

std::string CellTable(const Model& model, std::span<const LoadCaseResult> cases) {
  std::string text = "row,column,state,stress,potential,sigma_x,sigma_y,tau_xy,step";
  for (std::size_t k = 1; k <= cases.size(); ++k) text += fmt::format(",stress_{}", k);
  text += '\n';
  const auto stresses = ComponentStresses(model);
  for (int i = 1; i <= model.CellRowCount; ++i) {
    for (int j = 1; j <= model.CellColumnCount; ++j) {
      const auto [x, y, xy] = stresses[static_cast<std::size_t>(ElementOfCell(model, i, j))];
      fmt::format_to(std::back_inserter(text),
                     "{},{},{},{:.17g},{:.17g},{:.17g},{:.17g},{:.17g},{}", i, j,
                     model.CellState(i, j), model.CellStress(i, j), model.Potential(i, j), x, y, xy,
                     model.StepCount);
      for (const LoadCaseResult& result : cases) {
        fmt::format_to(std::back_inserter(text), ",{:.17g}", result.stress(i, j));
      }
      text += '\n';
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

}  // namespace quillane
