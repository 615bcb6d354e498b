#include "wren/lsp/protocol/Json.h"

#include <algorithm>
#include <charconv>
#include <string_view>

namespace wren::lsp {

namespace {

constexpr size_t kUnitEscape = 6; // the length of "\\u1234"

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

// The unit of UTF-16 that the escape at 'at' names; 0 where there is no such escape.
unsigned EscapedUnit(std::string_view text, size_t at)
{
    unsigned unit = 0;
    if (!text.substr(at).starts_with("\\u") || at + kUnitEscape > text.size())
        return 0;
    const char* const end = text.data() + at + kUnitEscape;
    return std::from_chars(end - 4, end, unit, 16).ptr == end ? unit : 0;
}

bool IsHigh(unsigned unit)
{
    return unit >= 0xd800 && unit < 0xdc00;
}

bool IsLow(unsigned unit)
{
    return unit >= 0xdc00 && unit < 0xe000;
}

// Half a pair of surrogates, as an editor has it whose text was cut in the middle of a character, becomes U+FFFD: the
// parser would refuse the whole message. Both count as one unit of UTF-16.
std::string WithoutHalfPairs(std::string text)
{
    for (size_t at = text.find('\\'); at != std::string::npos; at = text.find('\\', at)) {
        const unsigned unit = EscapedUnit(text, at);
        const bool isPair = IsHigh(unit) && IsLow(EscapedUnit(text, at + kUnitEscape));
        if (!isPair && (IsHigh(unit) || IsLow(unit)))
            text.replace(at, kUnitEscape, "\\ufffd");
        at += isPair ? 2 * kUnitEscape : 2; // behind "\\" as well
    }
    return text;
}

} // namespace

Json ParsedMessage(const std::string& body)
{
    constexpr size_t kDeepest = 500;
    if (DepthOf(body) > kDeepest)
        return Json(Json::value_t::discarded);
    Json message = Json::parse(body, nullptr, false);
    return message.is_discarded() ? Json::parse(WithoutHalfPairs(body), nullptr, false) : message;
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
