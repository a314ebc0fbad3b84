// Message boxes.
#pragma once

#include <QString>

class QWidget;

namespace quillane {

/// Shows a warning with the exclamation icon and an OK button, modal to the application. The
/// details stand below the text.
void Warn(QWidget* parent, const QString& text, const QString& title = "警告",
          const QString& details = {});

/// Shows an error that ends the program.
void ShowError(QWidget* parent, const QString& text);

}  // namespace quillane
