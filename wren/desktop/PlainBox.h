// Message boxes.
#pragma once

#include <QMessageBox>

namespace wren {

// Shows the text and returns the user's answer. The text is shown as it is: names of files in it may look like markup,
// and markup could fetch pictures.
QMessageBox::StandardButton AskPlainly(QMessageBox::Icon icon, QWidget* parent, const QString& text,
                                       QMessageBox::StandardButtons buttons = QMessageBox::Ok,
                                       QMessageBox::StandardButton usual = QMessageBox::NoButton);

} // namespace wren
