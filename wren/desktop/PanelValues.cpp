#include "wren/desktop/PanelValues.h"

#include <QApplication>
#include <QCheckBox>
#include <QFocusEvent>
#include <QLineEdit>
#include <QPlainTextEdit>

namespace wren {

namespace {

void Leave(QWidget& field)
{
    QFocusEvent left(QEvent::FocusOut, Qt::OtherFocusReason);
    QApplication::sendEvent(&field, &left);
}

} // namespace

PanelValues::PanelValues(const QWidget& panel)
{
    for (QCheckBox* box : panel.findChildren<QCheckBox*>())
        boxes.emplace_back(box, box->isChecked());
    for (QLineEdit* line : panel.findChildren<QLineEdit*>())
        lines.emplace_back(line, line->text());
    for (QPlainTextEdit* area : panel.findChildren<QPlainTextEdit*>())
        areas.emplace_back(area, area->toPlainText());
}

void PanelValues::Restore() const
{
    for (const auto& [box, wasOn] : boxes)
        if (!box.isNull() && box->isChecked() != wasOn)
            box->click();
    for (const auto& [line, text] : lines) {
        if (line.isNull() || line->text() == text)
            continue;
        line->setText(text);
        emit line->textEdited(text); // which setText() does not
        Leave(*line);
    }
    for (const auto& [area, text] : areas) {
        if (area.isNull() || area->toPlainText() == text)
            continue;
        area->setPlainText(text);
        Leave(*area);
    }
}

} // namespace wren
