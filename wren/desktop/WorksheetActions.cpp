#include "wren/desktop/WorksheetActions.h"

#include "wren/core/Host.h"
#include "wren/core/TextChange.h"
#include "wren/core/PlaceStack.h"
#include "wren/core/UserDirectories.h"
#include "wren/desktop/EditorTabs.h"
#include "wren/desktop/editor/CodeView.h"
#include "wren/desktop/state/WorksheetRunner.h"

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

// The user may go on writing meanwhile, also above.
void WorksheetActions::TextMoves(long changed, long offset, long removed, long inserted)
{
    if (changed == document)
        end = MovedPlace(end, {offset, removed, inserted});
}

void WorksheetActions::Put(const QByteArray& output)
{
    Document* target = host.AllDocuments().Find(document);
    if (target == nullptr)
        return;
    end = std::min(end, target->Length());
    const bool caretFollows = target->Selected() == Selection{end, end};
    target->Insert(end, std::string_view(output.constData(), static_cast<size_t>(output.size())));
    end += output.size();
    if (!caretFollows)
        return;
    target->Select(end, end);
    if (CodeView* view = tabs.ViewOf(document))
        view->GoTo(end);
}

void WorksheetActions::Ended(int status, bool stopped)
{
    if (stopped)
        emit Told(tr("The command was stopped."));
    else if (status != 0)
        emit Told(tr("The command ended with status %1.").arg(status));
    else
        emit Told(tr("The command has ended."));
    emit StateChanged();
}

} // namespace wren
