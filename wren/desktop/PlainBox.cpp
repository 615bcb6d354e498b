#include "wren/desktop/PlainBox.h"

#include <QCoreApplication>

namespace wren {

QMessageBox::StandardButton AskPlainly(QMessageBox::Icon icon, QWidget* parent, const QString& text,
                                       QMessageBox::StandardButtons buttons, QMessageBox::StandardButton usual)
{
    QMessageBox box(icon, QCoreApplication::translate("PlainBox", "Wren"), text, buttons, parent);
    box.setTextFormat(Qt::PlainText);
    box.setDefaultButton(usual);
    return static_cast<QMessageBox::StandardButton>(box.exec());
}

} // namespace wren
