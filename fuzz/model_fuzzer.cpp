// Feeds any bytes to the reader of model files and sends what opens through analysis, optimization,
// drawing and saving. Whatever the bytes are, the end is a result or a named error.
#include <sys/mman.h>
#include <unistd.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include "display/canvas_drawing.h"
#include "display/read_outs.h"
#include "display/result_maps.h"
#include "display/view.h"
#include "edit/press.h"
#include "fem/analysis.h"
#include "fem/mesh.h"
#include "model/model_file.h"
#include "model/run_time_error.h"
#include "optimize/optimization_step.h"
#include "support/solver_forms.h"

extern "C" std::size_t LLVMFuzzerMutate(std::uint8_t* data, std::size_t size, std::size_t maxSize);

namespace {

using namespace quillane;

/// Ends the process with a finding unless the condition holds.
void Require(bool holds) {
  if (!holds) std::abort();
}

/// Draws nothing, but makes all drawing code run.
class BlankArea final : public DrawingArea {
 public:
  void SetScale(const UserScale& scale) override { scale_ = scale; }
  UserScale Scale() const override { return scale_; }
  void SetBackground(Color) override {}
  void Clear() override {}
  void SetColor(Color) override {}
  void SetLineWidth(int) override {}
  void DrawLine(double, double, double, double) override {}
  void DrawBox(double, double, double, double) override {}
  void FillBox(double, double, double, double) override {}
  void DrawCircle(double, double, double) override {}
  void SetTextSize(double, double, std::string_view) override {}
  void DrawText(double, double, std::string_view) override {}

 private:
  UserScale scale_;
};

/// A file in memory that bears a path.
class MemoryFile {
 public:
  MemoryFile() : file_(memfd_create("model", 0)) {}

  std::filesystem::path Path() const { return "/proc/self/fd/" + std::to_string(file_); }

  void Fill(const void* data, std::size_t size) const {
    Require(ftruncate(file_, 0) == 0);
    Require(pwrite(file_, data, size, 0) == static_cast<ssize_t>(size));
  }

 private:
  int file_;
};

const MemoryFile& Scratch() {
  static const MemoryFile file;
  return file;
}

/// One stage; a run-time error is an answer as good as a result.
template <class Stage>
bool Passes(Stage&& stage) {
  try {
    stage();
    return true;
  } catch (const RunTimeError&) {
    return false;
  }
}

void Draw(Model& model) {
  BlankArea canvas, legend;
  Passes([&] { FitView(model, 1000, 800); });
  Passes([&] { DrawCanvas(canvas, model); });
  Passes([&] { DrawStressMap(canvas, legend, model); });
  Passes([&] { DrawNeuronMap(canvas, legend, model); });
  const Single x = model.DomainX1 + model.ElementSize;
  const Single y = model.DomainY1 + model.ElementSize;
  Passes([&] { loadValue(model, x, y); });
  Passes([&] { dispValue(model, x, y); });
  Passes([&] { stressValue(model, x, y); });
  Passes([&] { neuronValue(model, x, y); });
}

/// Presses in every mode at opposite corners of the domain and a cell inside them.
void PressAll(Model& model) {
  EditState state;
  for (Integer mode = kModeRemove; mode <= kModeFree; ++mode) {
    if (mode == kModeDomain || !BeginMode(model, mode)) continue;
    Press(model, state, model.DomainX1 + model.ElementSize, model.DomainY1);
    Press(model, state, model.DomainX2 - model.ElementSize, model.DomainY2 - model.ElementSize);
  }
}

/// What was opened and written again reads back as the same text.
void CheckRoundTrip(Model& model) {
  std::string text;
  if (!Passes([&] { text = ModelFileText(model); })) return;
  Scratch().Fill(text.data(), text.size());
  Model again;
  OpenModelFile(again, Scratch().Path());
  Require(ModelFileText(again) == text);
}

void Replace(std::string& text, std::size_t field, std::string_view value) {
  std::size_t begin = 0;
  for (; field > 0; --field) {
    const std::size_t next = text.find_first_of(",\n", begin);
    if (next == std::string::npos) break;
    begin = next + 1;
  }
  const std::size_t end = std::min(text.find_first_of(",\r\n", begin), text.size());
  text.replace(begin, end - begin, value);
}

/// The work of the loads, which no free motion changes, and the most that loads and displacements
/// of these sizes can do.
struct LoadWork {
  double work = 0.0, most = 0.0;

