// The boxes that the program speaks through.
#pragma once

#include <QString>

class QWidget;

namespace quillane {

/// The warning box: exclamation icon, OK button, modal to the application. The details stand below
/// the text.
void Warn(QWidget* parent, const QString& text, const QString& title = QStringLiteral("警告"),
          const QString& details = {});

/// The box of an error that ends the program.
void ShowError(QWidget* parent, const QString& text);

}  // namespace quillane
