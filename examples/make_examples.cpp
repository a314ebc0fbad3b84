// Writes the example models. Usage: quillane-make-examples FOLDER [full|sketch [K [NAME]]]
// full (default): material in the whole domain, as shipped; sketch: hand-drawn first layouts;
// K: K x K cells in place of every cell; NAME: only this example.
#include <cstdio>
#include <filesystem>
#include <stdexcept>
#include <string>

#include "examples/recipes.h"
#include "model/model_file.h"

namespace {

using quillane::ExampleStart;

ExampleStart StartNamed(const std::string& name) {
  if (name == "full") return ExampleStart::kFullDomain;
  if (name == "sketch") return ExampleStart::kSketch;
  throw std::invalid_argument("full or sketch, not " + name);
}

void Write(const std::filesystem::path& folder, ExampleStart start, int refinement,
           std::string_view only) {
  for (const std::string_view name : quillane::ExampleNames()) {
    if (!only.empty() && name != only) continue;
    quillane::Model model = quillane::MakeExample(name, start, refinement);
    quillane::SaveModelFile(model, folder / (std::string(name) + ".model"));
  }
}

}  // namespace

int main(int argc, char** argv) {
  if (argc < 2 || argc > 5) {
    std::fputs("Usage: quillane-make-examples FOLDER [full|sketch [K [NAME]]]\n", stderr);
    return 2;
  }
  try {
    Write(argv[1], StartNamed(argc > 2 ? argv[2] : "full"), argc > 3 ? std::stoi(argv[3]) : 1,
          argc > 4 ? argv[4] : "");
  } catch (const std::exception& error) {
    std::fprintf(stderr, "quillane-make-examples: %s\n", error.what());
    return 2;
  }
  return 0;
}
