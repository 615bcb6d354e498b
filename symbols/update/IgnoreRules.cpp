#include "symbols/update/IgnoreRules.h"

#include "symbols/update/ReadSmallFile.h"

#include <algorithm>
#include <optional>
#include <utility>

namespace symbols {

IgnoreRules::IgnoreRules(Pointer outer, std::string_view text, std::string_view directory)
    : outer(std::move(outer)), prefix(directory.size() + 1)
{
    if (text.starts_with("\xef\xbb\xbf"))
        text.remove_prefix(3);
    while (!text.empty()) {
        const size_t end = std::min(text.find('\n'), text.size());
        if (std::optional<IgnorePattern> pattern = IgnorePattern::Parse(text.substr(0, end)))
            patterns.push_back(std::move(*pattern));
        text.remove_prefix(std::min(end + 1, text.size()));
    }
}

IgnoreRules::Pointer IgnoreRules::WithText(const Pointer& outer, std::string_view text, std::string_view directory)
{
    return std::make_shared<IgnoreRules>(outer, text, directory);
}

IgnoreRules::Pointer IgnoreRules::WithFile(const Pointer& outer, const std::string& file, std::string_view directory)
{
    const std::optional<std::string> text = ReadSmallFile(file, Links::Refuse);
    return text ? WithText(outer, *text, directory) : outer;
}

bool IgnoreRules::Ignores(std::string_view path, bool isDirectory) const
{
    for (const IgnoreRules* rules = this; rules != nullptr; rules = rules->outer.get()) {
        const std::string_view relative = path.substr(std::min(rules->prefix, path.size()));
        for (auto pattern = rules->patterns.rbegin(); pattern != rules->patterns.rend(); ++pattern)
            if (pattern->Matches(relative, isDirectory))
                return !pattern->IsNegative();
    }
    return false;
}

} // namespace symbols
