#include "wren/lsp/features/Goto.h"

#include "wren/lsp/features/Meant.h"
#include "wren/lsp/session/SymbolPlace.h"
#include "wren/symbols/MeantPlaces.h"

#include <algorithm>
#include <string>

namespace wren::lsp {

namespace {

constexpr size_t kMostLocations = 100;

std::optional<SymbolPlace> TargetOf(const resolve::Answer& answer, const Subject& subject)
{
    if (answer.IsFile())
        return SymbolPlace{subject.UriOf(answer.path), {}, {}};
    return PlaceOf(answer.symbol, answer.path, subject, answer.offset);
}

class Asked {
public:
    Asked(const TextDocumentPositionParams& params, const RequestContext& context)
        : context(context), subject(context, params.uri), place(subject.PlaceAt(params.position))
    {
    }

    bool IsSource() const { return subject.IsSource(); }
    const resolve::Resolver& Resolver() const { return subject.Resolver(); }
    const resolve::Place& Place() const { return place; }
    symbols::Limits Limits() const { return subject.LimitsOf(kMostLocations); }

    Json Locations(const resolve::Answers& answers, const char* method) const
    {
        const bool asLinks = context.client.Can(std::string("textDocument/") + method + "/linkSupport");
        const ByteRange name = NameAt(subject.Text(), place.offset, answers);
        const Range origin = subject.Text().RangeOf(name.start, name.end, subject.Encoding());
        Json locations = Json::array();
        for (const resolve::Answer& answer : answers.found) {
            context.CheckCancelled();
            const std::optional<SymbolPlace> target = TargetOf(answer, subject);
            if (!target)
                continue;
            if (asLinks)
                locations.push_back(LocationLink{origin, target->uri, target->extent, target->name});
            else
                locations.push_back(Location{target->uri, target->name});
        }
        return locations;
    }

private:
    const RequestContext& context;
    const Subject subject;
    const resolve::Place place;
};

} // namespace

Json Definition(const TextDocumentPositionParams& params, const RequestContext& context)
{
    const Asked asked(params, context);
    if (!asked.IsSource())
        return Json::array();
    const resolve::Answers answers = MeantDefinition(asked.Resolver(), asked.Place(), asked.Limits());
    return asked.Locations(answers, "definition");
}

Json Declaration(const TextDocumentPositionParams& params, const RequestContext& context)
{
    const Asked asked(params, context);
    if (!asked.IsSource())
        return Json::array();
    const resolve::Answers answers = MeantDeclaration(asked.Resolver(), asked.Place(), asked.Limits());
    return asked.Locations(answers, "declaration");
}

Json TypeDefinition(const TextDocumentPositionParams& params, const RequestContext& context)
{
    const Asked asked(params, context);
    if (!asked.IsSource())
        return Json::array();
    const resolve::Answers answers = asked.Resolver().TypeDefinition(asked.Place(), asked.Limits());
    return asked.Locations(answers, "typeDefinition");
}

Json Implementation(const TextDocumentPositionParams& params, const RequestContext& context)
{
    const Asked asked(params, context);
    if (!asked.IsSource())
        return Json::array();
    resolve::Answers answers = asked.Resolver().Implementations(asked.Place(), asked.Limits());
    if (answers.found.empty()) {
        answers = asked.Resolver().Meanings(asked.Place(), asked.Limits());
        std::erase_if(answers.found,
                      [](const resolve::Answer& each) { return !each.isMeant || !each.symbol.isDefinition; });
    }
    return asked.Locations(answers, "implementation");
}

} // namespace wren::lsp
