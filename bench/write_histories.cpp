// Writes the histories of the example sketches into a folder, for comparing processors.
#include <filesystem>
#include <string>

#include "examples/recipes.h"
#include "fem/mesh.h"
#include "optimize/optimization_step.h"

int main(int count, char** arguments) {
  using namespace quillane;
  if (count != 2) return 2;
  for (const std::string_view name : ExampleNames()) {
    Model model = MakeExample(name, ExampleStart::kSketch);
    MarkActiveNodes(model);
    StressAnalysis(model);
    History history;
    Course course(model, {&history});
    history.Start(model, std::filesystem::path(arguments[1]) / (std::string(name) + ".history"));
    for (int step = 1; step <= 150; ++step) course.Step();
    history.Close(model);
  }
}
