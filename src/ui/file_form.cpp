#include "ui/file_form.h"

#include <QComboBox>
#include <QGridLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLineEdit>
#include <QListWidget>
#include <QSignalBlocker>
#include <QStyle>
#include <QTreeWidget>
#include <algorithm>

#include "model/platform.h"
#include "ui/folder.h"
#include "ui/message_box.h"
#include "ui/screen_room.h"

namespace quillane {
namespace {

namespace fs = std::filesystem;

constexpr int kPathRole = Qt::UserRole;

QByteArray Bytes(const fs::path& path) { return QByteArray::fromStdString(path.string()); }

/// A tree that is always expanded, without expansion signs.
class DirectoryList : public QTreeWidget {
 public:
  using QTreeWidget::QTreeWidget;

 private:
  void drawBranches(QPainter*, const QRect&, const QModelIndex&) const override {}
};

/// Returns a row of the directory list that opens the given folder.
QTreeWidgetItem* FolderRow(const QString& text, const QIcon& icon, const fs::path& folder) {
  auto* row = new QTreeWidgetItem(QStringList(text));
  row->setIcon(0, icon);
  row->setData(0, kPathRole, Bytes(folder));
  return row;
}

/// Returns the folder of the last file, or else the current directory, or else the root.
fs::path StartFolder(const std::string& lastFile) {
  std::error_code gone;
  fs::path last = fs::canonical(PathFromText(lastFile).parent_path(), gone);
  if (!gone && fs::is_directory(last, gone)) return last;
  const fs::path current = fs::current_path(gone);
  return gone ? fs::path("/") : current;
}

QTreeWidget* MakeDirectoryList(QWidget* parent) {
  auto* list = new DirectoryList(parent);
  list->setObjectName("Dir1");
  list->setHeaderHidden(true);
  list->header()->setStretchLastSection(false);
  list->header()->setSectionResizeMode(QHeaderView::ResizeToContents);
  list->setRootIsDecorated(false);
  list->setItemsExpandable(false);
  list->setExpandsOnDoubleClick(false);
  list->setUniformRowHeights(true);
  list->setIndentation(list->fontMetrics().averageCharWidth() * 2);
  list->setAccessibleName("Folders");
  return list;
}

QListWidget* MakeFileList(QWidget* parent) {
  auto* list = new QListWidget(parent);
  list->setObjectName("File1");
  list->setUniformItemSizes(true);
  list->setAccessibleName("Model files");
  return list;
}

}  // namespace

FileForm::FileForm(frmMain& main, const FormNames& names, const char* button, const char* caption,
                   Action action)
    : Form(main, names),
      action_(action),
      drives_(Drives()),
      Drive1(new QComboBox(this)),
      Dir1(MakeDirectoryList(this)),
      File1(MakeFileList(this)),
      txtFileName(new QLineEdit(this)) {
  Drive1->setObjectName("Drive1");
  Drive1->setAccessibleName("Drives");
  Drive1->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
  for (const fs::path& drive : drives_) {
    Drive1->addItem(style()->standardIcon(QStyle::SP_DriveHDIcon), FileNameText(drive.string()));
  }
  txtFileName->setObjectName("txtFileName");
  txtFileName->setAccessibleName("File name");
  Dir1->installEventFilter(this);
  connect(Drive1, &QComboBox::activated, this, &FileForm::Drive1_Change);
  connect(Dir1, &QTreeWidget::itemDoubleClicked, this, &FileForm::OpenRow);
  connect(File1, &QListWidget::itemClicked, this, &FileForm::File1_Click);
  connect(File1, &QListWidget::itemSelectionChanged, this, &FileForm::File1_Click);
  LayOut(Button(button, caption, &FileForm::RunOrStayOpen));
  Form_Load();
}

void FileForm::LayOut(QPushButton* button) {
  connect(File1, &QListWidget::itemDoubleClicked, button, &QPushButton::click);
  auto* grid = new QGridLayout(this);
  grid->addWidget(Drive1, 0, 0);
  grid->addWidget(Dir1, 1, 0);
  grid->addWidget(File1, 0, 1, 2, 1);
  grid->addWidget(txtFileName, 2, 0, 1, 2);
  grid->addLayout(ButtonRow(button), 3, 0, 1, 2);
  setTabOrder(txtFileName, button);
  setTabOrder(button, Cancel());
  grid->setColumnStretch(0, 1);
  grid->setColumnStretch(1, 1);
  setSizeGripEnabled(true);
  const QFontMetrics font = fontMetrics();
  resize(
      QSize(font.averageCharWidth() * 72, font.lineSpacing() * 24).boundedTo(RoomOnScreen(*this)));
}

void FileForm::Form_Load() {
  EnterFolder(StartFolder(Main().model().ModelFilePath));
  File1_Click();
  FocusText(txtFileName);
}

void FileForm::Drive1_Change() {
  OpenFolder(drives_[static_cast<std::size_t>(Drive1->currentIndex())]);
}

void FileForm::Dir1_Change() {
  const FolderContents contents = ReadFolder(folder_);
  ShowFolder(contents.folders);
  const QSignalBlocker keepsTheTypedName(File1);
  File1->clear();
  const QIcon icon = style()->standardIcon(QStyle::SP_FileIcon);
  for (const std::string& name : contents.modelFiles) {
    new QListWidgetItem(icon, FileNameText(name), File1);
  }
}

void FileForm::File1_Click() {
  const QList<QListWidgetItem*> selected = File1->selectedItems();
  txtFileName->setText(selected.isEmpty() ? QString() : selected.front()->text());
}

bool FileForm::eventFilter(QObject* watched, QEvent* event) {
  if (watched == Dir1 && event->type() == QEvent::KeyPress) {
    const int key = static_cast<QKeyEvent*>(event)->key();
    if (key == Qt::Key_Return || key == Qt::Key_Enter) {
      if (Dir1->currentItem() != nullptr) OpenRow(Dir1->currentItem());
      return true;
    }
  }
  return Form::eventFilter(watched, event);
}

void FileForm::OpenRow(const QTreeWidgetItem* row) {
  OpenFolder(PathFromText(row->data(0, kPathRole).toByteArray().toStdString()));
}

void FileForm::OpenFolder(const fs::path& folder) {
  const std::error_code error = ReadFolder(folder).error;
  if (!error) {
    EnterFolder(folder);
    return;
  }
  Drive1->setCurrentIndex(DriveOf(drives_, folder_));
  Warn(this, "このフォルダを開くことができません。\n" + QString::fromStdString(error.message()));
}

void FileForm::EnterFolder(const fs::path& folder) {
  folder_ = folder;
  Drive1->setCurrentIndex(DriveOf(drives_, folder_));
  Dir1_Change();
}

void FileForm::ShowFolder(const std::vector<std::string>& subfolders) {
  Dir1->clear();
  QTreeWidgetItem* above = Dir1->invisibleRootItem();
  const QIcon open = style()->standardIcon(QStyle::SP_DirOpenIcon);
  std::vector<fs::path> way = {folder_};  // up to the root
  while (way.back().has_relative_path()) way.push_back(way.back().parent_path());
  std::ranges::reverse(way);
  for (const fs::path& path : way) {
    const fs::path name = path.has_relative_path() ? path.filename() : path;
    QTreeWidgetItem* row = FolderRow(FileNameText(name.string()), open, path);
    above->addChild(row);
    above = row;
  }
  QList<QTreeWidgetItem*> rows;
  if (folder_.has_relative_path()) {
    rows += FolderRow("..", style()->standardIcon(QStyle::SP_FileDialogToParent),
                      folder_.parent_path());
  }
  const QIcon closed = style()->standardIcon(QStyle::SP_DirIcon);
  for (const std::string& name : subfolders) {
    rows += FolderRow(FileNameText(name), closed, folder_ / PathFromText(name));
  }
  above->addChildren(rows);
  Dir1->expandAll();
  Dir1->setCurrentItem(above);
  Dir1->scrollToItem(above, QAbstractItemView::PositionAtTop);
}

fs::path FileForm::FullPath() const {
  return folder_ / PathFromText(FileNameBytes(txtFileName->text()));
}

void FileForm::RunOrStayOpen() {
  const fs::path path = FullPath();
  try {
    (Main().*action_)(path);
  } catch (const RunTimeError&) {
    throw;
  } catch (const std::exception& error) {
    return ReportFailure(path, error.what());
  }
  Unload();
}

void FileForm::ReportFailure(const fs::path& path, const char* reason) {
  Warn(this,
       "ファイルを開くときにエラーが発生しました。\r\n"
       "ファイルを選んでください。",
       "データ読込", FileNameText(path.string()) + ":\n" + QString::fromUtf8(reason));
  FocusText(txtFileName);
}

}  // namespace quillane
