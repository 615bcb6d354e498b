#include "wren/lsp/features/References.h"

#include "wren/lsp/features/UseRanges.h"
#include "wren/lsp/session/Subject.h"

#include <utility>

namespace wren::lsp {

namespace {

constexpr size_t kMostReferences = 10'000;
constexpr size_t kMostUses = 10 * kMostReferences; // declarations among them may be unwanted
constexpr size_t kPart = 1'000;

bool IsDeclared(const resolve::Use& use)
{
    return use.role == resolve::Use::Role::Declaration || use.role == resolve::Use::Role::Definition;
}

// The answer. A client that takes parts gets a long one in parts only.
class LocationList {
public:
    explicit LocationList(const RequestContext& context) : context(context) {}

    bool IsFull() const { return count == kMostReferences; }

    void Add(const Location& location)
    {
        locations.push_back(location);
        ++count;
        if (context.sendPart && locations.size() == kPart)
            SendPart();
    }

    // What no part has had.
    Json Rest()
    {
        if (count > locations.size() && !locations.empty())
            SendPart();
        return std::move(locations);
    }

private:
    void SendPart()
    {
        context.sendPart(locations);
        locations = Json::array();
    }

    const RequestContext& context;
    Json locations = Json::array();
    size_t count = 0; // with those sent
};

} // namespace

void from_json(const Json& json, ReferenceParams& params)
{
    from_json(json, static_cast<TextDocumentPositionParams&>(params));
    params.includeDeclaration = Member<bool>(Member<Json>(json, "context"), "includeDeclaration");
}

Json References(const ReferenceParams& params, const RequestContext& context)
{
    const Subject subject(context, params.uri);
    LocationList locations(context);
    const auto add = [&](std::string_view text, const std::vector<resolve::Use>& uses) {
        context.CheckCancelled();
        UseRanges ranges(text, subject.Encoding());
        const std::string uri = subject.UriOf(uses.front().path);
        for (const resolve::Use& use : uses)
            if ((params.includeDeclaration || !IsDeclared(use)) && !locations.IsFull())
                locations.Add(Location{uri, ranges.Of(use)});
        return !locations.IsFull();
    };
    using Where = resolve::Resolver::Where;
    const Where where = context.settings.commentsInReferences ? Where::AlsoComments : Where::Everywhere;
    if (subject.IsSource())
        subject.Resolver().ForEachUse(subject.PlaceAt(params.position), subject.LimitsOf(kMostUses), where, add);
    context.CheckCancelled();
    return locations.Rest();
}

} // namespace wren::lsp
