#include "tagging/IgnoredMacros.h"

#include "base/Paths.h"

#include <algorithm>
#include <fstream>
#include <sstream>
#include <string_view>

namespace tagging {

namespace {

bool NamesFile(const std::string& list)
{
    return !list.empty() && std::string_view("@./\\").find(list[0]) != std::string_view::npos;
}

std::string FileNamed(const std::string& list)
{
    return list[0] == '@' ? list.substr(1) : list;
}

std::string TextOf(const std::string& list)
{
    if (!NamesFile(list))
        return list;
    std::ostringstream text;
    text << std::ifstream(FileNamed(list)).rdbuf();
    return text.str();
}

} // namespace

std::set<std::string> IgnoredMacros(const std::string& list)
{
    constexpr const char* kSeparators = ", \t\n\r";
    const std::string text = TextOf(list);
    std::set<std::string> macros;
    for (size_t start = 0; (start = text.find_first_not_of(kSeparators, start)) != std::string::npos;) {
        const size_t end = std::min(text.find_first_of(kSeparators, start), text.size());
        const std::string macro = text.substr(start, end - start);
        const size_t equals = macro.find('=');
        if (equals == std::string::npos)
            macros.insert(macro);
        else if (equals + 1 == macro.size())
            macros.insert(macro.substr(0, equals));
        start = end;
    }
    macros.erase("-");
    return macros;
}

std::string ListForCtags(const std::string& list, const std::string& directory)
{
    return NamesFile(list) ? "@" + base::AbsolutePath(FileNamed(list), directory) : list;
}

} // namespace tagging
