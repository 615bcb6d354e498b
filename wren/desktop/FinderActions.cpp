#include "wren/desktop/FinderActions.h"

#include "base/Identifier.h"
#include "wren/core/Host.h"
#include "wren/desktop/EditorTabs.h"
#include "wren/desktop/MainWindow.h"
#include "wren/desktop/SymbolActions.h"
#include "wren/desktop/editor/CodeView.h"
#include "wren/desktop/finder/FilesFindBar.h"
#include "wren/desktop/symbols/FilesQuestion.h"
#include "wren/desktop/symbols/MatchesPanel.h"
#include "wren/desktop/symbols/RowText.h"

#include <algorithm>
#include <utility>

namespace wren {

namespace {

constexpr long kLongestWanted = 1000; // bytes of a selection that are looked for

enum class Texts { Changed, All };

OpenTexts TextsOf(Host& host, EditorTabs& tabs, Texts which)
{
    OpenTexts texts;
    for (const Document* document : host.AllDocuments().All())
        if (const CodeView* view = tabs.ViewOf(document->Id());
            view != nullptr && (which == Texts::All || view->IsModified() || document->Encoding() != TextEncoding()))
            texts[document->Path()] = std::make_shared<const std::string>(document->Text());
    return texts;
}

} // namespace

FinderActions::FinderActions(Host& host, MainWindow& window, SymbolActions& symbols)
    : host(host), window(window), symbols(symbols), replacing(host, window, symbols)
{
    connect(&replacing, &ReplaceActions::Failed, this, [this](const QString& problem) { Bar().Tell(problem); });
}

FilesFindBar& FinderActions::Bar()
{
    if (bar != nullptr)
        return *bar;
    bar = new FilesFindBar(&window);
    if (!window.AddPanel(Qt::BottomDockWidgetArea, bar))
        window.splitDockWidget(bar, &symbols.Matches(), Qt::Vertical);
    connect(bar, &FilesFindBar::Asked, this, &FinderActions::Find);
    connect(bar, &FilesFindBar::PreviewAsked, this, &FinderActions::Preview);
    connect(bar, &FilesFindBar::Left, &window.Tabs(), &EditorTabs::FocusCurrent);
    return *bar;
}

std::string FinderActions::AtCaret() const
{
    const CodeView* view = window.Tabs().CurrentView();
    const Document* document = host.Current();
    if (view == nullptr || document == nullptr)
        return "";
    const Selection selected = ViewText(*view).Selected();
    const long length = std::min(selected.end - selected.start, kLongestWanted);
    const std::string text = document->Text(selected.start, selected.start + length);
    if (!text.empty())
        return text.find_first_of("\r\n") == std::string::npos ? text : "";
    const long line = document->LineAt(view->Caret());
    const long start = document->LineStart(line);
    const std::string around = document->Text(start, document->LineEnd(line));
    return std::string(base::IdentifierAround(around, static_cast<size_t>(view->Caret() - start)));
}

void FinderActions::Open()
{
    const std::string wanted = AtCaret();
    Bar().Open(wanted);
}

void FinderActions::OpenReplace()
{
    Bar().ShowReplacement();
    Open();
}

std::optional<FilesAsked> FinderActions::AskedInBar()
{
    const FilesWanted wanted = Bar().Wanted();
    if (wanted.text.empty()) {
        Bar().Tell(tr("There is nothing to search for."));
        return std::nullopt;
    }
    const TextQuery text{wanted.text, wanted.isExpression, wanted.matchesCase, wanted.wholeWords};
    if (const auto pattern = TextPattern::Compile(text); !pattern) {
        Bar().Tell(Shown(pattern.Failure().Message()));
        return std::nullopt;
    }
    Bar().Tell("");
    const Document* current = host.Current();
    return FilesAsked{text,
                      wanted.globs,
                      wanted.folder,
                      current == nullptr ? "" : current->Path(),
                      TextsOf(host, window.Tabs(), Texts::Changed),
                      std::nullopt};
}

void FinderActions::Find()
{
    const std::optional<FilesAsked> asked = AskedInBar();
    if (!asked)
        return;
    const auto find = [this, asked = *asked](const Question& question, const SymbolActions::PartSink& part) {
        const FilesAnswer answer = FindInFiles(asked, question, part);
        if (!answer.problem.empty())
            question.tell([this, problem = answer.problem] { Bar().Tell(Shown(problem)); });
        return answer.more;
    };
    symbols.ListPlaces(tr("matches of \u201c%1\u201d").arg(Shown(asked->text.text)), find);
}

// What is found in an open text is replaced in it, so its text counts, whatever its file has.
void FinderActions::Preview()
{
    std::optional<FilesAsked> asked = AskedInBar();
    if (!asked)
        return;
    asked->open = TextsOf(host, window.Tabs(), Texts::All);
    asked->replacement = Bar().Wanted().with;
    replacing.Preview(*asked);
}

} // namespace wren
