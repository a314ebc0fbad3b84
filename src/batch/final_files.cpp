#include "batch/final_files.h"

#include <fmt/format.h>

#include "batch/failure.h"
#include "batch/outputs.h"
#include "batch/tables.h"
#include "export/outline_file.h"
#include "export/vtu.h"

namespace quillane {

std::vector<std::string> WriteFinalFiles(const BatchOptions& options, const Model& model,
                                         RunSummary& summary) {
  std::vector<std::string> faults;
  const auto write = [&faults](const std::filesystem::path& path, const auto& content) {
    if (!path.empty()) Tried(faults, path.string(), [&] { WriteOutput(path, content()); });
  };
  write(options.save, [&] { return ModelFileText(model); });
  write(options.cells, [&] { return CellTable(model); });
  write(options.nodes, [&] { return NodeTable(model); });
  write(options.image, [&] { return PictureFile(options, model, summary); });
  write(options.vtu, [&] { return VtuText(model); });
  write(options.outline, [&] {
    const OutlineFile outline =
        MakeOutlineFile(*OutlineFormatOf(options.outline), model, options.smooth);
    if (options.smooth) {
      summary.notes.push_back(
          fmt::format("smoothing changed the area by {:+.3f} %", 100 * outline.areaChange));
    }
    return outline.text;
  });
  return faults;
}

}  // namespace quillane
