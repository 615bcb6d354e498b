#include "wren/desktop/WorksheetActions.h"

#include "wren/core/Host.h"
#include "wren/core/UserDirectories.h"
#include "wren/desktop/EditorTabs.h"
#include "wren/desktop/PlainBox.h"
#include "wren/desktop/editor/CodeView.h"
#include "wren/desktop/state/WorksheetRunner.h"
#include "wren/text/TextChange.h"

#include <algorithm>
#include <string_view>

namespace wren {

WorksheetActions::WorksheetActions(Host& host, EditorTabs& tabs)
    : host(host), tabs(tabs), runner(new WorksheetRunner(this))
{
    connect(runner, &WorksheetRunner::Output, this, &WorksheetActions::Put);
    connect(runner, &WorksheetRunner::Ended, this, &WorksheetActions::Ended);
}

WorksheetActions::~WorksheetActions() = default;

std::string WorksheetActions::File()
{
    const std::string directory = StateDirectory();
    return directory.empty() ? "" : directory + "/Worksheet";
}

bool WorksheetActions::IsWorksheet(const Document* wanted) const
{
    return wanted != nullptr && wanted->IsWorksheet();
}

bool WorksheetActions::IsRunning() const
{
    return runner->IsRunning();
}

void WorksheetActions::RunLines()
{
    Document* current = host.Current();
    if (!IsWorksheet(current))
        return;
    const std::string text = current->Text();
    const Selection selected = current->Selected();
    const LineRange lines = LinesToRun(text, selected.start, selected.end);
    if (!runner->Run(text.substr(lines.start, lines.end - lines.start), host.TheWorksheet().Directory())) {
        emit Told(tr("A command of the Worksheet is still running: stop it first."));
        return;
    }
    document = current->Id();
    printed = 0;
    column = 0;
    end = lines.end;
    if (end == current->Length())
        current->Insert(end, "\n");
    end = std::min(end + 1, current->Length());
    current->Select(end, end);
    emit StateChanged();
}

void WorksheetActions::Stop()
{
    runner->Stop();
}

// Without the Worksheet, or the editor, the command's output has nowhere to go.
bool WorksheetActions::MayStop(QWidget* window)
{
    if (!IsRunning())
        return true;
    const bool stops =
        AskPlainly(QMessageBox::Question, window, tr("A command of the Worksheet is still running. Stop it?"),
                   QMessageBox::Yes | QMessageBox::No, QMessageBox::No) == QMessageBox::Yes;
    if (stops)
        Stop();
    return stops;
}

// The user may write meanwhile, also above the output.
void WorksheetActions::TextMoves(long changed, long offset, long removed, long inserted)
{
    if (changed == document)
        end = MovedPlace(end, {offset, removed, inserted});
}

void WorksheetActions::Put(const QByteArray& output)
{
    const long room = std::max(kMostOutput - printed, 0L);
    printed += output.size();
    Document* target = host.AllDocuments().Find(document);
    if (target == nullptr || room == 0)
        return;
    const std::string_view fits(output.constData(), static_cast<size_t>(std::min<long>(output.size(), room)));
    end = std::min(end, target->Length());
    const bool caretFollows = target->Selected() == Selection{end, end};
    const std::string lines = InLines(fits);
    target->Insert(end, lines);
    end += static_cast<long>(lines.size());
    if (!caretFollows)
        return;
    target->Select(end, end);
    if (CodeView* view = tabs.ViewOf(document))
        view->GoTo(end);
}

// Breaks lines that are too long to be drawn in a reasonable time.
std::string WorksheetActions::InLines(std::string_view output)
{
    std::string lines;
    while (!output.empty()) {
        const size_t newline = output.find('\n');
        const size_t line = newline == std::string_view::npos ? output.size() : newline + 1;
        const size_t length = std::min(line, kLongestLine - column);
        lines += output.substr(0, length);
        output.remove_prefix(length);
        column += length;
        if (lines.back() == '\n') {
            column = 0;
        } else if (column == kLongestLine) {
            lines += '\n';
            column = 0;
        }
    }
    return lines;
}

void WorksheetActions::Ended(int status, bool stopped)
{
    const QString all = stopped       ? tr("The command was stopped.")
                        : status != 0 ? tr("The command ended with status %1.").arg(status)
                                      : tr("The command has ended.");
    const long leftOut = printed - kMostOutput;
    emit Told(leftOut <= 0 ? all
                           : tr("%1 The last %2 MB of its output are left out.").arg(all).arg((leftOut >> 20) + 1));
    emit StateChanged();
}

} // namespace wren
