#include "cplustags/ObjectiveC.h"

#include "cplustags/ObjectiveCScanner.h"

namespace cplustags {

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

ObjectiveCSource ReadObjectiveC(std::string_view text, const std::set<std::string>& ignored)
{
    return ObjectiveCScanner(text, ignored).Read();
}

} // namespace cplustags
