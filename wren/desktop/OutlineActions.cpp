#include "wren/desktop/OutlineActions.h"

#include "wren/core/Host.h"
#include "wren/desktop/AskedTexts.h"
#include "wren/desktop/EditorTabs.h"
#include "wren/desktop/Landing.h"
#include "wren/desktop/MainWindow.h"
#include "wren/desktop/editor/CodeLexer.h"
#include "wren/desktop/editor/CodeView.h"
#include "wren/desktop/symbols/OutlinePanel.h"
#include "wren/desktop/symbols/PaletteQuestions.h"
#include "wren/desktop/symbols/ScopeBar.h"
#include "wren/desktop/symbols/SymbolEngine.h"

#include <QPointer>

#include <utility>

namespace wren {

OutlineActions::OutlineActions(Parts parts) : parts(parts)
{
    connect(&scopes, &ScopeBars::Asked, this, [this](const CodeView& view, const std::vector<PaletteItem>& items) {
        if (&view == this->parts.window.Tabs().CurrentView())
            emit SiblingsAsked(items);
    });
    connect(&parts.texts, &AskedTexts::Settled, this, &OutlineActions::Ask);
}

OutlinePanel& OutlineActions::Panel()
{
    if (panel != nullptr)
        return *panel;
    panel = new OutlinePanel(&parts.window);
    isNew = !parts.window.AddPanel(Qt::LeftDockWidgetArea, panel);
    connect(panel, &OutlinePanel::Chosen, this, [this](const PaletteItem& item) {
        parts.landing.GoTo(item);
        parts.window.Tabs().FocusCurrent();
    });
    connect(panel, &OutlinePanel::Left, &parts.window.Tabs(), &EditorTabs::FocusCurrent);
    panel->hide();
    connect(panel, &OutlinePanel::visibilityChanged, this, [this] { emit Shown(panel->isVisible()); });
    return *panel;
}

bool OutlineActions::IsOutlined() const
{
    return panel != nullptr && panel->isVisible();
}

void OutlineActions::Show(bool shown)
{
    Panel().setVisible(shown);
    if (!shown)
        return parts.window.Tabs().FocusCurrent();
    if (std::exchange(isNew, false))
        parts.window.ShareHeight(panel);
    Ask();
    Panel().setFocus();
}

void OutlineActions::Ask()
{
    if (!IsOutlined() && Scopes() == nullptr)
        return;
    const AskedTexts::Asked asked = parts.texts.AboutCurrent();
    if (asked.view == nullptr) {
        if (IsOutlined())
            panel->Show({});
        return;
    }
    const auto show = [this, view = QPointer(asked.view)](const std::vector<PaletteItem>& items) {
        if (panel != nullptr)
            panel->Show(items);
        if (ScopeBar* bar = view == nullptr ? nullptr : scopes.BarOf(*view))
            bar->Show(items);
    };
    parts.engine.Ask(SymbolEngine::Topic::Text, [show, text = asked.text](const Question& question) {
        const PaletteAnswer answer = SymbolsOfText("", text, question);
        question.tell([show, items = answer.items] { show(items); });
    });
    CaretMoved();
}

void OutlineActions::CaretMoved()
{
    const Document* document = parts.host.Current();
    const CodeView* view = parts.window.Tabs().CurrentView();
    if (document == nullptr || view == nullptr)
        return;
    const long line = document->LineAt(view->Caret()) + 1;
    if (IsOutlined())
        panel->FollowCaret(line);
    if (ScopeBar* bar = scopes.BarOf(*view))
        bar->FollowCaret(line);
}

void OutlineActions::Raised()
{
    Renamed();
    Ask();
}

void OutlineActions::ShowScopes(bool shown)
{
    showsScopes = shown;
    Renamed();
    Ask();
}

void OutlineActions::Renamed()
{
    const Document* document = parts.host.Current();
    CodeView* view = parts.window.Tabs().CurrentView();
    if (view != nullptr && document != nullptr)
        scopes.Update(*view, showsScopes && CodeLexer::IsCode(document->Path()));
}

ScopeBar* OutlineActions::Bar() const
{
    const CodeView* view = parts.window.Tabs().CurrentView();
    return view == nullptr ? nullptr : scopes.BarOf(*view);
}

const ScopeBar* OutlineActions::Scopes() const
{
    return Bar();
}

void OutlineActions::OpenScope()
{
    if (ScopeBar* bar = Bar())
        bar->OpenLast();
}

} // namespace wren
