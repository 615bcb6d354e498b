#include "wren/desktop/Printing.h"

#include "wren/core/Document.h"
#include "wren/desktop/PlainBox.h"
#include "wren/desktop/editor/CodeView.h"
#include "wren/desktop/editor/TextPrinter.h"

#include <QCoreApplication>
#include <QPrintDialog>

namespace wren {

namespace {

QString TrPrinting(const char* text)
{
    return QCoreApplication::translate("Printing", text);
}

QString PrintedName(const Document& document)
{
    return document.Path().empty() ? TrPrinting("untitled") : QString::fromStdString(document.Path());
}

} // namespace

void PrintAsked(QWidget& window, const Document& document, CodeView& view)
{
    TextPrinter printer(PrintedName(document));
    QPrintDialog dialog(&printer, &window);
    const Selection selected = document.Selected();
    dialog.setOption(QAbstractPrintDialog::PrintPageRange, false);
    dialog.setOption(QAbstractPrintDialog::PrintSelection, selected.start != selected.end);
    if (dialog.exec() != QDialog::Accepted)
        return;
    if (!printer.Print(view))
        AskPlainly(QMessageBox::Critical, &window, TrPrinting("%1 could not be printed.").arg(PrintedName(document)));
}

} // namespace wren
