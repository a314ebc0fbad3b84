// The base of the dialogs for opening and saving a model.
#pragma once

#include <filesystem>
#include <vector>

#include "ui/form.h"

class QComboBox;
class QListWidget;
class QTreeWidget;
class QTreeWidgetItem;

namespace quillane {

/// A drive list, the folders from the root down to the one chosen with its subfolders, the model
/// files in it, and the file's name. It starts in the folder of the last file, or in the current
/// directory.
class FileForm : public Form {
  Q_OBJECT

 protected:
  using Action = void (frmMain::*)(const std::filesystem::path&);

  /// Creates the form with a button of this object name and caption. The button, Enter and a double
  /// click on a file run the action.
  FileForm(frmMain& main, const FormNames& names, const char* button, const char* caption,
           Action action);

 private:
  void LayOut(QPushButton* button);
  void Form_Load();
  /// Runs the action on the chosen path and closes the dialog. If the file cannot be used,
  /// reports the reason and stays open. Throws RunTimeError as the action does.
  void RunOrStayOpen();
  void Drive1_Change();
  void Dir1_Change();
  void File1_Click();

  bool eventFilter(QObject* watched, QEvent* event) override;
  void OpenRow(const QTreeWidgetItem* row);
  /// Enters the folder, or warns if it cannot be read.
  void OpenFolder(const std::filesystem::path& folder);
  void EnterFolder(const std::filesystem::path& folder);
  void ShowFolder(const std::vector<std::string>& subfolders);
  /// Returns the folder and the name as typed; an absolute path as it is.
  std::filesystem::path FullPath() const;
  void ReportFailure(const std::filesystem::path& path, const char* reason);

  Action action_;
  std::vector<std::filesystem::path> drives_;
  std::filesystem::path folder_;  ///< the directory list's path
  QComboBox* Drive1;
  QTreeWidget* Dir1;
  QListWidget* File1;
  QLineEdit* txtFileName;
};

}  // namespace quillane
