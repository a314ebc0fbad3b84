// Ends of the program from outside: signals, end of the session, loss of the display.
#pragma once

#include "ui/end_signals.h"
#include "ui/frmMain.h"

namespace quillane {

/// Writes unsaved changes of the window's model to a rescue file when the program is ended from
/// outside. At most one instance may exist.
class OutsideEnd {
 public:
  explicit OutsideEnd(frmMain& window);
  ~OutsideEnd();
  OutsideEnd(const OutsideEnd&) = delete;
  OutsideEnd& operator=(const OutsideEnd&) = delete;

 private:
  EndSignals signals_;
};

}  // namespace quillane
