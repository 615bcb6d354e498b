#include "wren/desktop/display/Questions.h"

#include "wren/desktop/display/FontTable.h"
#include "wren/desktop/display/KeyInput.h"
#include "wren/desktop/display/ShownText.h"
#include "wren/desktop/display/UserPosts.h"

#include <QAction>
#include <QFile>
#include <QFileDialog>
#include <QKeySequence>
#include <QMenu>
#include <QMessageBox>
#include <QPointer>
#include <QPushButton>

#include <algorithm>
#include <cmath>
#include <string>
#include <vector>

namespace wren {

namespace {

std::vector<QAbstractButton*> AddButtons(QMessageBox& box, const vetch::AlertDescription& alert)
{
    std::vector<QAbstractButton*> buttons;
    QPushButton* last = nullptr;
    for (const std::string& button : alert.buttons) {
        last = box.addButton(ShownLabel(button), QMessageBox::ActionRole); // of one role, so that they keep their order
        buttons.push_back(last);
    }
    box.setDefaultButton(last);
    box.setEscapeButton(buttons.front());
    return buttons;
}

// Only shown, not set as the action's own: the editor's menus have the same shortcuts.
QString LabelWithShortcut(const vetch::MenuRow& row, const ModifierKeys& keys)
{
    const QString label = ShownLabel(row.label);
    const QKeySequence shortcut = SequenceOf(row.key, row.modifiers, keys);
    return shortcut.isEmpty() ? label : label + '\t' + shortcut.toString(QKeySequence::NativeText);
}

std::vector<QAction*> AddRows(QMenu& menu, const vetch::MenuDescription& description, const ModifierKeys& keys)
{
    std::vector<QAction*> actions;
    for (const vetch::MenuRow& row : description.rows) {
        if (row.label.empty()) {
            actions.push_back(menu.addSeparator());
        } else {
            actions.push_back(menu.addAction(LabelWithShortcut(row, keys)));
            actions.back()->setEnabled(row.enabled);
        }
    }
    return actions;
}

template <class Widget>
long PlaceOf(const std::vector<Widget*>& widgets, const Widget* chosen, long none)
{
    const auto found = std::ranges::find(widgets, chosen);
    return chosen == nullptr || found == widgets.end() ? none : static_cast<long>(found - widgets.begin());
}

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

long AskAlert(const vetch::AlertDescription& alert, QWidget* parent)
{
    // Its parent may be deleted while it asks, and takes it along.
    const QPointer<QMessageBox> box = new QMessageBox(parent);
    box->setIcon(QMessageBox::Warning);
    box->setTextFormat(Qt::PlainText);
    box->setWindowTitle(ShownText(alert.title));
    box->setText(ShownText(alert.text));
    const std::vector<QAbstractButton*> buttons = AddButtons(*box, alert);
    box->exec();
    const long answer =
        box == nullptr ? 0 : PlaceOf(buttons, static_cast<const QAbstractButton*>(box->clickedButton()), 0);
    delete box;
    return answer;
}

std::optional<long> AskMenu(const vetch::MenuDescription& description, const ModifierKeys& keys, QWidget* parent)
{
    const QPointer<QMenu> menu = new QMenu(parent);
    menu->setFont(FontTable::FontOf(description.fontSize));
    const std::vector<QAction*> actions = AddRows(*menu, description, keys);
    const QPoint where(static_cast<int>(std::lround(description.where.x)),
                       static_cast<int>(std::lround(description.where.y)));
    const QAction* chosen = menu->exec(where);
    const long row = menu == nullptr ? -1 : PlaceOf(actions, chosen, -1);
    delete menu;
    return row < 0 ? std::nullopt : std::optional(row);
}

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
