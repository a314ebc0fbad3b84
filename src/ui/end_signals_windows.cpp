// A window has no console that could send signals; the toolkit reports the end of the session.
#include "ui/end_signals.h"

namespace quillane {

EndSignals::EndSignals() = default;
EndSignals::~EndSignals() = default;

}  // namespace quillane
