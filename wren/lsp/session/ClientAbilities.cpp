#include "wren/lsp/session/ClientAbilities.h"

#include <utility>

namespace wren::lsp {

namespace {

// The first of the client's that is spoken here.
Encoding EncodingOf(const Json& capabilities)
{
    const Json* const offered = Find(capabilities, "general/positionEncodings");
    if (offered != nullptr && offered->is_array())
        for (const Json& each : *offered) {
            if (each == "utf-8")
                return Encoding::Utf8;
            if (each == "utf-16")
                return Encoding::Utf16;
        }
    return Encoding::Utf16;
}

} // namespace

ClientAbilities::ClientAbilities(Json given) : capabilities(std::move(given)), encoding(EncodingOf(capabilities)) {}

bool ClientAbilities::Lists(const std::string& way, const std::string& word) const
{
    const Json* const list = Find(capabilities, way);
    return list != nullptr && list->is_array() && std::find(list->begin(), list->end(), word) != list->end();
}

std::string ClientAbilities::FirstOf(const std::string& way, std::initializer_list<std::string_view> words) const
{
    const Json* const list = Find(capabilities, way);
    if (list != nullptr && list->is_array())
        for (const Json& each : *list)
            if (each.is_string() && std::find(words.begin(), words.end(), each.get<std::string>()) != words.end())
                return each;
    return "";
}

} // namespace wren::lsp
