// A signal handler may do little more than write to a pipe, which the event loop reads.
#include <fcntl.h>
#include <unistd.h>

#include <QSocketNotifier>
#include <array>
#include <cerrno>
#include <csignal>

#include "ui/end_signals.h"

namespace quillane {
namespace {

constexpr std::array kEnding = {SIGHUP, SIGINT, SIGTERM};

std::array<int, 2> pipeEnds = {-1, -1};  // to read from, to write to

void PassOn(int number) {
  const int error = errno;
  const auto byte = static_cast<unsigned char>(number);
  [[maybe_unused]] const auto written = write(pipeEnds[1], &byte, 1);
  errno = error;
}

bool IsIgnored(int number) {
  struct sigaction present = {};
  sigaction(number, nullptr, &present);
  return present.sa_handler == SIG_IGN;
}

}  // namespace

EndSignals::EndSignals() {
  std::signal(SIGPIPE, SIG_IGN);
  std::signal(SIGXFSZ, SIG_IGN);
  if (pipe(pipeEnds.data()) != 0) return;
  for (const int end : pipeEnds) {
    fcntl(end, F_SETFD, FD_CLOEXEC);
    fcntl(end, F_SETFL, O_NONBLOCK);
  }
  auto* notifier = new QSocketNotifier(pipeEnds[0], QSocketNotifier::Read, this);
  connect(notifier, &QSocketNotifier::activated, this, [this] {
    unsigned char number = 0;
    while (read(pipeEnds[0], &number, 1) == 1) emit Raised(number);
  });
  notifier_ = notifier;
  for (const int number : kEnding) {
    if (!IsIgnored(number)) std::signal(number, PassOn);
  }
}

EndSignals::~EndSignals() {
  for (const int number : kEnding) {
    if (!IsIgnored(number)) std::signal(number, SIG_DFL);
  }
  delete notifier_;
  for (int& end : pipeEnds) {
    if (end >= 0) close(end);
    end = -1;
  }
}

}  // namespace quillane
