// Judges the search for a wished volume by the density method: random plates, then the examples.
#include <fmt/format.h>

#include <CLI/CLI.hpp>
#include <QGuiApplication>
#include <cstdio>
#include <filesystem>

#include "model/model_file.h"
#include "optimize/volume_search.h"
#include "shape_cases.h"
#include "shape_pictures.h"
#include "shape_report.h"

namespace {

using namespace quillane;

struct Options {
  std::uint32_t seed = 1;
  int count = 100, only = 0, pictures = 40, columns = 4;
  double limit = 60;
  bool noKeep = false, noExamples = false;
  std::filesystem::path folder;
};

void ReadOptions(CLI::App& app, Options& options) {
  app.add_option("--seed", options.seed, "of the random plates (default 1)");
  app.add_option("--count", options.count, "random plates (default 100)");
  app.add_option("--only", options.only, "of them this one, and no example");
  app.add_option("--limit", options.limit, "processor time a plate for our search, s (default 60)");
  app.add_flag("--no-keep", options.noKeep, "loads do not keep their cells");
  app.add_flag("--no-examples", options.noExamples, "random plates alone");
  app.add_option("--pictures", options.folder,
                 "a folder for the model and the two shapes of every plate, and a montage");
  app.add_option("--montage", options.pictures, "plates in the montage (default 40)");
  app.add_option("--columns", options.columns, "of the montage (default 4)");
}

std::vector<ShapeCase> Cases(const Options& options) {
  const int first = options.only > 0 ? options.only : 1;
  const int last = options.only > 0 ? options.only : options.count;
  std::vector<ShapeCase> cases = RandomCases(options.seed, first, last);
  if (options.only == 0 && !options.noExamples) {
    for (ShapeCase& example : ExampleCases()) cases.push_back(std::move(example));
  }
  for (ShapeCase& plate : cases) {
    if (!options.noKeep) KeepLoadedCells(plate.model);
  }
  return cases;
}

void SavePictures(const std::vector<ShapePair>& pairs, const Options& options) {
  std::vector<QImage> small;
  for (const ShapePair& pair : pairs) {
    const std::string path = (options.folder / pair.plate->name).string();
    PairPicture(pair, 600, 400).save(QString::fromStdString(path + ".png"));
    Model problem = pair.plate->model;
    SaveModelFile(problem, path + ".model");
    if (small.size() < static_cast<std::size_t>(options.pictures)) {
      small.push_back(PairPicture(pair, 420, 280));
    }
  }
  Montage(small, options.columns).save(QString::fromStdString((options.folder / "montage.png")));
}

}  // namespace

int main(int argc, char** argv) {
  Options options;
  CLI::App app{"Judges the search for a wished volume by the density method."};
  ReadOptions(app, options);
  CLI11_PARSE(app, argc, argv);

  const std::vector<ShapeCase> cases = Cases(options);
  std::vector<ShapePair> pairs;
  fmt::print("{}", LineTitles());
  for (const ShapeCase& plate : cases) {
    pairs.push_back(Compare(plate, options.limit));
    fmt::print("{}", LineOf(pairs.back()));
    std::fflush(stdout);
  }
  fmt::print("\n{}\n{}", SummaryTable(pairs), WorstPlates(pairs, 5));
  std::fflush(stdout);
  if (options.folder.empty()) return 0;
  qputenv("QT_QPA_PLATFORM", "offscreen");
  const QGuiApplication toolkit(argc, argv);
  std::filesystem::create_directories(options.folder);
  SavePictures(pairs, options);
}
