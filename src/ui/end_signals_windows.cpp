// The window has no console that could send it any; the end of the session is the toolkit's to
// tell.
#include "ui/end_signals.h"

namespace quillane {

EndSignals::EndSignals() = default;
EndSignals::~EndSignals() = default;

}  // namespace quillane
