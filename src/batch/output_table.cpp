#include "batch/output_table.h"

#include <fmt/format.h>

#include <algorithm>
#include <utility>

#include "batch/options.h"
#include "batch/outline_notes.h"
#include "batch/picture_file.h"
#include "batch/run_summary.h"
#include "batch/tables.h"
#include "export/vtu.h"
#include "model/model_file.h"

namespace quillane {
namespace {

std::string Picture(const BatchOptions& options, const Model& model, RunSummary& summary) {
  return PictureFile(options, model, summary.figures.steps, summary.startVolume);
}

std::string Outline(const BatchOptions& options, const Model& model, RunSummary& summary) {
  OutlineFile outline = MakeOutlineFile(options.outlineFormat, model, options.smooth);
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

/// The content that needs the model alone.
template <std::string (*Text)(const Model&)>
std::string Of(const BatchOptions&, const Model& model, RunSummary&) {
  return Text(model);
}

constexpr OutputRow kTable[] = {
    {.output = Output::kSave,
     .group = kFileGroup,
     .option = "--save",
     .type = "FILE",
     .help = "the model as it stands at the end",
     .content = Of<ModelFileText>},
    {.output = Output::kJson,
     .group = kFileGroup,
     .option = "--json",
     .type = "FILE",
     .help = "the summary with all values used"},
    {.output = Output::kCourse,
     .group = kFileGroup,
     .option = "--course",
     .type = "FILE.csv",
     .help = "a line a step: volume, stresses, solve",
     .perStep = true},
    {.output = Output::kHistory,
     .group = kFileGroup,
     .option = "--history",
     .type = "FILE",
     .help = "a line a step: max, mean and min stress",
     .mayBeStream = false,
     .perStep = true},
    {.output = Output::kCells,
     .group = kFileGroup,
     .option = "--cells",
     .type = "FILE.csv",
     .help = "state, stresses and potential of every cell",
     .content = Cells},
    {.output = Output::kNodes,
     .group = kFileGroup,
     .option = "--nodes",
     .type = "FILE.csv",
     .help = "place and displacement of every node",
     .content = Of<NodeTable>},
    {.output = Output::kImage,
     .group = kPictureGroup,
     .option = "--image",
     .type = "FILE.png",
     .help = "the final picture with its legend, as PNG",
     .content = Picture},
    {.output = Output::kFrames,
     .group = kPictureGroup,
     .option = "--frames",
     .type = "DIR",
     .help = "a picture of the analysis and of every step",
     .mayBeStream = false,
     .isFolder = true,
     .perStep = true},
    {.output = Output::kOutline,
     .group = kExportGroup,
     .option = "--outline",
     .type = "FILE",
     .help = "the edge of the material in mm; the ending chooses SVG, DXF or STL",
     .content = Outline},
    {.output = Output::kVtu,
     .group = kExportGroup,
     .option = "--vtu",
     .type = "FILE.vtu",
     .help = "the plate and its fields; with --frames also those of every step",
     .content = Of<VtuText>},
};

}  // namespace

std::span<const OutputRow> OutputTable() { return kTable; }

bool RecordsSteps(const OutputPaths& paths) {
  return std::ranges::any_of(
      kTable, [&paths](const OutputRow& row) { return row.perStep && paths.Wants(row.output); });
}

}  // namespace quillane
