// quillane-batch: the engine on the command line.
#include <QGuiApplication>
#include <cstdio>
#include <optional>

#include "batch/console.h"
#include "batch/options.h"
#include "batch/run.h"

namespace {

/// Drops the warnings of the toolkit on a machine without a desktop.
void PassErrorsOnly(QtMsgType type, const QMessageLogContext&, const QString& message) {
  if (type == QtCriticalMsg || type == QtFatalMsg) {
    std::fprintf(stderr, "quillane-batch: %s\n", qPrintable(message));
  }
}

}  // namespace

int main(int argc, char** argv) {
  quillane::PrepareStreams();
  quillane::TakeArguments(argc, argv);
  int exitStatus = 0;
  const std::optional<quillane::BatchOptions> options =
      quillane::ParseOptions(argc, argv, exitStatus);
  if (!options) return exitStatus;

  // Text in pictures needs the toolkit's fonts, but never a display.
  std::optional<QGuiApplication> toolkit;
  if (options->outputs.Wants(quillane::Output::kImage) ||
      options->outputs.Wants(quillane::Output::kFrames)) {
    qInstallMessageHandler(PassErrorsOnly);
    quillane::PrepareToolkit();
    toolkit.emplace(argc, argv);
  }
  quillane::CatchSignals();
  return quillane::RunBatch(*options);
}
