#include "wren/desktop/DocumentLabels.h"

#include "wren/core/Host.h"
#include "wren/desktop/EditorTabs.h"
#include "wren/desktop/MainWindow.h"
#include "wren/desktop/StatusLine.h"

#include <QFileInfo>

namespace wren {

DocumentLabels::DocumentLabels(Host& host, MainWindow& window) : host(host), window(window) {}

// The Worksheet is saved without a question, so its tab does not show whether it is saved.
void DocumentLabels::ShowName(const Document& document, bool modified)
{
    if (document.IsWorksheet())
        window.Tabs().SetWorksheetName(document.Id());
    else
        window.Tabs().SetName(document.Id(), document.Path(), modified);
    ShowTitle();
}

void DocumentLabels::ShowTitle()
{
    const Document* document = host.Current();
    const QString path = document == nullptr ? "" : QString::fromStdString(document->Path());
    QString name = document == nullptr ? "" : window.Tabs().NameOf(document->Id());
    if (name.isEmpty())
        name = QFileInfo(path).fileName();
    name.replace("[*]", "[*][*]"); // Qt would take it for the place of its mark of unsaved changes
    window.setWindowFilePath(path);
    window.setWindowTitle(name.isEmpty() ? MainWindow::tr("Wren") : MainWindow::tr("%1 - Wren").arg(name));
}

void DocumentLabels::ShowCaret()
{
    window.Status().Show(host.Current(), window.Tabs().CurrentView());
}

} // namespace wren
