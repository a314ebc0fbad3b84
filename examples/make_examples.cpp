// Writes the example models. Usage: quillane-make-examples FOLDER [full|sketch [K [NAME]]]
// Without more words: as shipped. full: material in the whole domain; sketch: hand-drawn first
// layouts; K (default 1): K x K cells in place of every cell; NAME: only this example.
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

void Write(const std::filesystem::path& folder, int argc, char** argv) {
  for (const std::string_view name : quillane::ExampleNames()) {
    if (argc > 4 && name != argv[4]) continue;
    quillane::Model model = argc == 2 ? quillane::ShippedExample(name)
                                      : quillane::MakeExample(name, StartNamed(argv[2]),
                                                              argc > 3 ? std::stoi(argv[3]) : 1);
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
    Write(argv[1], argc, argv);
  } catch (const std::exception& error) {
    std::fprintf(stderr, "quillane-make-examples: %s\n", error.what());
    return 2;
  }
  return 0;
}
