#include "plugin/PluginInterface.h"
#include "scan/DocumentText.h"
#include "scan/Predicates.h"
#include "scan/SelectionScanner.h"

#include <algorithm>

namespace {

// [start, end) of the document becomes 'text', and the caret goes to 'caret'.
struct Edit {
    long start;
    long end;
    std::string text;
    long caret;
};

// Of a scope chain only the last component is being completed; the scopes stay as the user wrote them.
Edit NameEdit(PluginInterface* pi, long start, long end, std::string completion)
{
    const std::string replaced = scan::TextBetween(pi, start, end);
    const size_t scope = completion.rfind("::");
    if (scope != std::string::npos)
        completion.erase(0, scope + 2);
    if (scope != std::string::npos || IsCppPattern(replaced))
        start += static_cast<long>(replaced.rfind(':') + 1); // 0 when there is none: "vec" for "std::vector"
    return {start, end, completion, start + static_cast<long>(completion.length())};
}

// Puts a blank behind each colon but a last one, to leave room for its argument; answers where the first argument goes,
// or the end when there is no room for any.
size_t MakeRoomForArguments(std::string& pieces)
{
    size_t firstArgument = std::string::npos;
    for (size_t colon = pieces.find(':'); colon < pieces.length() - 1; colon = pieces.find(':', colon + 2)) {
        pieces.insert(colon + 1, 1, ' ');
        firstArgument = std::min(firstArgument, colon + 2);
    }
    return std::min(firstArgument, pieces.length());
}

// A candidate may come with its class ("View::setTitle:"), which has no place in a message.
std::string WithoutClass(const std::string& completion, const std::string& typed)
{
    if (completion.compare(0, typed.length(), typed) == 0)
        return completion;
    const size_t behindClass = completion.find("::" + typed);
    return behindClass == std::string::npos ? completion : completion.substr(behindClass + 2);
}

// The pieces that have been typed may be scattered and stay where they are; what is missing goes to the caret.
Edit SelectorEdit(const std::string& typed, long caret, const std::string& completion)
{
    const std::string selector = WithoutClass(completion, typed);
    std::string rest = selector.substr(std::min(typed.length(), selector.length()));
    const long firstArgument = static_cast<long>(MakeRoomForArguments(rest));
    return {caret, caret, rest, caret + firstArgument};
}

// All four in this order each time, also with nothing to delete or to insert: to the host it is one kind of edit, and
// the selection that an undo brings back is the one from before the deletion.
void Apply(PluginInterface* pi, long selStart, long selEnd, const Edit& edit)
{
    pi->BeginUndo(selStart, selEnd, "Insert symbol completion");
    pi->DeleteText(edit.start, edit.end - edit.start);
    pi->InsertText(edit.text.c_str(), static_cast<long>(edit.text.length()), edit.start);
    pi->Select(edit.caret, edit.caret);
}

} // namespace

void ReplaceWord(PluginInterface* pi, const std::string& completion)
{
    long selStart = 0, selEnd = 0;
    pi->GetSelection(&selStart, &selEnd);
    long start = 0, end = 0;
    std::string typed;
    if (!ScanForSuggestionPattern(pi, selEnd, selEnd, start, end, typed, true))
        return;

    // A selector with a scope in one of its arguments counts as a C++ name here. Its range is none, but ends behind a
    // colon: the completion goes there.
    if (completion.empty())
        Apply(pi, selStart, selEnd, {start, end, "", start});
    else if (IsObjCPattern(typed) || IsMultiPartObjCPattern(completion))
        Apply(pi, selStart, selEnd, SelectorEdit(typed, selEnd, completion));
    else
        Apply(pi, selStart, selEnd, NameEdit(pi, start, end, completion));
}
