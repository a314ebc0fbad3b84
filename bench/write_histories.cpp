// Writes the histories of the example sketches into a folder, for comparing processors. With a
// second argument one folder in it for each instruction set that the processor has.
#include <hwy/targets.h>

#include <filesystem>
#include <string>

#include "examples/recipes.h"
#include "fem/mesh.h"
#include "optimize/course.h"
#include "optimize/history.h"

namespace {

using namespace quillane;

void WriteHistories(const std::filesystem::path& folder) {
  for (const std::string_view name : ExampleNames()) {
    Model model = MakeExample(name, ExampleStart::kSketch);
    MarkActiveNodes(model);
    StressAnalysis(model);
    History history;
    Course course(model, {&history});
    history.Start(model, folder / (std::string(name) + ".history"));
    for (int step = 1; step <= 150; ++step) course.Step();
    history.Close(model);
  }
}

}  // namespace

int main(int count, char** arguments) {
  if (count < 2 || count > 3) return 2;
  const std::filesystem::path folder = arguments[1];
  if (count == 2) {
    WriteHistories(folder);
    return 0;
  }
#if !defined(HWY_COMPILE_ONLY_STATIC)  // else there is but one
  for (const std::int64_t target : hwy::SupportedAndGeneratedTargets()) {
    hwy::SetSupportedTargetsForTest(target);
    const std::filesystem::path own = folder / hwy::TargetName(target);
    std::filesystem::create_directory(own);
    WriteHistories(own);
  }
#endif
}
