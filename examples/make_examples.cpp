// Writes the shipped example models anew. Usage: quillane-make-examples FOLDER
#include <cstdio>
#include <filesystem>
#include <string>

#include "examples/recipes.h"
#include "model/model_file.h"

int main(int argc, char** argv) {
  if (argc != 2) {
    std::fputs("Usage: quillane-make-examples FOLDER\n", stderr);
    return 2;
  }
  try {
    for (const std::string_view name : quillane::ExampleNames()) {
      quillane::Model model = quillane::MakeExample(name, quillane::ExampleStart::kSketch);
      quillane::SaveModelFile(model,
                              std::filesystem::path(argv[1]) / (std::string(name) + ".model"));
    }
  } catch (const std::exception& error) {
    std::fprintf(stderr, "quillane-make-examples: %s\n", error.what());
    return 2;
  }
  return 0;
}
