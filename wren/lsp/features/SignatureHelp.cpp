#include "wren/lsp/features/SignatureHelp.h"

#include "wren/lsp/session/Subject.h"
#include "wren/symbols/CallHelp.h"
#include "wren/symbols/TextPlace.h"

#include <string>

namespace wren::lsp {

namespace {

unsigned Units(const std::string& label, size_t offset)
{
    return Text(label).PositionOf(offset, Encoding::Utf16).character;
}

Json JsonOf(const CallHelp::Overload& overload, bool withOffsets)
{
    Json parameters = Json::array();
    for (const auto& [begin, end] : overload.parameters)
        if (withOffsets)
            parameters.push_back({{"label", {Units(overload.label, begin), Units(overload.label, end)}}});
        else
            parameters.push_back({{"label", overload.label.substr(begin, end - begin)}});
    return {{"label", overload.label}, {"parameters", parameters}};
}

} // namespace

Json SignatureHelp(const TextDocumentPositionParams& params, const RequestContext& context)
{
    const Subject subject(context, params.uri);
    if (!subject.IsSource())
        return nullptr;
    const resolve::Place place = subject.PlaceAt(params.position);
    const resolve::ParsedTextPointer parsed = subject.Parsed();
    if (PlaceIn(subject.Text().Content(), parsed->tokens, place.offset).sort == TextPlace::Sort::Include)
        return nullptr;
    const std::optional<CallHelp> help =
        CallHelpAt({subject.Resolver(), subject.Snapshot(), *parsed, place, &context.cancel});
    if (!help)
        return nullptr;
    const bool withOffsets =
        context.client.Can("textDocument/signatureHelp/signatureInformation/parameterInformation/labelOffsetSupport");
    Json signatures = Json::array();
    for (const CallHelp::Overload& each : help->overloads)
        signatures.push_back(JsonOf(each, withOffsets));
    return {{"signatures", signatures}, {"activeSignature", help->active}, {"activeParameter", help->parameter}};
}

} // namespace wren::lsp
