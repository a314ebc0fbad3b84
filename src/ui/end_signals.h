// The signals by which the system asks a program to end.
#pragma once

#include <QObject>

namespace quillane {

/// Receives SIGHUP, SIGINT and SIGTERM during its lifetime; a signal that was ignored before stays
/// ignored. Also makes writes to a broken pipe or beyond the file size limit fail instead of ending
/// the program. At most one instance may exist.
/// Windows sends a program without a console none of them.
class EndSignals : public QObject {
  Q_OBJECT

 public:
  EndSignals();
  ~EndSignals() override;

 signals:
  /// A signal was received. Emitted from the event loop.
  void Raised(int number);

 private:
  QObject* notifier_ = nullptr;  ///< brings them into the event loop
};

}  // namespace quillane
