// The end of the program as the system brings it about: signals, the end of the session, the loss
// of the display.
#pragma once

#include "ui/end_signals.h"
#include "ui/frmMain.h"

namespace quillane {

/// While it lives, unsaved changes of the window's model go to a rescue file before the system ends
/// the program. At most one may live.
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
