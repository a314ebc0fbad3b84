// What the dialogs for opening and saving a model share: the lists, the path and the error trap.
#pragma once

#include <filesystem>
#include <functional>
#include <vector>

#include "ui/form.h"

class QComboBox;
class QListWidget;
class QTreeWidget;
class QTreeWidgetItem;

namespace quillane {

/// A drive list, the folders from the root down to the one chosen with its subfolders, the model
/// files in it, and the file's name. It starts in the current directory.
class FileForm : public Form {
  Q_OBJECT

 protected:
  FileForm(frmMain& main, const char* name, const char* caption);

  /// Lays the dialog out; Enter and a double click on a file press the given button.
  void Complete(QPushButton* action);

  /// The folder, "/" unless it ends with one, and the name exactly as typed.
  std::filesystem::path FullPath() const;

  /// Runs the action and closes the dialog. A failure of the file is reported with its reason, and
  /// the dialog stays open for another try. Hands run-time errors on.
  void Trapped(const std::function<void()>& action);

 private:
  void Form_Load();
  void Drive1_Change();
  void Dir1_Change();
  void File1_Click();

  bool eventFilter(QObject* watched, QEvent* event) override;
  void OpenRow(const QTreeWidgetItem* row);
  /// Enters the folder; one that cannot be read is told of instead.
  void OpenFolder(const std::filesystem::path& folder);
  void EnterFolder(const std::filesystem::path& folder);
  void ShowFolder(const std::vector<std::string>& subfolders);
  void ReportFailure(const char* reason);

  std::vector<std::filesystem::path> drives_;
  std::filesystem::path folder_;  ///< the directory list's path
  QComboBox* Drive1;
  QTreeWidget* Dir1;
  QListWidget* File1;
  QLineEdit* txtFileName;
};

}  // namespace quillane
