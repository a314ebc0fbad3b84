#include <fcntl.h>
#include <poll.h>
#include <sys/file.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QByteArray>
#include <atomic>
#include <cerrno>
#include <csignal>
#include <ctime>
#include <string>

#include "batch/console.h"

namespace quillane {
namespace {

namespace fs = std::filesystem;

constexpr int kPollInterval = 100;    // ms between two checks for a noted signal
constexpr int kReaderTimeout = 1000;  // ms to wait for a reader once a signal is noted

std::atomic<int> noted = 0;
std::atomic<double> notedAt = 0;  // s
static_assert(std::atomic<int>::is_always_lock_free && std::atomic<double>::is_always_lock_free);

/// Some programs send a signal twice in a row, to the process and to its group; that counts as one.
extern "C" void NoteSignal(int number) {
  timespec clock{};
  clock_gettime(CLOCK_MONOTONIC, &clock);
  const double now = static_cast<double>(clock.tv_sec) + 1e-9 * static_cast<double>(clock.tv_nsec);
  if (noted == 0) {
    notedAt = now;
    noted = number;
  }
  if (now - notedAt < 0.1) return;
  std::signal(number, SIG_DFL);
  std::raise(number);
}

std::FILE* StreamOf(int descriptor, const char* mode) {
  return descriptor < 0 ? nullptr : fdopen(descriptor, mode);
}

bool IsFifo(const fs::path& path) {
  std::error_code error;
  return fs::is_fifo(fs::status(path, error));
}

}  // namespace

void TakeArguments(int&, char**&) {}

void PrepareStreams() {
  for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
    // Opened for the wrong direction, so that using the stream fails.
    if (fcntl(stream, F_GETFD) < 0)
      (void)open("/dev/null", stream == STDIN_FILENO ? O_WRONLY : O_RDONLY);
  }
}

void PrepareToolkit() { qputenv("QT_QPA_PLATFORM", "offscreen"); }

void CatchSignals() {
  std::signal(SIGPIPE, SIG_IGN);
  std::signal(SIGXFSZ, SIG_IGN);
  // Access to files goes on after a signal; a wait for another program polls the noted one.
  struct sigaction action {};
  action.sa_handler = NoteSignal;
  action.sa_flags = SA_RESTART;
  for (const int number : {SIGHUP, SIGINT, SIGTERM}) sigaddset(&action.sa_mask, number);
  for (const int number : {SIGHUP, SIGINT, SIGTERM}) {
    struct sigaction before {};
    sigaction(number, nullptr, &before);
    if (before.sa_handler != SIG_IGN) sigaction(number, &action, nullptr);
  }
}

int NotedSignal() { return noted; }

fs::path StreamPath(std::FILE* stream) { return "/dev/fd/" + std::to_string(fileno(stream)); }

bool NamesStream(const fs::path& path, std::FILE* stream) {
  const char* const names[] = {"/dev/stdin", "/dev/stdout", "/dev/stderr"};
  const std::string number = std::to_string(fileno(stream));
  std::error_code error;
  fs::path name = fs::absolute(path, error).lexically_normal();
  for (int links = 0; links < 40; ++links) {
    if (name == names[fileno(stream)] || name == "/dev/fd/" + number ||
        name == "/proc/self/fd/" + number) {
      return true;
    }
    if (!fs::is_symlink(fs::symlink_status(name, error))) return false;
    name = (name.parent_path() / fs::read_symlink(name, error)).lexically_normal();
  }
  return false;
}

std::FILE* OpenToRead(const fs::path& path) {
  return StreamOf(open(path.c_str(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC), "rb");
}

std::FILE* OpenToWrite(const fs::path& path) {
  int descriptor = -1;
  do {
    descriptor = open(path.c_str(), O_WRONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC);
    if (descriptor >= 0 || errno != ENXIO || !IsFifo(path)) break;
    if (noted == 0) poll(nullptr, 0, kPollInterval);
    errno = EINTR;
  } while (noted == 0);
  if (descriptor >= 0) fcntl(descriptor, F_SETFL, fcntl(descriptor, F_GETFL) & ~O_NONBLOCK);
  return StreamOf(descriptor, "wb");
}

std::ptrdiff_t ReadSome(std::FILE* stream, char* bytes, std::size_t size) {
  for (pollfd wait{fileno(stream), POLLIN, 0}; noted == 0;) {
    if (poll(&wait, 1, kPollInterval) <= 0) continue;
    const ssize_t count = read(wait.fd, bytes, size);
    if (count >= 0 || (errno != EAGAIN && errno != EINTR)) return count;
  }
  errno = EINTR;
  return -1;
}

bool WaitToWrite(std::FILE* stream) {
  pollfd wait{fileno(stream), POLLOUT, 0};
  for (int patience = kReaderTimeout; patience > 0; patience -= noted == 0 ? 0 : kPollInterval) {
    if (poll(&wait, 1, kPollInterval) > 0) return true;
  }
  return false;
}

bool Claim(const fs::path& path, bool isFolder) {
  const int how = isFolder ? O_RDONLY | O_DIRECTORY : O_RDWR | O_CREAT;
  const int descriptor = open(path.c_str(), how | O_CLOEXEC, 0666);
  // Never closed, so the lock lasts as long as the process. A file system without locks counts as
  // unlocked.
  return flock(descriptor, LOCK_EX | LOCK_NB) == 0 || errno != EWOULDBLOCK;
}

bool CanRedrawLines(std::FILE* stream) {
  const QByteArray kind = qgetenv("TERM");
  return isatty(fileno(stream)) != 0 && !kind.isEmpty() && kind != "dumb";
}

int TerminalWidth(std::FILE* stream) {
  winsize size{};
  return ioctl(fileno(stream), TIOCGWINSZ, &size) == 0 && size.ws_col > 0 ? size.ws_col : 80;
}

}  // namespace quillane
