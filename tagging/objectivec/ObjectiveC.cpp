#include "tagging/objectivec/ObjectiveC.h"

namespace tagging {

bool MayHaveObjectiveC(std::string_view text)
{
    for (size_t at = text.find('@'); at != std::string_view::npos; at = text.find('@', at + 1)) {
        const std::string_view word = text.substr(at + 1);
        if (word.starts_with("interface") || word.starts_with("implementation") || word.starts_with("protocol") ||
            word.starts_with("class"))
            return true;
    }
    return false;
}

} // namespace tagging
