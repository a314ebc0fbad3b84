#include "ui/captions.h"

#include "model/number_text.h"

namespace quillane {

QString SummaryCaption(const Model& model) {
  return QString::fromStdString("Width = " + GeneralText(model.DomainWidth) +
                                "mm  Element Size = " + GeneralText(model.ElementSize) + "mm");
}

QString VolumeCaption(const Model& model) {
  return QString::fromStdString("  Volume = " + ExponentText(model.Volume) + "mm^3");
}

QString StepCaption(const Model& model) {
  return VolumeCaption(model) + "     " +
         QString::fromStdString(GeneralText(int{model.StepCount})) + "step";
}

QString MouseCaption(Single x, Single y) {
  return QString::fromStdString("x = " + WholeText(static_cast<double>(x)) +
                                "mm  y = " + WholeText(static_cast<double>(y)) + "mm");
}

}  // namespace quillane
