#include "wren/lsp/protocol/Json.h"

#include <algorithm>
#include <string_view>

namespace wren::lsp {

namespace {

// Of lists and objects. Whether the text is JSON at all, the parser says.
size_t DepthOf(std::string_view text)
{
    size_t depth = 0;
    size_t deepest = 0;
    bool isString = false;
    for (size_t at = 0; at < text.size(); ++at) {
        const char each = text[at];
        if (isString && each == '\\')
            ++at;
        else if (each == '"')
            isString = !isString;
        else if (!isString && (each == '[' || each == '{'))
            deepest = std::max(deepest, ++depth);
        else if (!isString && (each == ']' || each == '}') && depth > 0)
            --depth;
    }
    return deepest;
}

} // namespace

Json ParsedMessage(const std::string& body)
{
    constexpr size_t kDeepest = 500;
    return DepthOf(body) > kDeepest ? Json(Json::value_t::discarded) : Json::parse(body, nullptr, false);
}

const Json* Find(const Json& object, const std::string& way)
{
    const Json* at = &object;
    for (size_t start = 0; start <= way.size();) {
        const size_t end = std::min(way.find('/', start), way.size());
        if (!at->is_object())
            return nullptr;
        const auto member = at->find(way.substr(start, end - start));
        if (member == at->end())
            return nullptr;
        at = &*member;
        start = end + 1;
    }
    return at;
}

bool Says(const Json& object, const std::string& way)
{
    const Json* const found = Find(object, way);
    return found != nullptr && found->is_boolean() && found->get<bool>();
}

void RefuseParameters(const std::string& why)
{
    throw Failure(FailureCode::InvalidParams, why);
}

std::string TextOf(const Json& message)
{
    return message.dump(-1, ' ', false, Json::error_handler_t::replace);
}

} // namespace wren::lsp
