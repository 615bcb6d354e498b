// Boxes that tell and ask something.
#pragma once

#include <QMessageBox>

namespace wren {

// What the user has answered. The text is shown as it is: it holds names of files, which may look like markup, and
// markup could have pictures fetched into it.
QMessageBox::StandardButton AskPlainly(QMessageBox::Icon icon, QWidget* parent, const QString& text,
                                       QMessageBox::StandardButtons buttons = QMessageBox::Ok,
                                       QMessageBox::StandardButton usual = QMessageBox::NoButton);

} // namespace wren