  explicit LoadWork(const Model& model) {
    double load = 0.0;
    double displacement = 0.0;
    for (int i = 1; i <= model.EquationCount; ++i) {
      work += model.LoadVector(i) * model.SolutionVector(i);
      load = std::hypot(load, model.LoadVector(i));
      displacement = std::hypot(displacement, model.SolutionVector(i));
    }
    most = load * displacement;
  }
};

/// Product and preconditioner of the fast form are those of the plain procedures, bit for bit.
/// Whole solves agree in their work where both stop by themselves with a small true residual after
/// as many iterations, or one more or less. Displacements can agree only where the plate is held:
/// the tests see to that.
void CompareSolvers(Model model) {
  MarkActiveNodes(model);
  NumberComponents(model);
  test::Vector x(static_cast<std::size_t>(model.EquationCount) + 1, 0.0);
  std::minstd_rand random(1);
  for (std::size_t i = 1; i < x.size(); ++i) x[i] = static_cast<double>(random()) / 1e9 - 1.0;
  const auto waves = test::WavePieces(model, x);
  if (!waves) return;
  const test::SolverPieces plain = test::PlainPieces(model, x);
  const auto isFinite = [](double value) { return std::isfinite(value); };
  if (!std::ranges::all_of(plain.product, isFinite) ||
      !std::ranges::all_of(plain.preconditioned, isFinite)) {
    return;
  }
  Require(waves->product == plain.product);
  Require(waves->preconditioned == plain.preconditioned);

  const SolveReport fast = SolveStructure(model);
  const LoadWork fastWork(model);
  AssembleEquations(model);
  const SolveReport slow = SolveAssembledEquations(model, kSolverTolerance);
  const LoadWork slowWork(model);
  if (!fast.converged || !slow.converged || fast.trueResidual > 1e-5 ||
      std::abs(fast.iterations - slow.iterations) > 1 || !std::isfinite(slowWork.most)) {
    return;
  }
  Require(std::fabs(fastWork.work - slowWork.work) <= 1e-5 * slowWork.most);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  Scratch().Fill(data, size);
  Model model;
  try {
    OpenModelFile(model, Scratch().Path());
  } catch (const ModelFileError&) {
    return 0;
  }
  model.DomainDefined = kTrue;
  CheckRoundTrip(model);
  Draw(model);
  Passes([&] { MarkActiveNodes(model); }) && Passes([&] { StressAnalysis(model); }) &&
      Passes([&] { Optimization(model); }) && Passes([&] { Optimization(model); });
  Passes([&] { CompareSolvers(model); });
  PressAll(model);
  Draw(model);
  CheckRoundTrip(model);
  return 0;
}

/// Every other time exchanges whole fields for values that matter; bytes otherwise.
extern "C" std::size_t LLVMFuzzerCustomMutator(std::uint8_t* data, std::size_t size,
                                               std::size_t maxSize, unsigned seed) {
  static constexpr std::string_view kValues[] = {
      "0",     "-1",     "1",     "2",    "3",   "4",     "5",    "7",     "-3",
      "40",    "100",    "0.3",   "0.05", "1.5", "1e-45", "1e38", "4e38",  "1e-300",
      "1e308", "-1e300", "1e400", "nan",  "inf", "32767", "",     "32768", "-32768",
      "16384", "-0",     "0.5",   "1e-7", "+3",  "&H10"};
  std::minstd_rand random(seed);
  if (size == 0 || random() % 2 == 0) return LLVMFuzzerMutate(data, size, maxSize);
  std::string text(reinterpret_cast<const char*>(data), size);
  const auto fields = static_cast<std::size_t>(std::count(text.begin(), text.end(), ',') +
                                               std::count(text.begin(), text.end(), '\n') + 1);
  for (unsigned times = random() % 3 + 1; times > 0; --times) {
    const std::size_t among = random() % 2 == 0 ? std::min<std::size_t>(fields, 17) : fields;
    Replace(text, random() % among, kValues[random() % std::size(kValues)]);
  }
  const std::size_t length = std::min(text.size(), maxSize);
  std::copy_n(text.begin(), length, data);
  return length;
}
