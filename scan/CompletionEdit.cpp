#include "scan/CompletionEdit.h"

#include "scan/PatternScan.h"
#include "scan/Predicates.h"
#include "scan/Text.h"

#include <algorithm>

namespace scan {

namespace {

// Completes only the last component of a scope chain; the user's scopes stay.
Edit NameEdit(const Text& text, long start, long end, std::string completion)
{
    const std::string replaced = text.Range(start, end);
    const size_t scope = completion.rfind("::");
    if (scope != std::string::npos)
        completion.erase(0, scope + 2);
    if (scope != std::string::npos || IsCppPattern(replaced))
        start += static_cast<long>(replaced.rfind(':') + 1); // 0 without a scope: "vec" for "std::vector"
    return {start, end, completion, start + static_cast<long>(completion.length())};
}

// Puts a blank behind each colon but a last one, as room for its argument. Returns the position of the first argument,
// or the end without room.
size_t MakeRoomForArguments(std::string& pieces)
{
    size_t firstArgument = std::string::npos;
    for (size_t colon = pieces.find(':'); colon < pieces.length() - 1; colon = pieces.find(':', colon + 2)) {
        pieces.insert(colon + 1, 1, ' ');
        firstArgument = std::min(firstArgument, colon + 2);
    }
    return std::min(firstArgument, pieces.length());
}

// A candidate may have its class ("View::setTitle:"), which does not belong into a message.
std::string WithoutClass(const std::string& completion, const std::string& typed)
{
    if (completion.compare(0, typed.length(), typed) == 0)
        return completion;
    const size_t behindClass = completion.find("::" + typed);
    return behindClass == std::string::npos ? completion : completion.substr(behindClass + 2);
}

// The typed pieces may be scattered and stay in place; the missing rest goes to the caret.
Edit SelectorEdit(const std::string& typed, long caret, const std::string& completion)
{
    const std::string selector = WithoutClass(completion, typed);
    std::string rest = selector.substr(std::min(typed.length(), selector.length()));
    const long firstArgument = static_cast<long>(MakeRoomForArguments(rest));
    return {caret, caret, rest, caret + firstArgument};
}

} // namespace

std::optional<Edit> CompletionEdit(const Text& text, long caret, const std::string& completion)
{
    const std::optional<Pattern> typed = PatternForCompletion(text, caret, caret);
    if (!typed)
        return std::nullopt;
    // A selector with a scope in an argument counts as a C++ name here. Its range is empty but ends behind a colon: the
    // completion goes there.
    if (completion.empty())
        return Edit{typed->start, typed->end, "", typed->start};
    if (IsObjCPattern(typed->text) || IsMultiPartObjCPattern(completion))
        return SelectorEdit(typed->text, caret, completion);
    return NameEdit(text, typed->start, typed->end, completion);
}

} // namespace scan
