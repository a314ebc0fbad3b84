// Model, tables and picture of the end.
#include "batch/final_files.h"

#include "batch/failure.h"
#include "batch/outputs.h"
#include "batch/tables.h"

namespace quillane {

std::vector<std::string> WriteFinalFiles(const BatchOptions& options, const Model& model,
                                         const RunSummary& summary) {
  std::vector<std::string> faults;
  const auto write = [&faults](const std::filesystem::path& path, const auto& content) {
    if (path.empty()) return;
    try {
      Named(path.string(), [&] { WriteOutput(path, content()); });
    } catch (const Failure& failure) {
      faults.push_back(failure.message);
    }
  };
  write(options.save, [&] { return ModelFileText(model); });
  write(options.cells, [&] { return CellTable(model); });
  write(options.nodes, [&] { return NodeTable(model); });
  write(options.image, [&] { return PictureFile(options, model, summary); });
  return faults;
}

}  // namespace quillane
