// What derives from what, by the names in lists of bases.
#include "wren/lsp/features/Hierarchies.h"
#include "wren/lsp/features/HierarchyItem.h"
#include "wren/symbols/BaseNames.h"
#include "wren/symbols/NamedSymbols.h"

#include <algorithm>
#include <set>

namespace wren::lsp {

namespace {

constexpr size_t kMostDerived = 1000;

// The class that an item stands for.
std::vector<symbols::Symbol> ClassesAt(const HierarchyParams& params, const Subject& subject)
{
    std::vector<symbols::Symbol> classes;
    const resolve::Place place = subject.PlaceAt(params.selectionRange.start);
    for (const resolve::Answer& each : subject.Resolver().Meanings(place, subject.LimitsOf(100)).found)
        if (each.isMeant && IsClass(each.symbol.kind))
            classes.push_back(each.symbol);
    return classes;
}

void AddItem(const symbols::Symbol& symbol, const Subject& subject, std::set<std::string>& seen, Json& items)
{
    if (!seen.insert(FullName(symbol)).second)
        return;
    const std::string path(subject.Snapshot().FileOf(symbol.file).path);
    if (std::optional<Json> item = HierarchyItem(symbol, path, subject))
        items.push_back(*std::move(item));
}

// The one in the scopes around the derived class, from the inside out; else the first.
const symbols::Symbol* Nearest(const std::vector<symbols::Symbol>& found, std::string_view scope,
                               const std::string& base)
{
    for (std::string_view outer = scope;;) {
        const std::string full = outer.empty() ? base : std::string(outer) + "::" + base;
        for (const symbols::Symbol& each : found)
            if (FullName(each) == full)
                return &each;
        if (outer.empty())
            return found.empty() ? nullptr : &found.front();
        const size_t colons = outer.rfind("::");
        outer = colons == std::string_view::npos ? std::string_view() : outer.substr(0, colons);
    }
}

} // namespace

Json PrepareTypeHierarchy(const TextDocumentPositionParams& params, const RequestContext& context)
{
    const Subject subject(context, params.uri);
    return HierarchyItemsAt(params.position, IsClass, subject);
}

Json Supertypes(const HierarchyParams& params, const RequestContext& context)
{
    const Subject subject(context, params.uri);
    Json items = Json::array();
    std::set<std::string> seen;
    for (const symbols::Symbol& derived : ClassesAt(params, subject))
        for (const std::string& base : BaseNames(derived.bases)) {
            const std::vector<symbols::Symbol> found = NamedSymbols(subject.Snapshot(), base, IsClass);
            if (const symbols::Symbol* const nearest = Nearest(found, derived.scope, base))
                AddItem(*nearest, subject, seen, items);
        }
    return items;
}

Json Subtypes(const HierarchyParams& params, const RequestContext& context)
{
    const Subject subject(context, params.uri);
    Json items = Json::array();
    std::set<std::string> seen;
    std::set<std::string> asked;
    for (const symbols::Symbol& base : ClassesAt(params, subject))
        if (asked.insert(std::string(base.name)).second)
            for (const symbols::Symbol& derived :
                 subject.Snapshot().DerivedFrom(base.name, subject.LimitsOf(kMostDerived)).found)
                AddItem(derived, subject, seen, items);
    return items;
}

} // namespace wren::lsp
