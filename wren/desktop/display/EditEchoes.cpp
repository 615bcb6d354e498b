#include "wren/desktop/display/EditEchoes.h"

#include <algorithm>
#include <utility>

namespace wren {

void EditEchoes::Posted(const TextEdit& edit)
{
    waiting.push_back(edit);
}

bool EditEchoes::IsNewText(const std::string& text)
{
    answered.reset();
    if (waiting.empty())
        return true;
    const auto found = std::ranges::find(waiting, text, &TextEdit::text);
    if (found == waiting.end())
        return false;
    if (found + 1 == waiting.end())
        answered = *found;
    waiting.erase(waiting.begin(), found + 1);
    return false;
}

bool EditEchoes::IsNewSelection(long start, long end)
{
    if (!waiting.empty())
        return false;
    const std::optional<TextEdit> last = std::exchange(answered, std::nullopt);
    return !last || last->start != start || last->end != end;
}

} // namespace wren
