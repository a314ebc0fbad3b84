// quillane-batch: the engine on the command line.
#include <QGuiApplication>
#include <csignal>
#include <optional>

#include "batch/options.h"
#include "batch/run.h"

namespace {

volatile std::sig_atomic_t interrupted = 0;

extern "C" void NoteInterrupt(int) { interrupted = 1; }

}  // namespace

int main(int argc, char** argv) {
  int exitStatus = 0;
  const std::optional<quillane::BatchOptions> options =
      quillane::ParseOptions(argc, argv, exitStatus);
  if (!options) return exitStatus;

  // Text in pictures needs the toolkit's fonts, but never a display.
  std::optional<QGuiApplication> toolkit;
  if (!options->image.empty() || !options->frames.empty()) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    toolkit.emplace(argc, argv);
  }
  std::signal(SIGINT, NoteInterrupt);
  std::signal(SIGTERM, NoteInterrupt);
  return quillane::RunBatch(*options, interrupted);
}
