#include "wren/lsp/session/Settings.h"

#include <cstdint>
#include <functional>
#include <map>

namespace wren::lsp {

namespace {

using Take = std::function<bool(const Json& value, Settings& settings)>; // false for a value that cannot be used

Take Flag(bool Settings::*member)
{
    return [member](const Json& value, Settings& settings) {
        if (value.is_boolean())
            settings.*member = value.get<bool>();
        return value.is_boolean();
    };
}

bool TakeTags(const Json& value, Settings& settings)
{
    std::vector<std::string> files;
    for (const Json& each : value) {
        if (!value.is_array() || !each.is_string())
            return false;
        files.push_back(each.get<std::string>());
    }
    if (value.is_array())
        settings.tags = std::move(files);
    return value.is_array();
}

bool TakeLimit(const Json& value, Settings& settings)
{
    constexpr std::uint64_t kMost = 10'000;
    if (!value.is_number_unsigned() || value.get<std::uint64_t>() == 0 || value.get<std::uint64_t>() > kMost)
        return false;
    settings.completionLimit = value.get<size_t>();
    return true;
}

const std::map<std::string, Take> kMembers = {
    {"tags", TakeTags},
    {"index", Flag(&Settings::index)},
    {"systemHeaders", Flag(&Settings::systemHeaders)},
    {"completion.limit", TakeLimit},
    {"completion.snippets", Flag(&Settings::snippets)},
    {"references.comments", Flag(&Settings::commentsInReferences)},
};

void ApplyMembers(const Json& given, const std::string& prefix, Settings& settings, std::vector<std::string>& problems)
{
    for (const auto& [name, value] : given.items()) {
        const std::string full = prefix + name;
        if (prefix.empty() && (name == "completion" || name == "references") && value.is_object()) {
            ApplyMembers(value, name + ".", settings, problems);
            continue;
        }
        const auto member = kMembers.find(full);
        if (member == kMembers.end())
            problems.push_back("the setting '" + full + "' is not known");
        else if (!value.is_null() && !member->second(value, settings))
            problems.push_back("the setting '" + full + "' cannot be " + TextOf(value));
    }
}

} // namespace

std::vector<std::string> Apply(const Json& given, Settings& settings)
{
    std::vector<std::string> problems;
    if (given.is_object())
        ApplyMembers(given, "", settings, problems);
    else if (!given.is_null())
        problems.push_back("the settings are not an object");
    return problems;
}

} // namespace wren::lsp
