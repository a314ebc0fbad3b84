#include "batch/terminal.h"

#include <QByteArray>

#if defined(_WIN32)
#include <io.h>
#else
#include <sys/ioctl.h>
#include <unistd.h>
#endif

namespace quillane {

bool CanRedrawLines(std::FILE* stream) {
#if defined(_WIN32)
  return _isatty(_fileno(stream)) != 0;
#else
  const QByteArray kind = qgetenv("TERM");
  return isatty(fileno(stream)) != 0 && !kind.isEmpty() && kind != "dumb";
#endif
}

int TerminalWidth(std::FILE* stream) {
#if defined(TIOCGWINSZ)
  winsize size{};
  if (ioctl(fileno(stream), TIOCGWINSZ, &size) == 0 && size.ws_col > 0) return size.ws_col;
#else
  (void)stream;
#endif
  return 80;
}

}  // namespace quillane
