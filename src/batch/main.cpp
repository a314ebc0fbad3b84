// quillane-batch: the engine on the command line.
#include <QGuiApplication>
#include <csignal>
#include <cstdio>
#include <optional>

#if defined(__unix__) || defined(__APPLE__)
#include <fcntl.h>
#include <unistd.h>
#endif

#include "batch/options.h"
#include "batch/run.h"

namespace {

volatile std::sig_atomic_t signalled = 0;

/// The toolkit's remarks on a machine without a desktop are no business of a batch run.
void PassErrorsOnly(QtMsgType type, const QMessageLogContext&, const QString& message) {
  if (type == QtCriticalMsg || type == QtFatalMsg) {
    std::fprintf(stderr, "quillane-batch: %s\n", qPrintable(message));
  }
}

extern "C" void NoteSignal(int number) { signalled = number; }

/// What asks the program to end lets it finish its step; what the caller ignores stays ignored.
void CatchSignals() {
#if defined(SIGHUP)
  constexpr int kSignals[] = {SIGHUP, SIGINT, SIGTERM};
  std::signal(SIGPIPE, SIG_IGN);  // a reader that has gone is a failed output, told as such
#else
  constexpr int kSignals[] = {SIGINT, SIGTERM};
#endif
  for (const int number : kSignals) {
    if (std::signal(number, NoteSignal) == SIG_IGN) std::signal(number, SIG_IGN);
  }
}

/// A closed standard stream must not become the next file that is opened.
void OccupyClosedStreams() {
#if defined(__unix__) || defined(__APPLE__)
  for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
    // Opened the wrong way round, so that its use fails as it should.
    if (fcntl(stream, F_GETFD) < 0)
      (void)open("/dev/null", stream == STDIN_FILENO ? O_WRONLY : O_RDONLY);
  }
#endif
}

}  // namespace

int main(int argc, char** argv) {
  OccupyClosedStreams();
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
  CatchSignals();
  return quillane::RunBatch(*options, signalled);
}
