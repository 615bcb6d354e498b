#include "symbols/store/Names.h"

namespace symbols {

std::string_view LeafOf(std::string_view path)
{
    return path.substr(path.rfind('/') + 1); // npos + 1 is 0
}

std::string_view LastPart(std::string_view qualified)
{
    int depth = 0;
    size_t begin = 0, end = qualified.size();
    for (size_t i = 0; i < qualified.size(); i++) {
        if (qualified[i] == '<' && depth++ == 0)
            end = i;
        else if (qualified[i] == '>' && depth > 0)
            depth--;
        else if (qualified[i] == ':' && depth == 0) {
            begin = i + 1;
            end = qualified.size();
        }
    }
    std::string_view part = qualified.substr(begin, end - begin);
    while (!part.empty() && part.front() == ' ')
        part.remove_prefix(1);
    while (!part.empty() && part.back() == ' ')
        part.remove_suffix(1);
    return part.substr(part.rfind(' ') + 1); // "public Base", "virtual Base"
}

std::vector<std::string_view> BaseNames(std::string_view bases)
{
    std::vector<std::string_view> names;
    int depth = 0;
    size_t begin = 0;
    for (size_t i = 0; i <= bases.size(); i++) {
        const char c = i < bases.size() ? bases[i] : ',';
        depth += c == '<' || c == '(' ? 1 : (c == '>' || c == ')') && depth > 0 ? -1 : 0;
        if ((c != ',' || depth > 0) && i < bases.size())
            continue;
        if (const std::string_view name = LastPart(bases.substr(begin, i - begin)); !name.empty())
            names.push_back(name);
        begin = i + 1;
    }
    return names;
}

} // namespace symbols
