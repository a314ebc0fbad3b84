// The dialog that runs the optimization, step by step or by itself.
#pragma once

#include <optional>

#include "ui/busy_pointer.h"
#include "ui/form.h"

namespace quillane {

/// "Optimization": stays usable while steps run. Closing it stops them.
class frmOptimization : public Form {
  Q_OBJECT

 public:
  explicit frmOptimization(frmMain& main);
  void reject() override;

 private:
  void Form_Load();
  void cmdAutoStart_Click();
  void cmdAutoStop_Click();
  void cmdManual_Click();
  /// Tells how it goes; automatic steps end before the one that must fail.
  void FollowStep();
  /// Right of the main window as far as the screen has room, so that the map stays in view.
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
