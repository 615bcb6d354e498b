#include "wren/desktop/ReplaceActions.h"

#include "wren/core/Host.h"
#include "wren/desktop/EditorTabs.h"
#include "wren/desktop/MainWindow.h"
#include "wren/desktop/NoticeBar.h"
#include "wren/desktop/SymbolActions.h"
#include "wren/desktop/editor/CodeView.h"
#include "wren/desktop/finder/ReplaceFile.h"
#include "wren/desktop/finder/ReplacePanel.h"
#include "wren/desktop/symbols/MatchesPanel.h"
#include "wren/desktop/symbols/RowText.h"

#include <algorithm>
#include <utility>

namespace wren {

ReplaceActions::ReplaceActions(Host& host, MainWindow& window, SymbolActions& symbols)
    : host(host), window(window), symbols(symbols)
{
    turn.setInterval(0);
    connect(&turn, &QTimer::timeout, this, &ReplaceActions::ApplyNext);
}

ReplacePanel& ReplaceActions::Panel()
{
    if (panel != nullptr)
        return *panel;
    panel = new ReplacePanel(&window);
    window.addDockWidget(Qt::BottomDockWidgetArea, panel);
    window.tabifyDockWidget(&symbols.Matches(), panel); // below the bar
    connect(panel, &ReplacePanel::ReplaceAsked, this, &ReplaceActions::Apply);
    connect(panel, &ReplacePanel::Left, &window.Tabs(), &EditorTabs::FocusCurrent);
    connect(panel, &ReplacePanel::Chosen, this, [this](const FileReplacements& file, const FoundLine& line) {
        FoundPlace place;
        place.path = file.path;
        place.line = line.line;
        place.column = line.column;
        place.nameSize = line.size;
        symbols.TheLanding().GoTo(place);
    });
    return *panel;
}

void ReplaceActions::Preview(const FilesAsked& asked)
{
    if (IsApplying())
        return;
    Panel().Begin();
    symbols.Engine().Ask(SymbolEngine::Topic::Replacement, [this, asked](const Question& question) {
        const auto part = [&](FileReplacements file) {
            question.tell([this, file = std::move(file)]() mutable { Panel().Add(std::move(file)); });
        };
        const FilesAnswer answer = ReplacementsInFiles(asked, question, part);
        question.tell([this, answer] {
            Panel().End(answer.more);
            if (!answer.problem.empty())
                emit Failed(Shown(answer.problem));
        });
    });
}

void ReplaceActions::Apply()
{
    if (IsApplying())
        return;
    std::vector<ReplaceModel::Chosen> chosen = Panel().Model().AllChosen();
    waiting.assign(std::make_move_iterator(chosen.begin()), std::make_move_iterator(chosen.end()));
    replaced = 0;
    files = 0;
    refused.clear();
    Panel().Finish(tr("Replacing \u2026"));
    turn.start();
}

void ReplaceActions::ApplyNext()
{
    if (!waiting.empty()) {
        const ReplaceModel::Chosen next = std::move(waiting.front());
        waiting.pop_front();
        const std::string problem = ReplaceIn(next);
        if (problem.empty()) {
            replaced += next.edits.size();
            ++files;
        } else {
            refused.append(Shown(problem));
        }
    }
    if (!waiting.empty())
        return;
    turn.stop();
    Tell();
}

std::string ReplaceActions::ReplaceIn(const ReplaceModel::Chosen& chosen)
{
    const Document* open = host.AllDocuments().FindByPath(chosen.file.path);
    return open == nullptr ? ReplaceInFile(chosen.file, chosen.edits) : ReplaceInText(chosen, open->Id());
}

// From the end, so that what was found before stays where it was found.
std::string ReplaceActions::ReplaceInText(const ReplaceModel::Chosen& chosen, long id)
{
    Document& document = *host.AllDocuments().Find(id);
    if (!IsTextOf(chosen.file, document.Text()))
        return chosen.file.path + " has changed since the search";
    host.Events().DocumentChanged(); // the plug-in's windows point into the text that goes
    document.BeginUndo(document.Selected(), "Replace in Files");
    std::for_each(chosen.edits.rbegin(), chosen.edits.rend(), [&](const Replacement& edit) {
        document.Delete(static_cast<long>(edit.start), static_cast<long>(edit.size));
        document.Insert(static_cast<long>(edit.start), edit.with);
    });
    document.CloseUndo();
    return "";
}

void ReplaceActions::Tell()
{
    Panel().Finish(tr("Replaced %1 matches in %2 files. Open texts are not saved yet.").arg(replaced).arg(files));
    for (const QString& problem : refused)
        window.Notices().Tell(tr("Nothing was replaced: %1.").arg(problem));
}

} // namespace wren
