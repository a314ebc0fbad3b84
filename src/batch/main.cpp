// quillane-batch: the engine on the command line.
#include <QGuiApplication>
#include <csignal>
#include <cstdio>
#include <optional>

#include "batch/options.h"
#include "batch/run.h"

namespace {

volatile std::sig_atomic_t interrupted = 0;

/// The toolkit's remarks on a machine without a desktop are no business of a batch run.
void PassErrorsOnly(QtMsgType type, const QMessageLogContext&, const QString& message) {
  if (type == QtCriticalMsg || type == QtFatalMsg) {
    std::fprintf(stderr, "quillane-batch: %s\n", qPrintable(message));
  }
}

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
    qInstallMessageHandler(PassErrorsOnly);
    qputenv("QT_QPA_PLATFORM", "offscreen");
    toolkit.emplace(argc, argv);
  }
  std::signal(SIGINT, NoteInterrupt);
  std::signal(SIGTERM, NoteInterrupt);
  return quillane::RunBatch(*options, interrupted);
}
