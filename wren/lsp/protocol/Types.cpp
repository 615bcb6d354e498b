#include "wren/lsp/protocol/Types.h"

#include <cstdint>
#include <limits>

namespace wren::lsp {

namespace {

unsigned Count(const Json& json, const char* name)
{
    const Json value = Member<Json>(json, name);
    if (!value.is_number_integer() && !value.is_number_unsigned())
        RefuseParameters(std::string("'") + name + "' is not a whole number");
    if (value.is_number_integer() && !value.is_number_unsigned() && value.get<std::int64_t>() < 0)
        RefuseParameters(std::string("'") + name + "' is below 0");
    if (value.get<std::uint64_t>() > static_cast<std::uint64_t>(std::numeric_limits<std::int32_t>::max()))
        RefuseParameters(std::string("'") + name + "' is too large");
    return value.get<unsigned>();
}

} // namespace

void from_json(const Json& json, Position& position)
{
    position = {Count(json, "line"), Count(json, "character")};
}

void from_json(const Json& json, Range& range)
{
    range = {Member<Position>(json, "start"), Member<Position>(json, "end")};
}

void from_json(const Json& json, TextDocumentParams& params)
{
    params.uri = Member<std::string>(Member<Json>(json, "textDocument"), "uri");
}

void from_json(const Json& json, TextDocumentPositionParams& params)
{
    params.uri = Member<std::string>(Member<Json>(json, "textDocument"), "uri");
    params.position = Member<Position>(json, "position");
}

void to_json(Json& json, const Position& position)
{
    json = {{"line", position.line}, {"character", position.character}};
}

void to_json(Json& json, const Range& range)
{
    json = {{"start", range.start}, {"end", range.end}};
}

void to_json(Json& json, const Location& location)
{
    json = {{"uri", location.uri}, {"range", location.range}};
}

void to_json(Json& json, const LocationLink& link)
{
    json = {{"originSelectionRange", link.originSelectionRange},
            {"targetUri", link.targetUri},
            {"targetRange", link.targetRange},
            {"targetSelectionRange", link.targetSelectionRange}};
}

} // namespace wren::lsp
