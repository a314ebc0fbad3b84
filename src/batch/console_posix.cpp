#include <fcntl.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <QByteArray>

#include "batch/console.h"

namespace quillane {
namespace {

volatile std::sig_atomic_t noted = 0;

extern "C" void NoteSignal(int number) { noted = number; }

}  // namespace

void TakeArguments(int&, char**&) {}

void PrepareStreams() {
  for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
    // Opened the wrong way round, so that its use fails as it should.
    if (fcntl(stream, F_GETFD) < 0)
      (void)open("/dev/null", stream == STDIN_FILENO ? O_WRONLY : O_RDONLY);
  }
}

void PrepareToolkit() { qputenv("QT_QPA_PLATFORM", "offscreen"); }

void CatchSignals() {
  std::signal(SIGPIPE, SIG_IGN);  // a reader that has gone is a failed output, told as such
  for (const int number : {SIGHUP, SIGINT, SIGTERM}) {
    if (std::signal(number, NoteSignal) == SIG_IGN) std::signal(number, SIG_IGN);
  }
}

const volatile std::sig_atomic_t& NotedSignal() { return noted; }

bool CanRedrawLines(std::FILE* stream) {
  const QByteArray kind = qgetenv("TERM");
  return isatty(fileno(stream)) != 0 && !kind.isEmpty() && kind != "dumb";
}

int TerminalWidth(std::FILE* stream) {
  winsize size{};
  return ioctl(fileno(stream), TIOCGWINSZ, &size) == 0 && size.ws_col > 0 ? size.ws_col : 80;
}

}  // namespace quillane
