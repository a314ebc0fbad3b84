#include "ui/outside_end.h"

#include <QGuiApplication>
#include <QtGlobal>
#include <cstdlib>

namespace quillane {
namespace {

constexpr int kEndedBySignal = 128;  // plus the signal number

// On loss of the display the toolkit calls std::exit, or std::abort after a fatal message.
frmMain* rescued = nullptr;
QtMessageHandler toolkitHandler = nullptr;

void RescueOnExit() {
  if (rescued != nullptr) rescued->RescueUnsavedWork();
}

void RescueOnFatalMessage(QtMsgType type, const QMessageLogContext& context, const QString& text) {
  if (type == QtFatalMsg) RescueOnExit();
  toolkitHandler(type, context, text);
}

}  // namespace

OutsideEnd::OutsideEnd(frmMain& window) {
  QObject::connect(&signals_, &EndSignals::Raised, &window,
                   [&window](int number) { window.EndFromOutside(kEndedBySignal + number); });
  // Which of the two a session manager sends depends on the kind of save it asks for.
  for (const auto request :
       {&QGuiApplication::commitDataRequest, &QGuiApplication::saveStateRequest}) {
    QObject::connect(qGuiApp, request, &window, &frmMain::RescueUnsavedWork, Qt::DirectConnection);
  }
  [[maybe_unused]] static const int registered = std::atexit(RescueOnExit);
  rescued = &window;
  toolkitHandler = qInstallMessageHandler(RescueOnFatalMessage);
}

OutsideEnd::~OutsideEnd() {
  qInstallMessageHandler(toolkitHandler);
  rescued = nullptr;
}

}  // namespace quillane
