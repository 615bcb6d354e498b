#include "wren/desktop/display/FilePanel.h"

#include "wren/desktop/display/ShownText.h"
#include "wren/desktop/display/UserPosts.h"

#include <QFile>
#include <QFileDialog>

#include <string>
#include <vector>

namespace wren {

namespace {

std::vector<std::string> Paths(const QFileDialog& dialog)
{
    std::vector<std::string> paths;
    for (const QString& path : dialog.selectedFiles())
        paths.push_back(QFile::encodeName(path).toStdString());
    return paths;
}

void Choose(QFileDialog& dialog, const vetch::PanelDescription& panel)
{
    if (panel.directoriesOnly) {
        dialog.setFileMode(QFileDialog::Directory);
        dialog.setOption(QFileDialog::ShowDirsOnly);
    } else {
        dialog.setFileMode(panel.multiple ? QFileDialog::ExistingFiles : QFileDialog::ExistingFile);
    }
    if (!panel.directory.empty())
        dialog.setDirectory(QFile::decodeName(panel.directory.c_str()));
}

} // namespace

QFileDialog* OpenFilePanel(const vetch::PanelDescription& panel, QWidget* parent)
{
    auto* dialog = new QFileDialog(parent, ShownText(panel.title));
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setAttribute(Qt::WA_QuitOnClose, false);
    dialog->setModal(false);
    Choose(*dialog, panel);
    QObject::connect(dialog, &QDialog::finished, dialog, [dialog, handler = panel.handler](int result) {
        PostPanelDone(handler, result == QDialog::Accepted ? Paths(*dialog) : std::vector<std::string>());
    });
    dialog->show();
    return dialog;
}

} // namespace wren
