#include "batch/outline_notes.h"

#include <fmt/format.h>

#include <algorithm>

namespace quillane {
namespace {

constexpr std::size_t kMostCircles = 12;  ///< told one by one

std::string Count(int count, const char* what) {
  return fmt::format("{} {}{}", count, what, count == 1 ? "" : "s");
}

void AddCircles(const std::vector<Circle>& circles, const char* what,
                std::vector<std::string>& notes) {
  const std::size_t told = std::min(circles.size(), kMostCircles);
  for (std::size_t k = 0; k < told; ++k) {
    const auto& [centre, radius] = circles[k];
    notes.push_back(fmt::format("{} of radius {:.4g} mm about ({:.4g}, {:.4g})", what, radius,
                                centre.x, centre.y));
  }
  if (told < circles.size()) {
    notes.push_back(fmt::format("and {} more; --json lists all", circles.size() - told));
  }
}

}  // namespace

void AddOutlineNotes(const OutlineFigures& figures, std::vector<std::string>& notes) {
  std::string text =
      fmt::format("outline: {}, {}; shortest segment {:.4g} mm", Count(figures.pieces, "piece"),
                  Count(figures.holes, "hole"), figures.shortestSegment);
  if (const auto& neck = figures.neck) {
    text += fmt::format(", narrowest neck {:.4g} mm at ({:.4g}, {:.4g})", neck->width,
                        neck->middle.x, neck->middle.y);
  }
  notes.push_back(text);
  if (figures.pieces > 1) {
    notes.push_back(fmt::format(
        "the outline has {} pieces, which come apart when it is cut; --drop-loose leaves "
        "out those that carry nothing",
        figures.pieces));
  }
  if (figures.contacts > 0) {
    notes.push_back(fmt::format("cells touch in a corner only in {}; nothing holds there",
                                Count(figures.contacts, "place")));
  }
  AddCircles(figures.circles, "circle", notes);
  AddCircles(figures.arcs, "arc", notes);
}

}  // namespace quillane
