// The captions of the main window's labels.
#pragma once

#include <QString>

#include "model/model.h"

namespace quillane {

/// "Width = 2000mm  Element Size = 100mm"
QString SummaryCaption(const Model& model);

/// "  Volume = 7.20E+05mm^3"
QString VolumeCaption(const Model& model);

/// "  Volume = 7.20E+05mm^3     3step"
QString StepCaption(const Model& model);

/// "x = -350mm  y = 120mm"; x and y in mm.
QString MouseCaption(Single x, Single y);

}  // namespace quillane
