#include "Pattern.h"

#include <string_view>

namespace {

using Json = nlohmann::json;

constexpr std::string_view kHole = "...";

bool TextFits(std::string_view pattern, std::string_view text)
{
    const size_t hole = pattern.find(kHole);
    if (hole == std::string_view::npos)
        return pattern == text;
    if (!text.starts_with(pattern.substr(0, hole)))
        return false;
    const std::string_view after = pattern.substr(hole + kHole.size());
    for (text.remove_prefix(hole);; text.remove_prefix(1)) {
        if (TextFits(after, text))
            return true;
        if (text.empty())
            return false;
    }
}

std::string Differs(const std::string& way, const Json& pattern, const Json& value)
{
    return (way.empty() ? "the value" : way) + " is " +
           value.dump(-1, ' ', false, Json::error_handler_t::replace).substr(0, 2000) + ", expected " + pattern.dump();
}

std::optional<std::string> ObjectMismatch(const Json& pattern, const Json& value, const std::string& way)
{
    for (const auto& [name, wanted] : pattern.items()) {
        if (name == kHole)
            continue;
        if (!value.contains(name))
            return way + " has no '" + name + "'";
        if (auto mismatch = Mismatch(wanted, value[name], way + "." + name))
            return mismatch;
    }
    if (!pattern.contains(kHole))
        for (const auto& [name, given] : value.items())
            if (!pattern.contains(name))
                return way + " has a '" + name + "': " + given.dump();
    return std::nullopt;
}

std::optional<std::string> ListMismatch(const Json& pattern, const Json& value, const std::string& way)
{
    const bool isOpen = !pattern.empty() && pattern.back() == kHole;
    const size_t size = pattern.size() - (isOpen ? 1 : 0);
    if (value.size() < size || (value.size() > size && !isOpen))
        return Differs(way, pattern, value);
    for (size_t at = 0; at < size; ++at)
        if (auto mismatch = Mismatch(pattern[at], value[at], way + "[" + std::to_string(at) + "]"))
            return mismatch;
    return std::nullopt;
}

} // namespace

std::optional<std::string> Mismatch(const Json& pattern, const Json& value, const std::string& way)
{
    if (pattern == kHole)
        return std::nullopt;
    if (pattern.is_object() && value.is_object())
        return ObjectMismatch(pattern, value, way);
    if (pattern.is_array() && value.is_array())
        return ListMismatch(pattern, value, way);
    const bool fits = pattern.is_string() && value.is_string()
                          ? TextFits(pattern.get_ref<const std::string&>(), value.get_ref<const std::string&>())
                          : pattern == value;
    return fits ? std::nullopt : std::optional(Differs(way, pattern, value));
}
