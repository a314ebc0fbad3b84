#include "shape_report.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <limits>

namespace quillane {
namespace {

std::string RatioText(const ShapePair& pair) {
  const std::optional<double> ratio = pair.Ratio();
  return ratio ? fmt::format("{:.3f}", *ratio) : pair.density.sound ? "-" : "- (density broken)";
}

std::string Outcome(const ShapePair& pair) {
  if (!pair.ours.ended) return "no end";
  if (pair.Reached()) return "reached";
  return pair.ours.claimed ? "claimed in vain" : "not reached";
}

/// The value that so large a share of the sorted values does not exceed.
std::string Quantile(const std::vector<double>& sorted, double share) {
  if (sorted.empty()) return "-";
  const double rank = std::ceil(share * static_cast<double>(sorted.size()));
  return fmt::format("{:.3f}", sorted[static_cast<std::size_t>(std::max(rank, 1.0)) - 1]);
}

std::string SummaryLine(const std::string& title, const std::vector<const ShapePair*>& pairs) {
  int reached = 0, sound = 0, both = 0, asymmetric = 0;
  double ours = 0, density = 0;
  std::vector<double> ratios;
  for (const ShapePair* pair : pairs) {
    reached += pair->Reached() ? 1 : 0;
    sound += pair->density.sound ? 1 : 0;
    asymmetric += pair->asymmetricCells > 0 ? 1 : 0;
    ours += pair->ours.shape.seconds;
    density += pair->density.seconds;
    if (!pair->Reached() || !pair->Ratio()) continue;
    ++both;
    ratios.push_back(*pair->Ratio());
  }
  std::ranges::sort(ratios);
  return fmt::format(
      "| {} | {} | {} | {} of {} | {} | {} | {} | {} | {} | {:.2f} | {:.2f} | {:.2f} |\n", title,
      pairs.size(), reached, both, sound, Quantile(ratios, 0.5), Quantile(ratios, 0.9),
      Quantile(ratios, 0.95), Quantile(ratios, 1), asymmetric, ours, density, ours / density);
}

/// Ascending: first the plates that are not reached, then those with the largest ratios, at last
/// those without.
double Badness(const ShapePair& pair) {
  if (!pair.density.sound) return 0;
  return pair.Reached() ? -*pair.Ratio() : -std::numeric_limits<double>::infinity();
}

}  // namespace

std::string LineTitles() {
  return "| plate | cells | wish | outcome | share | compliance | density's | ratio | steps | s "
         "| density's s | asymmetric cells |\n|---|---|---|---|---|---|---|---|---|---|---|---|\n";
}

std::string LineOf(const ShapePair& pair) {
  const Model& model = pair.plate->model;
  const FoundShape& ours = pair.ours.shape;
  return fmt::format(
      "| {} | {} x {} | {:.2f} | {} | {:.3f} | {:.5g} | {:.5g} | {} | {} | {:.3f} | {:.3f} | {} "
      "|\n",
      pair.plate->name, model.CellColumnCount, model.CellRowCount, pair.plate->wish, Outcome(pair),
      ours.share, ours.compliance, pair.density.compliance, RatioText(pair), pair.ours.steps,
      ours.seconds, pair.density.seconds, pair.asymmetricCells);
}

std::string SummaryTable(const std::vector<ShapePair>& pairs) {
  std::vector<std::string> kinds;
  for (const ShapePair& pair : pairs) {
    if (std::ranges::find(kinds, pair.plate->kind) == kinds.end()) {
      kinds.push_back(pair.plate->kind);
    }
  }
  const auto line = [&pairs](const std::string& title, const auto& counts) {
    std::vector<const ShapePair*> some;
    for (const ShapePair& pair : pairs) {
      if (counts(pair.plate->kind)) some.push_back(&pair);
    }
    return some.empty() ? "" : SummaryLine(title, some);
  };
  std::string text =
      "| plates | number | reached | reached where the density method's shape holds | median | 90 "
      "% "
      "| 95 % | worst | asymmetric | s | density's s | ratio of times |\n"
      "|---|---|---|---|---|---|---|---|---|---|---|---|\n";
  for (const std::string& kind : kinds) {
    text += line(kind, [&kind](const std::string& other) { return other == kind; });
  }
  text += line("all random", [](const std::string& kind) { return kind != "example"; });
  return text;
}

std::string WorstPlates(const std::vector<ShapePair>& pairs, std::size_t count) {
  std::vector<const ShapePair*> order;
  for (const ShapePair& pair : pairs) order.push_back(&pair);
  std::ranges::stable_sort(order, {}, [](const ShapePair* pair) { return Badness(*pair); });
  order.resize(std::min(count, order.size()));
  std::string text = LineTitles();
  for (const ShapePair* pair : order) text += LineOf(*pair);
  return text;
}

}  // namespace quillane
