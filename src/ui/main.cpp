// Starts the window program.
#include <QApplication>
#include <QByteArrayList>
#include <QIcon>

#include "ui/frmMain.h"
#include "ui/outside_end.h"

namespace {

/// Raises scale factors below 1 to 1; below it the toolkit leaves windows partly unpainted.
void RaiseScaleFactors() {
  for (const char* name : {"QT_SCALE_FACTOR", "QT_SCREEN_SCALE_FACTORS"}) {
    QByteArrayList factors = qgetenv(name).split(';');  // "2" or "HDMI-1=2;DP-1=1.5"
    for (QByteArray& factor : factors) {
      const qsizetype start = factor.lastIndexOf('=') + 1;
      bool isNumber = false;
      if (factor.mid(start).toDouble(&isNumber) < 1 && isNumber) factor = factor.left(start) + '1';
    }
    if (qEnvironmentVariableIsSet(name)) qputenv(name, factors.join(';'));
  }
}

}  // namespace

int main(int, char** argv) {
  RaiseScaleFactors();
  int onlyTheName = 1;  // no arguments are accepted, not even the toolkit's
  QApplication application(onlyTheName, argv);
  QApplication::setApplicationDisplayName(QString());
  QApplication::setDesktopFileName("quillane");
  QApplication::setQuitOnLastWindowClosed(false);

  QIcon icon;
  for (const int size : {32, 64, 256}) icon.addFile(QString(":/quillane-%1.png").arg(size));
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
