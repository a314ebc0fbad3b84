#include "batch/progress_line.h"

#include <fmt/format.h>

#include <algorithm>

#include "batch/console.h"
#include "model/number_text.h"

namespace quillane {
namespace {

using Seconds = std::chrono::duration<double>;

std::string Bar(int done, int steps) {
  constexpr int kWidth = 20;
  const int full = done >= steps ? kWidth : static_cast<int>(1.0 * kWidth * done / steps);
  return "[" + std::string(static_cast<std::size_t>(full), '#') +
         std::string(static_cast<std::size_t>(kWidth - full), '.') + "]";
}

std::string TimeLeft(double elapsed, int done, int steps) {
  if (done == 0) return "";
  const double seconds = elapsed / done * (steps - done);
  if (seconds < 60) return fmt::format("{:.0f} s left", seconds);
  const auto minutes = static_cast<long long>(seconds / 60);
  return minutes < 60 ? fmt::format("{} min left", minutes)
                      : fmt::format("{} h {} min left", minutes / 60, minutes % 60);
}

}  // namespace

ProgressLine::ProgressLine(std::FILE* terminal, bool shown, int steps)
    : terminal_(terminal), shown_(shown && CanRedrawLines(terminal)), steps_(steps) {}

void ProgressLine::Analysed(const Course& course) {
  if (course.Figures().solves != 1) return;
  first_ = course.Figures().steps;
  Show(course.State(), 0);
}

void ProgressLine::Show(const Model& model, int done, const std::string& prefix) {
  if (done == 0) startVolume_ = model.Volume;
  if (!shown_) return;
  const auto now = std::chrono::steady_clock::now();
  if (done != steps_ && done != 0 && Seconds(now - lastDrawn_).count() < 0.05) return;
  lastDrawn_ = now;
  const double percent = startVolume_ > 0 ? 100 * model.Volume / startVolume_ : 0;
  std::string line = steps_ < 0
                         ? fmt::format("{}step {}", prefix, done)
                         : fmt::format("{} {}step {}/{}", Bar(done, steps_), prefix, done, steps_);
  line += fmt::format("  {:.1f} % of the volume", percent);
  if (steps_ > 0) line += "  " + TimeLeft(Seconds(now - start_).count(), done, steps_);
  line += fmt::format("  max {} MPa", ExponentText(model.MaxStress));
  // A line that fills the last column would wrap.
  line.resize(std::min(line.size(), static_cast<std::size_t>(TerminalWidth(terminal_)) - 1));
  std::fputs(("\r\x1b[K" + line).c_str(), terminal_);
  std::fflush(terminal_);
  lineDrawn_ = true;
}

void ProgressLine::Clear() {
  if (!lineDrawn_) return;
  std::fputs("\r\x1b[K", terminal_);
  std::fflush(terminal_);
  lineDrawn_ = false;
}

}  // namespace quillane
