// The signals by which the system asks a program to end.
#pragma once

#include <QObject>
#include <QSocketNotifier>

namespace quillane {

/// Takes SIGHUP, SIGINT and SIGTERM from its making until its end; one that was ignored at the
/// start stays so. A write to a broken pipe or past the limit of a file's size fails instead of
/// ending the program. At most one may live.
class EndSignals : public QObject {
  Q_OBJECT

 public:
  EndSignals();
  ~EndSignals() override;

 signals:
  /// A signal has come, in the event loop.
  void Raised(int number);

 private:
  void Receive();

  QSocketNotifier* notifier_ = nullptr;
};

}  // namespace quillane
