#include "resolve/Classes.h"

#include "resolve/LibraryTypes.h"
#include "resolve/Tokens.h"

#include <algorithm>

namespace resolve {

namespace {

constexpr int kMostTypedefs = 16;
constexpr size_t kMostClasses = 6;
constexpr size_t kMostBases = 64;
constexpr int kOtherScope = 100;

// "Base<T>, Other" without access and virtual.
std::vector<std::string_view> BasesIn(std::string_view bases)
{
    std::vector<std::string_view> found;
    const Tokens tokens(bases);
    for (const Tokens::Range& part : tokens.Parts(0, tokens.Count()))
        if (!part.IsEmpty())
            found.push_back(tokens.Text(part.begin, part.end - 1));
    return found;
}

Bindings BindingsOf(const Symbol& symbol, const std::vector<Type>& arguments)
{
    Bindings bindings;
    const std::vector<std::string> names = TemplateParameterNames(symbol.templateParameters);
    for (size_t i = 0; i < names.size() && i < arguments.size(); ++i)
        if (!names[i].empty())
            bindings.emplace_back(names[i], arguments[i]);
    return bindings;
}

int KindOrder(SymbolKind kind)
{
    switch (kind) {
    case SymbolKind::Implementation:
    case SymbolKind::Category:
        return 2;
    case SymbolKind::UsingName:
        return 1;
    default:
        return 0;
    }
}

} // namespace

bool IsClassKind(SymbolKind kind)
{
    switch (kind) {
    case SymbolKind::Class:
    case SymbolKind::Struct:
    case SymbolKind::Union:
    case SymbolKind::Enum:
    case SymbolKind::Interface:
    case SymbolKind::Implementation:
    case SymbolKind::Protocol:
        return true;
    default:
        return false;
    }
}

bool IsTypeKind(SymbolKind kind)
{
    return IsClassKind(kind) || kind == SymbolKind::Typedef;
}

Type BoundType(const Symbol& symbol, const Bindings& bindings)
{
    Type type = Substituted(ParseType(symbol.type, symbol.scope, symbol.file), bindings);
    // "value_type" and "Node" in a template depend on its arguments.
    const bool isMemberType = type.outer.empty() && type.scope == symbol.scope && ScopeOf(type.name).empty();
    if (isMemberType && !IsBuiltInType(type.name))
        for (const auto& [name, bound] : bindings)
            type.outer.push_back(bound);
    return type;
}

std::vector<std::string> OuterScopes(std::string_view scope)
{
    std::vector<std::string> scopes;
    for (; !scope.empty(); scope = ScopeOf(scope))
        scopes.emplace_back(scope);
    scopes.emplace_back();
    return scopes;
}

int Classes::ScopeLevel(const std::string& visible, std::string_view qualifier, const std::vector<std::string>& outer)
{
    for (size_t i = 0; i < outer.size(); ++i)
        if (visible == Joined(outer[i], qualifier))
            return static_cast<int>(i);
    const bool endsIn =
        !qualifier.empty() && (visible == qualifier || visible.ends_with("::" + std::string(qualifier)));
    return endsIn ? kOtherScope / 2 : kOtherScope;
}

std::vector<Symbol> Classes::FindTypes(std::string_view name, std::string_view scope, FileNumber file)
{
    const bool isGlobal = name.starts_with("::");
    if (isGlobal)
        name.remove_prefix(2);
    const std::string qualifier = world.VisibleScope(ScopeOf(name));
    const std::vector<std::string> outer =
        isGlobal ? std::vector<std::string>{""} : OuterScopes(world.VisibleScope(scope));
    struct Ranked {
        Symbol symbol;
        int level;
        int kind;
        bool isOtherFile;
        int distance;
        bool isSpecialization;
    };
    std::vector<Ranked> ranked;
    for (const Symbol& symbol : world.Named(LeafOf(name))) {
        const SymbolKind kind = symbol.kind;
        const bool isUsing = kind == SymbolKind::UsingName && !symbol.target.empty() && symbol.target != symbol.name;
        if (!IsTypeKind(kind) && kind != SymbolKind::Namespace && kind != SymbolKind::NamespaceAlias && !isUsing)
            continue;
        const bool isUnnamed = symbol.name.starts_with("__anon");
        if (isUnnamed && symbol.file != file)
            continue;
        if (!world.Goes())
            break;
        int level = ScopeLevel(world.VisibleScope(symbol.scope), qualifier, outer);
        if (world.Text().IsC() && qualifier.empty())
            level = 0; // C has no scopes but files
        ranked.push_back({symbol, level, KindOrder(kind), symbol.file != file, world.Distance(symbol.file),
                          symbol.isSpecialization});
    }
    std::stable_sort(ranked.begin(), ranked.end(), [](const Ranked& a, const Ranked& b) {
        if (a.level != b.level)
            return a.level < b.level;
        if (a.isOtherFile != b.isOtherFile)
            return b.isOtherFile;
        if (a.isSpecialization != b.isSpecialization)
            return b.isSpecialization;
        if (a.kind != b.kind)
            return a.kind < b.kind;
        return a.distance < b.distance;
    });
    std::vector<Symbol> result;
    for (const Ranked& each : ranked)
        if (qualifier.empty() || each.level < kOtherScope)
            result.push_back(each.symbol);
    return result;
}

// What the template around a member type stands for.
void Classes::AddOuter(const Symbol& symbol, const std::vector<Type>& outer, Bindings* bindings)
{
    if (outer.empty() || symbol.scope.empty())
        return;
    const std::vector<Symbol> classes = FindTypes(symbol.scope, "", symbol.file);
    if (classes.empty())
        return;
    const Bindings more = BindingsOf(classes.front(), outer);
    bindings->insert(bindings->end(), more.begin(), more.end());
}

Type Classes::Canonical(const Type& type)
{
    Type result = type;
    for (int i = 0; i < kMostTypedefs && result.IsKnown() && !IsLibraryType(result); ++i) {
        const std::vector<Symbol> found = FindTypes(result.name, result.scope, result.file);
        if (found.empty())
            return result;
        const Symbol& symbol = found.front();
        std::string target(symbol.type);
        Bindings bindings = BindingsOf(symbol, result.arguments);
        if (symbol.kind == SymbolKind::UsingName)
            target = symbol.target;
        else if (symbol.kind != SymbolKind::Typedef)
            return result;
        Type next = ParseType(target, symbol.scope, symbol.file);
        if (!next.IsKnown() || (next.name == result.name && next.scope == result.scope && next.file == result.file))
            return result;
        if (symbol.kind == SymbolKind::UsingName)
            next.arguments = result.arguments;
        // "typedef struct node node;": the tag, not the typedef itself.
        if (next.name == symbol.name && symbol.kind == SymbolKind::Typedef) {
            result.scope = symbol.scope;
            result.file = symbol.file;
            result.pointers += next.pointers;
            return result;
        }
        AddOuter(symbol, result.outer, &bindings);
        next = Substituted(next, bindings);
        next.pointers += result.pointers;
        next.isFunction |= result.isFunction;
        result = std::move(next);
    }
    return result;
}

std::vector<Class> Classes::Find(const Type& type)
{
    const Type canonical = Canonical(type);
    std::vector<Class> classes;
    if (!canonical.IsKnown())
        return classes;
    std::string_view name = canonical.name;
    if (name == "id" && !canonical.arguments.empty())
        return Find(canonical.arguments.front());
    if (name == "std::string" || name == "std::wstring")
        name = "std::basic_string";
    else if (name == "std::string_view")
        name = "std::basic_string_view";
    for (const Symbol& symbol : FindTypes(name, canonical.scope, canonical.file)) {
        if (!IsClassKind(symbol.kind) || classes.size() == kMostClasses)
            continue;
        Bindings bindings = BindingsOf(symbol, canonical.arguments);
        AddOuter(symbol, canonical.outer, &bindings);
        classes.push_back({symbol, Joined(symbol.scope, symbol.name), std::move(bindings)});
    }
    return classes;
}

std::vector<Class> Classes::Find(std::string_view name, std::string_view scope, FileNumber file)
{
    return Find(ParseType(name, scope, file));
}

std::vector<Class> Classes::Bases(const Class& derived)
{
    std::vector<Class> bases;
    // An @implementation, a class extension and a category do not repeat what the @interface says.
    std::string all(derived.symbol.bases);
    if (derived.symbol.kind == SymbolKind::Implementation || derived.symbol.kind == SymbolKind::Interface)
        for (const Symbol& other : world.Named(derived.symbol.name))
            if (other.kind == SymbolKind::Interface && other.bases != derived.symbol.bases)
                all += (all.empty() ? "" : ",") + std::string(other.bases);
    for (const std::string_view text : BasesIn(all)) {
        Type base = Substituted(ParseType(text, derived.symbol.scope, derived.symbol.file), derived.bindings);
        if (base.IsKnown() && base.name != derived.symbol.name)
            for (const Class& found : Find(base)) {
                bases.push_back(found);
                break;
            }
    }
    return bases;
}

std::vector<Class> Classes::WithBases(const Class& derived)
{
    std::vector<Class> all = {derived};
    std::set<std::string> seen = {derived.scope};
    for (size_t i = 0; i < all.size() && all.size() < kMostBases && world.Goes(); ++i)
        for (Class& base : Bases(Class(all[i])))
            if (seen.insert(base.scope).second)
                all.push_back(std::move(base));
    return all;
}

bool Classes::IsMemberOf(const Symbol& symbol, const std::string& scope, const std::string& visible)
{
    if (symbol.scope == scope)
        return true;
    if (symbol.scope.size() < scope.size() && LeafOf(symbol.scope) != LeafOf(visible))
        return false;
    if (symbol.scope.starts_with(scope) && symbol.scope.substr(scope.size()).starts_with("::__anon"))
        return true;
    return !visible.empty() && !scope.starts_with("__anon") && world.VisibleScope(symbol) == visible;
}

std::vector<ClassMember> Classes::MembersNamed(const Class& of, std::string_view name)
{
    std::vector<ClassMember> found;
    const std::vector<Symbol>& named = world.Named(name);
    if (named.empty())
        return found;
    size_t depth = 0;
    for (const Class& each : WithBases(of)) {
        const std::string visible = world.VisibleScope(each.scope);
        const bool isUnnamed = each.symbol.name.starts_with("__anon");
        const bool isC = world.Text().IsC();
        for (const Symbol& symbol : named)
            if (IsMemberOf(symbol, each.scope, visible) && (!isUnnamed || symbol.file == each.symbol.file) &&
                !(isC && symbol.file != each.symbol.file))
                found.push_back({symbol, each.bindings, each.scope, depth});
        if (!found.empty())
            return found;
        ++depth;
    }
    return found;
}

// Another file's class of the same name is another class. An interface has categories, and macros may hide the body.
bool Classes::IsWholeInFile(const Class& of)
{
    if (world.Text().IsC() || of.symbol.name.starts_with("__anon"))
        return true;
    if (of.symbol.kind != SymbolKind::Class && of.symbol.kind != SymbolKind::Struct)
        return false;
    const std::vector<Symbol> found = world.InScope(of.scope);
    return std::any_of(found.begin(), found.end(), [&](const Symbol& each) { return each.file == of.symbol.file; });
}

std::vector<ClassMember> Classes::Members(const Class& of)
{
    std::vector<ClassMember> found;
    std::set<std::string_view> hidden;
    size_t depth = 0;
    for (const Class& each : WithBases(of)) {
        std::vector<std::string> scopes = {each.scope};
        std::vector<std::string_view> names;
        const bool isWholeInFile = IsWholeInFile(each);
        for (size_t i = 0; i < scopes.size() && i < 20; ++i)
            for (const Symbol& symbol : world.InScope(scopes[i])) {
                if (symbol.file != each.symbol.file && isWholeInFile)
                    continue;
                if (symbol.name.starts_with("__anon")) {
                    scopes.push_back(Joined(symbol.scope, symbol.name));
                    continue;
                }
                if (hidden.contains(symbol.name))
                    continue;
                names.push_back(symbol.name);
                found.push_back({symbol, each.bindings, each.scope, depth});
            }
        hidden.insert(names.begin(), names.end());
        ++depth;
    }
    return found;
}

Type Classes::TypeOf(const ClassMember& member)
{
    return BoundType(member.symbol, member.bindings);
}

} // namespace resolve
