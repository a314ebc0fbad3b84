// The dialog that runs the optimization, step by step or automatically.
#pragma once

#include <optional>

#include "ui/busy_pointer.h"
#include "ui/form.h"

namespace quillane {

/// "Optimization": stays responsive while steps run. Closing it stops them.
class frmOptimization : public Form {
  Q_OBJECT

 public:
  explicit frmOptimization(frmMain& main);
  void reject() override;

 private:
  void cmdAutoStart_Click();
  void cmdAutoStop_Click();
  void cmdManual_Click();
  /// Updates the report, and stops automatic steps before the step that must fail.
  void FollowStep();
  /// Moves the dialog beside the main window, or to a part of it that shows neither plate nor
  /// legend, if the screen has room.
  void PlaceBesideTheMap();

  QPushButton* cmdAutoStart =
      Button("cmdAutoStart", "Automatic_Start", &frmOptimization::cmdAutoStart_Click);
  QPushButton* cmdAutoStop =
      Button("cmdAutoStop", "Automatic_Stop", &frmOptimization::cmdAutoStop_Click);
  QPushButton* cmdManual = Button("cmdManual", "Bit by Bit", &frmOptimization::cmdManual_Click);
  QLabel* lblCourse = Label("");
  std::optional<BusyPointer> busy_;  ///< while steps follow each other
};

}  // namespace quillane
