#include "batch/output_table.h"

#include <fmt/format.h>

#include <QBuffer>
#include <QImage>
#include <algorithm>
#include <utility>
#include <vector>

#include "batch/options.h"
#include "batch/run_summary.h"
#include "batch/tables.h"
#include "export/vtu.h"
#include "model/model_file.h"
#include "model/safe_file.h"

namespace quillane {
namespace {

std::string Picture(const BatchOptions& options, const Model& model, RunSummary& summary) {
  return PictureFile(options, model, summary.figures.steps, summary.startVolume);
}

constexpr std::size_t kMostCircles = 12;  ///< listed one by one

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

/// Appends notes on an outline that matter to a workshop.
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

std::string Outline(const BatchOptions& options, const Model& model, RunSummary& summary) {
  OutlineFile outline = MakeOutlineFile(*options.outlineFormat, model, options.smooth);
  if (options.smooth) {
    summary.notes.push_back(
        fmt::format("smoothing changed the area by {:+.3f} %", 100 * outline.figures.areaChange));
  }
  AddOutlineNotes(outline.figures, summary.notes);
  summary.outline = std::move(outline.figures);
  return std::move(outline.text);
}

std::string Cells(const BatchOptions&, const Model& model, RunSummary& summary) {
  return CellTable(model, summary.cases);
}

/// Returns the content of an output that needs only the model.
template <std::string (*Text)(const Model&)>
std::string Of(const BatchOptions&, const Model& model, RunSummary&) {
  return Text(model);
}

using enum Writing;

constexpr OutputRow kTable[] = {
    {Output::kSave, kAtEnd, kFileGroup, "--save", "FILE", "the model at the end",
     Of<ModelFileText>},
    {Output::kJson, kAtEnd, kFileGroup, "--json", "FILE", "the summary with all values used"},
    {Output::kCourse, kSteps, kFileGroup, "--course", "FILE.csv",
     "a line per step: volume, stresses, solve"},
    {Output::kHistory, kStepFile, kFileGroup, "--history", "FILE",
     "a line per step: max, mean and min stress"},
    {Output::kCells, kAtEnd, kFileGroup, "--cells", "FILE.csv",
     "state, stresses and potential of every cell", Cells},
    {Output::kNodes, kAtEnd, kFileGroup, "--nodes", "FILE.csv",
     "place and displacement of every node", Of<NodeTable>},
    {Output::kImage, kAtEnd, kPictureGroup, "--image", "FILE.png",
     "the final picture with its legend, as PNG", Picture},
    {Output::kFrames, kStepFolder, kPictureGroup, "--frames", "DIR",
     "a picture of the analysis and of every step"},
    {Output::kOutline, kAtEnd, kExportGroup, "--outline", "FILE",
     "the edge of the material in mm; the ending chooses SVG, DXF or STL", Outline},
    {Output::kVtu, kAtEnd, kExportGroup, "--vtu", "FILE.vtu",
     "the plate and its fields; with --frames also those of every step", Of<VtuText>},
};

}  // namespace

std::span<const OutputRow> OutputTable() { return kTable; }

bool RecordsSteps(const OutputPaths& paths) {
  return std::ranges::any_of(kTable, [&paths](const OutputRow& row) {
    return row.writing != kAtEnd && paths.Wants(row.output);
  });
}

std::string PictureFile(const BatchOptions& options, const Model& model, int step,
                        double startVolume) {
  PictureOptions picture = options.picture;
  if (options.label) {
    picture.label = fmt::format("step {}   volume {:.1f} %", step,
                                startVolume > 0 ? 100 * model.Volume / startVolume : 0);
  }
  const QImage image = RenderPicture(model, picture);
  QBuffer png;
  if (image.isNull() || !image.save(&png, "PNG")) {
    throw FileWriteError("the picture cannot be encoded");
  }
  return png.data().toStdString();
}

}  // namespace quillane
