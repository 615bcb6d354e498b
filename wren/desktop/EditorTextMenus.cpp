// The items of the menus that act on the text of the current view.

#include "wren/core/Host.h"
#include "wren/desktop/EditorMenus.h"
#include "wren/desktop/EditorTabs.h"
#include "wren/desktop/MainWindow.h"
#include "wren/desktop/StatusLine.h"
#include "wren/desktop/editor/CodeView.h"
#include "wren/desktop/editor/TextPanes.h"

#include <QAction>
#include <QMenu>
#include <QStatusBar>

namespace wren {

namespace {

constexpr int kMessageShown = 5000; // milliseconds

} // namespace

void EditorMenus::FillLines(QMenu* menu)
{
    const auto add = [&](LineCommand command, const QString& label, const char* key) {
        Add(menu, label, "", *key == '\0' ? QList<QKeySequence>() : QList{QKeySequence(key)}, [this, command] {
            const Document* document = parts.host.Current();
            if (CodeView* view = parts.window.Tabs().CurrentView(); view != nullptr && document != nullptr)
                view->Apply(command, CommentMark(document->Path()));
        });
    };
    add(LineCommand::ToggleComment, tr("&Comment or Uncomment"), "Ctrl+/");
    add(LineCommand::MoveUp, tr("Move &Up"), "Alt+Up");
    add(LineCommand::MoveDown, tr("Move &Down"), "Alt+Down");
    add(LineCommand::Duplicate, tr("Du&plicate"), "Ctrl+Shift+D");
    add(LineCommand::Delete, tr("D&elete"), "Ctrl+Shift+K");
    add(LineCommand::Join, tr("&Join"), "Ctrl+J");
    menu->addSeparator();
    add(LineCommand::UpperCase, tr("U&pper Case"), "");
    add(LineCommand::LowerCase, tr("&Lower Case"), "");
}

void EditorMenus::FillCarets(QMenu* menu)
{
    const auto add = [&](CaretCommand command, const QString& label, const char* key) {
        Add(menu, label, "", {QKeySequence(key)}, [this, command] {
            if (CodeView* view = parts.window.Tabs().CurrentView())
                view->Apply(command);
        });
    };
    add(CaretCommand::NextMatch, tr("Select the &Next Same Text Too"), "Ctrl+D");
    add(CaretCommand::AllMatches, tr("Select &All Same Text"), "Alt+F3");
    add(CaretCommand::LineAbove, tr("Caret on the Line A&bove"), "Ctrl+Alt+Up");
    add(CaretCommand::LineBelow, tr("Caret on the Line Belo&w"), "Ctrl+Alt+Down");
}

// The status line has the same menu.
void EditorMenus::FillEnds(QMenu* menu)
{
    const auto add = [&](LineEnds ends, const QString& label) {
        QAction* action = Add(menu, label, "", {}, nullptr);
        action->setCheckable(true);
        const auto show = [this, ends, action] {
            const CodeView* view = parts.window.Tabs().CurrentView();
            action->setEnabled(view != nullptr);
            action->setChecked(view != nullptr && !view->HasMixedEnds() && view->Ends() == ends);
        };
        connect(action, &QAction::triggered, this, [this, ends, show] {
            CodeView* view = parts.window.Tabs().CurrentView();
            if (view == nullptr)
                return;
            view->UseEnds(ends);
            parts.window.Status().Show(parts.host.Current(), view);
            show();
        });
        connect(menu, &QMenu::aboutToShow, action, show);
    };
    add(LineEnds::Unix, tr("&LF (Unix)"));
    add(LineEnds::Windows, tr("C&R LF (Windows)"));
    add(LineEnds::Mac, tr("&CR (Old Macs)"));
    parts.window.Status().SetEndsMenu(menu);
}

// The status line has the same menu.
void EditorMenus::FillEncodings(QMenu* menu)
{
    FillReloads(menu->addMenu(tr("&Reload as")));
    FillSaves(menu->addMenu(tr("&Save in")));
    parts.window.Status().SetEncodingMenu(menu);
}

// Whether the file has a mark is seen in it.
void EditorMenus::FillReloads(QMenu* menu)
{
    for (const TextEncoding& encoding : Encodings()) {
        const TextEncoding plain = {encoding.name, false};
        if (plain == encoding || encoding.name != TextEncoding().name)
            Add(menu, QString::fromStdString(LabelOf(plain)), "", {},
                [this, plain] { parts.actions.documents.ReloadIn(plain); });
    }
    connect(menu, &QMenu::aboutToShow, menu, [this, menu] {
        const Document* document = parts.host.Current();
        for (QAction* action : menu->actions())
            action->setEnabled(document != nullptr && !document->Path().empty() && !document->IsWorksheet());
    });
}

void EditorMenus::FillSaves(QMenu* menu)
{
    for (const TextEncoding& encoding : Encodings()) {
        QAction* action = Add(menu, QString::fromStdString(LabelOf(encoding)), "", {},
                              [this, encoding] { parts.actions.documents.SaveIn(encoding); });
        action->setCheckable(true);
        connect(menu, &QMenu::aboutToShow, action, [this, action, encoding] {
            const Document* document = parts.host.Current();
            action->setEnabled(document != nullptr && !document->IsWorksheet());
            action->setChecked(document != nullptr && document->Encoding() == encoding);
        });
    }
}

// The preferences have them as well.
void EditorMenus::AddTextSwitches(QMenu* menu)
{
    menu->addSeparator();
    const auto add = [&](bool PreferenceValues::*value, const QString& label, const QList<QKeySequence>& keys) {
        QAction* action = Add(menu, label, "", keys, nullptr);
        action->setCheckable(true);
        const auto show = [this, value, action] { action->setChecked(parts.actions.preferences.Values().*value); };
        connect(action, &QAction::triggered, this, [this, value, show] {
            parts.actions.preferences.Change([&](PreferenceValues& values) { values.*value = !(values.*value); });
            show();
        });
        connect(menu, &QMenu::aboutToShow, action, show);
    };
    add(&PreferenceValues::wrapsLines, tr("&Wrap Long Lines"), {QKeySequence(tr("Alt+Z"))});
    add(&PreferenceValues::showsBlanks, tr("Show &Blanks and Tabs"), {});
    add(&PreferenceValues::showsGuides, tr("Show Levels of &Indentation"), {});
}

// A second choice of the same item takes the other part away.
void EditorMenus::AddSplits(QMenu* menu)
{
    menu->addSeparator();
    const auto add = [&](Split split, const QString& label, const QKeySequence& key) {
        QAction* action = Add(menu, label, "", {key}, nullptr);
        action->setCheckable(true);
        const auto show = [this, split, action] {
            const TextPanes* panes = parts.window.Tabs().CurrentPanes();
            action->setChecked(panes != nullptr && panes->IsSplit() == split);
        };
        connect(action, &QAction::triggered, this, [this, split, show] {
            if (TextPanes* panes = parts.window.Tabs().CurrentPanes())
                panes->SetSplit(panes->IsSplit() == split ? Split::None : split);
            show();
        });
        connect(menu, &QMenu::aboutToShow, action, show);
    };
    add(Split::Beside, tr("Two Parts Besi&de Each Other"), QKeySequence(tr("Ctrl+\\")));
    add(Split::Below, tr("T&wo Parts above Each Other"), QKeySequence(tr("Ctrl+Alt+\\")));
    Add(menu, tr("Go to the O&ther Part"), "", {QKeySequence(tr("F6"))}, [this] {
        if (TextPanes* panes = parts.window.Tabs().CurrentPanes())
            panes->Exchange();
    });
    menu->addSeparator();
}

void EditorMenus::FillFolds(QMenu* menu)
{
    const auto add = [&](FoldCommand command, const QString& label, const QList<QKeySequence>& keys) {
        Add(menu, label, "", keys, [this, command] {
            CodeView* view = parts.window.Tabs().CurrentView();
            if (view == nullptr)
                return;
            view->Apply(command);
            if (command == FoldCommand::All && view->length() > folds::kMostForAll)
                parts.window.statusBar()->showMessage(tr("The text is too large to fold all of it."), kMessageShown);
        });
    };
    add(FoldCommand::Toggle, tr("&Fold or Unfold"), {QKeySequence("Ctrl+Shift+[")});
    add(FoldCommand::All, tr("Fold &All"), {});
    add(FoldCommand::None, tr("&Unfold All"), {QKeySequence("Ctrl+Shift+]")});
}

void EditorMenus::FillBookmarks(QMenu* menu)
{
    const auto add = [&](BookmarkCommand command, const QString& label, const QList<QKeySequence>& keys) {
        Add(menu, label, "", keys, [this, command] {
            if (CodeView* view = parts.window.Tabs().CurrentView())
                view->Apply(command);
        });
    };
    add(BookmarkCommand::Toggle, tr("&Set or Remove"), {QKeySequence(tr("Ctrl+F2"))});
    add(BookmarkCommand::Next, tr("&Next"), {QKeySequence(tr("Alt+PgDown"))});
    add(BookmarkCommand::Previous, tr("&Previous"), {QKeySequence(tr("Alt+PgUp"))});
    add(BookmarkCommand::RemoveAll, tr("&Remove All"), {});
}

} // namespace wren
