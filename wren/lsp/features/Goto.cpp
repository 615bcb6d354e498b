#include "wren/lsp/features/Goto.h"

#include "wren/lsp/session/SymbolPlace.h"

#include <string>

namespace wren::lsp {

namespace {

constexpr size_t kMostLocations = 100;

Range OriginOf(const Subject& subject, const TextDocumentPositionParams& params, const resolve::Answers& answers)
{
    const std::string& content = subject.Text().Content();
    const size_t offset = subject.Text().OffsetOf(params.position, subject.Encoding());
    size_t start = offset;
    while (start > 0 && offset - start < answers.name.size() && !content.substr(start).starts_with(answers.name))
        --start;
    return subject.Text().RangeOf(start, start + answers.name.size(), subject.Encoding());
}

Json LocationsOf(const resolve::Answers& answers, const Subject& subject, const TextDocumentPositionParams& params,
                 bool asLinks)
{
    Json locations = Json::array();
    for (const resolve::Answer& answer : answers.found) {
        const std::optional<SymbolPlace> place = PlaceOf(answer.symbol, answer.path, subject);
        if (!place)
            continue;
        if (asLinks)
            locations.push_back(
                LocationLink{OriginOf(subject, params, answers), place->uri, place->extent, place->name});
        else
            locations.push_back(Location{place->uri, place->name});
    }
    return locations;
}

} // namespace

Json Definition(const TextDocumentPositionParams& params, const RequestContext& context)
{
    const Subject subject(context, params.uri);
    if (!subject.IsSource())
        return Json::array();
    const resolve::Answers answers =
        subject.Resolver().Definition(subject.PlaceAt(params.position), subject.LimitsOf(kMostLocations));
    return LocationsOf(answers, subject, params, context.client.Can("textDocument/definition/linkSupport"));
}

Json Declaration(const TextDocumentPositionParams& params, const RequestContext& context)
{
    const Subject subject(context, params.uri);
    if (!subject.IsSource())
        return Json::array();
    const resolve::Answers answers =
        subject.Resolver().Declaration(subject.PlaceAt(params.position), subject.LimitsOf(kMostLocations));
    return LocationsOf(answers, subject, params, context.client.Can("textDocument/declaration/linkSupport"));
}

} // namespace wren::lsp
