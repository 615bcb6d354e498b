#include "scan/SelectionScanner.h"

#include "plugin/PluginInterface.h"
#include "scan/CompletionEdit.h"
#include "scan/HostText.h"
#include "scan/PatternScan.h"
#include "scan/WordScan.h"

namespace {

// All four, always in this order, even with nothing to delete or insert. The host sees one kind of edit, and an undo
// restores the selection from before the deletion.
void Apply(PluginInterface* host, long selStart, long selEnd, const scan::Edit& edit)
{
    host->BeginUndo(selStart, selEnd, "Insert symbol completion");
    host->DeleteText(edit.start, edit.end - edit.start);
    host->InsertText(edit.text.c_str(), static_cast<long>(edit.text.length()), edit.start);
    host->Select(edit.caret, edit.caret);
}

} // namespace

bool IsPatternBeforeSelection(PluginInterface* host, long& caret, long& start, long& length)
{
    caret = start = length = 0;
    long selStart = 0, selEnd = 0;
    host->GetSelection(&selStart, &selEnd);
    if (selStart != selEnd)
        return false;
    const std::optional<scan::WordPlace> word = scan::WordBefore(scan::HostText(host), selEnd);
    if (!word)
        return false;
    caret = selEnd;
    start = word->start;
    length = word->length;
    return true;
}

bool ScanForWord(PluginInterface* host, long selStart, long selEnd, std::string& word)
{
    word = scan::WordAround(scan::HostText(host), selStart, selEnd).value_or("");
    return !word.empty();
}

bool ScanForSuggestionPattern(PluginInterface* host, long selStart, long selEnd, long& start, long& end,
                              std::string& pattern, bool forCompletion)
{
    const auto scanner = forCompletion ? scan::PatternForCompletion : scan::PatternForLookup;
    const std::optional<scan::Pattern> found = scanner(scan::HostText(host), selStart, selEnd);
    pattern.clear();
    if (!found)
        return false;
    start = found->start;
    end = found->end;
    pattern = found->text;
    return true;
}

void ReplaceWord(PluginInterface* host, const std::string& completion)
{
    long selStart = 0, selEnd = 0;
    host->GetSelection(&selStart, &selEnd);
    if (const auto edit = scan::CompletionEdit(scan::HostText(host), selEnd, completion))
        Apply(host, selStart, selEnd, *edit);
}
