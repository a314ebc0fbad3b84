// Starts the window program.
#include <QApplication>
#include <QIcon>

#include "ui/frmMain.h"
#include "ui/outside_end.h"

int main(int, char** argv) {
  int onlyTheName = 1;  // the program takes no arguments, not even the toolkit's
  QApplication application(onlyTheName, argv);
  QApplication::setApplicationDisplayName(QString());
  QApplication::setDesktopFileName(QStringLiteral("quillane"));
  QApplication::setQuitOnLastWindowClosed(false);

  QIcon icon;
  for (const int size : {32, 64, 256}) icon.addFile(QStringLiteral(":/quillane-%1.png").arg(size));
  QApplication::setWindowIcon(icon);

  quillane::frmMain window;
  int status = 0;
  QObject::connect(&window, &quillane::frmMain::ProgramEnds, &application, [&status](int exit) {
    status = exit;
    QCoreApplication::exit(exit);
  });
  const quillane::OutsideEnd outsideEnd(window);
  window.show();
  return window.HasEnded() ? status : QApplication::exec();
}
