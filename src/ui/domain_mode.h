// The editing modes that need a design domain.
#pragma once

#include "model/model.h"

class QWidget;

namespace quillane {

/// Sets EditMode. Where no design domain exists the warning box asks for it instead, above dialog,
/// and EditMode stays.
void SetDomainMode(QWidget& dialog, Model& model, Integer mode);

}  // namespace quillane
