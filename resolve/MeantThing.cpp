#include "resolve/MeantThing.h"

#include "resolve/IncludedFiles.h"

#include <algorithm>

namespace resolve {

namespace {

constexpr size_t kMostCompared = 50'000;

bool IsVariable(SymbolKind kind)
{
    return kind == SymbolKind::Variable || kind == SymbolKind::ExternVariable;
}

bool IsValue(SymbolKind kind) // neither a type nor a macro
{
    return IsCallable(kind) || IsVariable(kind) || kind == SymbolKind::Enumerator || kind == SymbolKind::Member;
}

bool HasUnnamed(std::string_view scope)
{
    return scope.find("__anon") != std::string_view::npos;
}

// An unnamed scope may be a class or a namespace.
bool IsOutsideOfClasses(World& world, const Symbol& symbol)
{
    if (symbol.scopeKind == SymbolKind::Namespace)
        return true;
    const std::string_view scope = symbol.kind == SymbolKind::Enumerator ? ScopeOf(symbol.scope) : symbol.scope;
    return !HasUnnamed(scope) && world.VisibleScope(symbol).empty();
}

} // namespace

MeantThing::MeantThing(Question& asked, const MeaningList& all)
{
    const auto isMacro = [](const Meaning& each) { return each.symbol.kind == SymbolKind::Macro; };
    if (all.empty() || all.front().how == How::Name || all.front().how == How::Local ||
        std::ranges::any_of(all, isMacro))
        return;
    const bool isValue = IsValue(all.front().symbol.kind);
    if (!isValue && !IsTypeKind(all.front().symbol.kind))
        return;
    question = &asked;
    meanings = &all;
    thing = all.front().symbol;
    const bool mayBeFree = isValue && thing.kind != SymbolKind::Member && IsOutsideOfClasses(asked.GetWorld(), thing);
    const size_t word = asked.Word();
    const Token& before = asked.GetTokens()[word - 1];
    isFree = mayBeFree && !before.Is('.') && before.text != "->";
}

// A system's symbol of the same scope may be the same thing, and a method may override one of the system.
bool MeantThing::IsOfProject() const
{
    World& world = question->GetWorld();
    const auto isSystem = [&](const Symbol& each) {
        return each.file != world.TextFile() && world.Files().FileOf(each.file).isSystem;
    };
    const auto isSame = [&](const Meaning& each) { return each.entity == meanings->front().entity; };
    if (std::ranges::any_of(*meanings, [&](const Meaning& each) { return isSame(each) && isSystem(each.symbol); }))
        return false;
    const symbols::Symbols named = world.Index().ByName(thing.name, {.results = kMostCompared});
    const std::string scope = world.VisibleScope(thing);
    const auto mayBeSame = [&](const Symbol& each) {
        return isSystem(each) && (each.kind == SymbolKind::Macro || world.VisibleScope(each) == scope);
    };
    if (named.more || std::ranges::any_of(named.found, mayBeSame))
        return false;
    return thing.scope.empty() || !IsCallable(thing.kind) || !HasSystemBase();
}

bool MeantThing::HasSystemBase() const
{
    World& world = question->GetWorld();
    for (const Class& of : question->GetClasses().Find(thing.scope, "", thing.file))
        for (const Class& each : question->GetClasses().WithBases(of)) {
            const bool isSystem =
                each.symbol.file != world.TextFile() && world.Files().FileOf(each.symbol.file).isSystem;
            const bool isUnknown = !each.symbol.bases.empty() && question->GetClasses().Bases(each).empty();
            if (isSystem || isUnknown)
                return true;
        }
    return false;
}

// "static" outside of headers, or a member of what a source declares for itself.
bool MeantThing::IsOfOneSource() const
{
    World& world = question->GetWorld();
    const auto isElsewhere = [&](const Meaning& each) {
        return each.entity == meanings->front().entity && (each.symbol.file != thing.file || !each.symbol.isFileLocal);
    };
    const bool isMethod = IsCallable(thing.kind) && !IsOutsideOfClasses(world, thing);
    return IsValue(thing.kind) && !isMethod && !world.IsHeader(thing.file) &&
           std::ranges::none_of(*meanings, isElsewhere) && !IsIncludedAnywhere(thing.file);
}

bool MeantThing::IsIncludedAnywhere(symbols::FileNumber file) const
{
    World& world = question->GetWorld();
    const std::string_view path = world.PathOf(file);
    return !world.Index().IncludesOfLeaf(path.substr(path.rfind('/') + 1), {.results = 1}).empty();
}

bool MeantThing::MayBeIn(symbols::FileNumber file)
{
    if (question == nullptr)
        return true;
    World& world = question->GetWorld();
    if (file == thing.file || file == world.TextFile())
        return true;
    if (world.Files().FileOf(file).isSystem) {
        if (!isOfProject)
            isOfProject = IsOfProject();
        return !*isOfProject;
    }
    if (!isOfOneSource)
        isOfOneSource = IsOfOneSource();
    return !*isOfOneSource || world.IsHeader(file) || IsIncludedAnywhere(file);
}

// A definition may leave out the outer scopes: "using namespace n; int A::count;".
bool MeantThing::MayBe(const Symbol& declared) const
{
    if (question == nullptr || !IsValue(thing.kind) || !IsValue(declared.kind) ||
        LeafOf(declared.scope) == LeafOf(thing.scope))
        return true;
    const bool isMember = declared.kind == SymbolKind::Member || declared.kind == SymbolKind::Enumerator;
    const bool isThingMember = thing.kind == SymbolKind::Member || thing.kind == SymbolKind::Enumerator;
    if (declared.kind != thing.kind)
        return !isMember && !isThingMember;
    // Unnamed ones of two files may be copies of one.
    return !isMember || declared.scope.empty() || thing.scope.empty() || HasUnnamed(declared.scope) ||
           HasUnnamed(thing.scope) ||
           question->GetWorld().VisibleScope(declared.scope) == question->GetWorld().VisibleScope(thing.scope);
}

} // namespace resolve
