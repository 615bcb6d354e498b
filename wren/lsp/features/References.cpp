#include "wren/lsp/features/References.h"

#include "wren/lsp/features/UseRanges.h"
#include "wren/lsp/session/Subject.h"

namespace wren::lsp {

namespace {

constexpr size_t kMostReferences = 10'000;
constexpr size_t kFirstPart = 1'000;

bool IsDeclared(const resolve::Use& use)
{
    return use.role == resolve::Use::Role::Declaration || use.role == resolve::Use::Role::Definition;
}

} // namespace

void from_json(const Json& json, ReferenceParams& params)
{
    from_json(json, static_cast<TextDocumentPositionParams&>(params));
    params.includeDeclaration = Member<bool>(Member<Json>(json, "context"), "includeDeclaration");
}

Json References(const ReferenceParams& params, const RequestContext& context)
{
    const Subject subject(context, params.uri);
    Json locations = Json::array();
    bool inParts = false;
    const auto send = [&] {
        context.sendPart(locations);
        locations = Json::array();
        inParts = true;
    };
    const auto add = [&](std::string_view text, const std::vector<resolve::Use>& uses) {
        context.CheckCancelled();
        UseRanges ranges(text, subject.Encoding());
        const std::string uri = subject.UriOf(uses.front().path);
        for (const resolve::Use& use : uses)
            if (params.includeDeclaration || !IsDeclared(use))
                locations.push_back(Location{uri, ranges.Of(use)});
        if (context.sendPart && locations.size() >= kFirstPart)
            send();
        return true;
    };
    using Where = resolve::Resolver::Where;
    const Where where = context.settings.commentsInReferences ? Where::AlsoComments : Where::Everywhere;
    if (subject.IsSource())
        subject.Resolver().ForEachUse(subject.PlaceAt(params.position), subject.LimitsOf(kMostReferences), where, add);
    context.CheckCancelled();
    if (inParts && !locations.empty())
        send();
    return locations;
}

} // namespace wren::lsp
