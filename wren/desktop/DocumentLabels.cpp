#include "wren/desktop/DocumentLabels.h"

#include "wren/core/Host.h"
#include "wren/desktop/EditorTabs.h"
#include "wren/desktop/MainWindow.h"
#include "wren/desktop/StatusLine.h"
#include "wren/desktop/editor/CodeView.h"

#include <QDir>
#include <QFileInfo>

#include <cerrno>
#include <fcntl.h>
#include <unistd.h>

namespace wren {

namespace {

// For people: "~/src".
QString DirectoryOf(const QString& path)
{
    const QString directory = QFileInfo(path).path();
    const QString home = QDir::homePath();
    const bool isBelow = directory == home || directory.startsWith(home + '/');
    return isBelow ? '~' + directory.mid(home.size()) : directory;
}

bool IsReadOnly(const std::string& path)
{
    return ::faccessat(AT_FDCWD, path.c_str(), W_OK, AT_EACCESS) != 0 && (errno == EACCES || errno == EROFS);
}

// Qt would take it for the place of its mark of unsaved changes.
QString Literal(QString name)
{
    return name.replace("[*]", "[*][*]");
}

} // namespace

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
    window.setWindowFilePath(path);
    window.setWindowModified(false);
    if (path.isEmpty())
        return window.setWindowTitle(MainWindow::tr("Wren"));
    if (document->IsWorksheet())
        return window.setWindowTitle(MainWindow::tr("%1 - Wren").arg(Literal(QFileInfo(path).fileName())));
    QString title = Literal(QFileInfo(path).fileName()) + "[*] (" + Literal(DirectoryOf(path));
    title += (IsReadOnly(document->Path()) ? MainWindow::tr(", read-only") : QString()) + ')';
    const CodeView* view = window.Tabs().ViewOf(document->Id());
    window.setWindowTitle(MainWindow::tr("%1 - Wren").arg(title));
    window.setWindowModified(view != nullptr && view->IsModified());
}

void DocumentLabels::ShowCaret()
{
    window.Status().Show(host.Current(), window.Tabs().CurrentView());
}

} // namespace wren
