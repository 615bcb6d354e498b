#include "resolve/Names.h"

#include "resolve/Ranking.h"

#include <algorithm>

namespace resolve {

namespace {

constexpr int kLevels = 10; // of bases, within one scope
constexpr int kUsedNamespace = 900;
constexpr int kMostAliases = 4;

bool IsNeverMeant(SymbolKind kind)
{
    switch (kind) {
    case SymbolKind::None:
    case SymbolKind::Local:
    case SymbolKind::Parameter:
    case SymbolKind::MacroParameter:
    case SymbolKind::TemplateParameter:
    case SymbolKind::Label:
        return true;
    default:
        return false;
    }
}

bool HasScope(SymbolKind kind)
{
    return IsClassKind(kind) || kind == SymbolKind::Namespace || IsCallable(kind) || IsMethod(kind);
}

} // namespace

const Symbol* Names::FunctionAt(unsigned line)
{
    const Symbol* found = nullptr;
    for (const Symbol& symbol : world.OwnSymbols()) {
        const bool isFunction = symbol.kind == SymbolKind::Function || symbol.kind == SymbolKind::InstanceMethod ||
                                symbol.kind == SymbolKind::ClassMethod;
        const bool isAround = symbol.line <= line && line <= std::max(symbol.endLine, symbol.line);
        if (isFunction && isAround && !symbol.name.starts_with("__anon"))
            if (found == nullptr || symbol.line >= found->line)
                found = &symbol;
    }
    return found;
}

std::vector<std::string> Names::ScopesAt(unsigned line)
{
    const Symbol* innermost = nullptr;
    for (const Symbol& symbol : world.OwnSymbols()) {
        const bool isAround = symbol.line <= line && line <= symbol.endLine;
        const bool isInner = symbol.name.starts_with("__anon") && IsCallable(symbol.kind);
        if (!isAround || !HasScope(symbol.kind) || isInner || symbol.scopeKind == SymbolKind::Function)
            continue;
        if (innermost == nullptr || symbol.line > innermost->line ||
            (symbol.line == innermost->line && symbol.endLine <= innermost->endLine))
            innermost = &symbol;
    }
    if (innermost == nullptr)
        return {""};
    const bool hasMembers = IsClassKind(innermost->kind) || innermost->kind == SymbolKind::Namespace;
    const std::string scope = hasMembers ? Joined(innermost->scope, innermost->name) : std::string(innermost->scope);
    std::vector<std::string> scopes = OuterScopes(scope);
    if (scopes.size() > 1 && !hasMembers) {
        // "void Shape::Draw()" after "using namespace drawing": the class is in another scope than it seems.
        const auto found = classes.Find(scope, "", world.TextFile());
        if (!found.empty() && found.front().scope != scope) {
            std::vector<std::string> outer = OuterScopes(found.front().scope);
            outer.insert(outer.begin(), scope);
            return outer;
        }
    }
    return scopes;
}

void Names::AddScope(std::map<std::string, int>& into, const std::string& scope, int level)
{
    into.emplace(world.VisibleScope(scope), level);
    const std::vector<Symbol> found = classes.FindTypes(scope, "", world.TextFile());
    if (scope.empty() || found.empty() || !IsClassKind(found.front().kind))
        return;
    const Class inner{found.front(), Joined(found.front().scope, found.front().name), {}};
    int depth = 0;
    for (const Class& each : classes.WithBases(inner))
        into.emplace(world.VisibleScope(each.scope), level + std::min(depth++, kLevels - 1));
}

std::map<std::string, int> Names::VisibleScopes(unsigned line)
{
    if (levelsLine == line && !levels.empty())
        return levels;
    levels.clear();
    levelsLine = line;
    int level = 0;
    for (const std::string& scope : ScopesAt(line)) {
        AddScope(levels, scope, level);
        level += kLevels;
    }
    // "TEST_F(Suite, Name) {" makes a method of a class that derives from its first argument.
    const Symbol* const function = FunctionAt(line);
    if (function != nullptr && LooksLikeMacroCall(*function)) {
        const std::vector<Type> arguments = ParameterTypes(function->signature);
        const Type first = arguments.empty() ? Type() : arguments.front();
        for (const Class& suite : classes.Find(first)) {
            AddScope(levels, suite.scope, -kLevels);
            break;
        }
    }
    for (const Symbol& symbol : world.OwnSymbols())
        if (symbol.kind == SymbolKind::UsingNamespace)
            levels.emplace(world.VisibleScope(symbol.target.empty() ? symbol.name : symbol.target), kUsedNamespace);
    return levels;
}

bool Names::IsVisible(const Symbol& symbol)
{
    return !IsNeverMeant(symbol.kind) && !symbol.name.empty();
}

MeaningList Names::Unqualified(std::string_view name, unsigned line, const Usage& use)
{
    MeaningList meanings;
    const std::map<std::string, int> visible = VisibleScopes(line);
    const bool isC = !world.Text().IsCplusplus();
    const std::vector<Symbol> named = world.Named(name);
    const bool isMacro = std::any_of(named.begin(), named.end(), [](const Symbol& each) {
        return each.kind == SymbolKind::Macro && !each.signature.empty();
    });
    std::map<std::string, MeaningList, std::less<>> meantBy; // aliases, by the scope they lead to
    for (const Symbol& symbol : named) {
        if (!IsVisible(symbol) || !world.Goes())
            continue;
        if (isMacro && LooksLikeMacroCall(symbol))
            continue;
        Meaning meaning{.symbol = symbol, .level = kUnreachable, .bindings = {}, .reason = {}};
        const auto level = visible.find(world.VisibleScope(symbol));
        if (level != visible.end())
            meaning.level = level->second;
        else if (isC && !IsMemberLike(symbol))
            meaning.level = kUsedNamespace;
        const bool isAlias = symbol.kind == SymbolKind::UsingName && !symbol.target.empty() && symbol.target != name &&
                             meaning.level < kUnreachable;
        if (isAlias) {
            const std::string_view scope = ScopeOf(symbol.target);
            auto meant = meantBy.find(scope);
            if (meant == meantBy.end())
                meant = meantBy.emplace(scope, Qualified(scope, name, line, use)).first;
            for (Meaning each : meant->second) {
                if (each.level >= kUnreachable)
                    continue;
                each.level = meaning.level;
                meanings.push_back(std::move(each));
            }
            continue;
        }
        if (meaning.level >= kUnreachable)
            meaning.reason = "found by its name alone";
        else if (!symbol.scope.empty() && level != visible.end() && level->second < kUsedNamespace) {
            meaning.how = IsMemberLike(symbol) ? How::Member : How::Scope;
            meaning.reason = "in the scope '" + level->first + "' around the place";
        } else if (symbol.file == world.TextFile()) {
            meaning.how = How::Scope;
            meaning.reason = "in the same file";
        } else if (world.Distance(symbol.file) < Distances::kUnrelated) {
            meaning.how = How::Include;
            meaning.reason = "in or with an included file";
        } else {
            meaning.reason = "in a file that is not included";
        }
        meanings.push_back(std::move(meaning));
    }
    PutClassFirst(meanings);
    Rank(meanings, use, line);
    return meanings;
}

// The name of a class means the class, even where its constructor is nearer.
void Names::PutClassFirst(MeaningList& meanings)
{
    int level = INT32_MAX;
    for (const Meaning& each : meanings)
        if (IsTypeKind(each.symbol.kind))
            level = std::min(level, each.level);
    for (Meaning& each : meanings)
        if (level < INT32_MAX && IsCallable(each.symbol.kind) && each.symbol.name == LeafOf(each.symbol.scope))
            each.level = std::max(each.level, level + 1);
}

MeaningList Names::Qualified(std::string_view qualifier, std::string_view name, unsigned line, const Usage& use)
{
    MeaningList meanings;
    Type type = ParseType(qualifier, ScopesAt(line).front(), world.TextFile());
    for (int i = 0; i < kMostAliases; ++i) {
        const auto found = classes.FindTypes(type.name, type.scope, type.file);
        if (found.empty() || found.front().kind != SymbolKind::NamespaceAlias || found.front().target.empty())
            break;
        type = ParseType(found.front().target, found.front().scope, found.front().file);
    }
    const std::vector<Symbol> types = classes.FindTypes(type.name, type.scope, type.file);
    const bool isNamespace = !types.empty() && types.front().kind == SymbolKind::Namespace;
    const std::vector<Class> of = isNamespace ? std::vector<Class>() : classes.Find(type);
    if (!of.empty()) {
        meanings = Members(of, name, use, "a member of '" + of.front().scope + "'");
        if (!meanings.empty())
            return meanings;
    }
    std::string wanted = type.name.empty() ? std::string(qualifier) : type.name;
    if (wanted.starts_with("::"))
        wanted.erase(0, 2);
    wanted = world.VisibleScope(wanted);
    const std::map<std::string, int> visible = VisibleScopes(line);
    const std::vector<Symbol> named = world.Named(name);
    for (const Symbol& symbol : named) {
        if (!IsVisible(symbol) || !world.Goes())
            continue;
        Meaning meaning{.symbol = symbol, .level = kUnreachable, .bindings = {}, .reason = "found by its name alone"};
        for (const std::string& scope : {world.VisibleScope(symbol), world.VisibleScope(symbol.scope)}) {
            for (const auto& [outer, level] : visible)
                if (scope == Joined(outer, wanted))
                    meaning.level = std::min(meaning.level, level);
            if (scope == wanted)
                meaning.level = std::min(meaning.level, kUsedNamespace);
            else if (scope.ends_with("::" + wanted))
                meaning.level = std::min(meaning.level, kUsedNamespace + 1);
        }
        if (meaning.level < kUnreachable) {
            meaning.how = How::Scope;
            meaning.reason = "in the scope '" + wanted + "'";
        }
        meanings.push_back(std::move(meaning));
    }
    Rank(meanings, use, line);
    return meanings;
}

MeaningList Names::Members(const std::vector<Class>& of, std::string_view name, const Usage& use,
                           const std::string& why)
{
    MeaningList meanings;
    for (const Class& each : of) {
        for (const ClassMember& member : classes.MembersNamed(each, name)) {
            if (!IsVisible(member.symbol))
                continue;
            meanings.push_back({.symbol = member.symbol,
                                .how = How::Member,
                                .level = static_cast<int>(member.depth),
                                .bindings = member.bindings,
                                .reason = why});
        }
        if (!meanings.empty())
            break;
    }
    Rank(meanings, use, 0);
    return meanings;
}

MeaningList Names::AnyMember(std::string_view name, const Usage& use)
{
    MeaningList meanings;
    const std::vector<Symbol> named = world.Named(name);
    for (const Symbol& symbol : named) {
        const bool isMember = IsMemberLike(symbol) || (IsCallable(symbol.kind) && !symbol.scope.empty());
        if (!isMember)
            continue;
        meanings.push_back({.symbol = symbol,
                            .level = symbol.scopeKind == SymbolKind::Namespace ? 1 : 0,
                            .bindings = {},
                            .reason = "a member of that name; the receiver's type is unknown"});
    }
    Rank(meanings, use, 0);
    return meanings;
}

void Names::Rank(MeaningList& meanings, const Usage& use, unsigned line)
{
    RankMeanings(meanings, use, line, world);
}

} // namespace resolve
