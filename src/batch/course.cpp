// One terminal line that moves.
#include "batch/course.h"

#include <fmt/format.h>

#include <string>

#include "model/number_text.h"

namespace quillane {
namespace {

using Seconds = std::chrono::duration<double>;

std::string Bar(int done, int steps) {
  constexpr int kWidth = 20;
  const int full = steps == 0 ? kWidth : static_cast<int>(1.0 * kWidth * done / steps);
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

Course::Course(std::FILE* terminal, bool shown, int steps)
    : terminal_(terminal), shown_(shown), steps_(steps) {}

void Course::Show(const Model& model, int done) {
  if (!shown_) return;
  const auto now = std::chrono::steady_clock::now();
  if (done != steps_ && done != 0 && Seconds(now - lastDrawn_).count() < 0.05) return;
  lastDrawn_ = now;
  fmt::print(terminal_, "\r\x1b[K{} step {}/{}  volume {} mm^3  max {} MPa  mean {} MPa  {}",
             Bar(done, steps_), done, steps_, ExponentText(model.Volume),
             ExponentText(model.MaxStress), ExponentText(model.AvgStress),
             TimeLeft(Seconds(now - start_).count(), done, steps_));
  std::fflush(terminal_);
  lineDrawn_ = true;
}

void Course::Clear() {
  if (!lineDrawn_) return;
  fmt::print(terminal_, "\r\x1b[K");
  std::fflush(terminal_);
  lineDrawn_ = false;
}

}  // namespace quillane
