#include "wren/symbols/BaseNames.h"

#include <cstddef>

namespace wren {

namespace {

void AddName(std::vector<std::string>& names, std::string& name)
{
    const size_t start = name.find_first_not_of(' ');
    if (start != std::string::npos)
        names.push_back(name.substr(start, name.find_last_not_of(' ') + 1 - start));
    name.clear();
}

} // namespace

std::vector<std::string> BaseNames(std::string_view bases)
{
    std::vector<std::string> names;
    std::string name;
    int depth = 0; // of angle brackets
    for (const char c : bases) {
        if (c == ',' && depth == 0)
            AddName(names, name);
        else if (depth == 0 && c != '<')
            name += c;
        depth += c == '<' ? 1 : c == '>' && depth > 0 ? -1 : 0;
    }
    AddName(names, name);
    return names;
}

} // namespace wren
