#include "resolve/World.h"

#include "resolve/Sources.h"
#include "resolve/Type.h"

#include <algorithm>

namespace resolve {

namespace {

constexpr size_t kMostNamed = 4000;         // symbols with one name
constexpr size_t kMostMembers = 4000;       // of one scope
constexpr size_t kMostConditions = 16;      // files whose conditions are read
constexpr size_t kLargestRead = 512 * 1024; // bytes
constexpr size_t kMostSteps = 400'000;

std::vector<symbols::Include> IncludesOf(const ParsedText& text)
{
    std::vector<symbols::Include> includes;
    for (const tagging::Include& include : text.parsed->includes)
        includes.push_back({include.name, 0, include.line, include.isAngled});
    return includes;
}

bool IsUnnamed(std::string_view part)
{
    return part.starts_with("__anon");
}

bool IsMemberKind(SymbolKind kind)
{
    return kind == SymbolKind::Member;
}

} // namespace

World::World(const symbols::Snapshot& snapshot, const Sources& sources, ParsedTextPointer text, symbols::Limits limits,
             KnownFiles* shared)
    : snapshot(snapshot), sources(sources), text(std::move(text)), limits(limits),
      known(shared != nullptr ? *shared : forThis),
      distances(snapshot, this->text->path, IncludesOf(*this->text), known)
{
    if (const auto file = snapshot.FindFile(this->text->path))
        textFile = *file;
    for (const tagging::Symbol& symbol : this->text->parsed->symbols) {
        Symbol added;
        static_cast<tagging::Symbol&>(added) = symbol;
        added.file = textFile;
        own.push_back(added);
    }
}

Conditions World::ConditionsOf(FileNumber file)
{
    const auto isDefinedElsewhere = [&](std::string_view name) {
        const std::vector<Symbol>& all = Named(name);
        return std::any_of(all.begin(), all.end(), [&](const Symbol& symbol) {
            return symbol.kind == SymbolKind::Macro && symbol.file != file &&
                   Distance(symbol.file) < Distances::kUnrelated;
        });
    };
    if (file == textFile)
        return {text->tokens, text->IsCplusplus(), isDefinedElsewhere};
    const std::optional<std::string> content =
        conditions.size() < kMostConditions ? sources.Read(std::string(PathOf(file))) : std::nullopt;
    const bool isRead = content && content->size() <= kLargestRead;
    return {Tokens(isRead ? std::string_view(*content) : ""), text->IsCplusplus(), isDefinedElsewhere};
}

Branch World::BranchAt(FileNumber file, unsigned line)
{
    auto read = conditions.find(file);
    if (read == conditions.end())
        read = conditions.emplace(file, ConditionsOf(file)).first;
    return read->second.At(line);
}

bool World::Goes()
{
    return ++steps < kMostSteps && !(limits.cancel != nullptr && steps % 64 == 0 && limits.cancel->IsCancelled());
}

const std::vector<Symbol>& World::Named(std::string_view name)
{
    const auto seen = named.find(name);
    if (seen != named.end())
        return seen->second;
    std::vector<Symbol> found;
    for (const Symbol& symbol : own)
        if (symbol.name == name)
            found.push_back(symbol);
    if (Goes()) {
        const NamedSymbols others = known.WithName(snapshot, text->path, name, {kMostNamed, limits.cancel});
        steps += others->size();
        found.insert(found.end(), others->begin(), others->end());
    }
    return named.emplace(name, std::move(found)).first->second;
}

std::vector<Symbol> World::InScope(std::string_view scope)
{
    std::vector<Symbol> found;
    for (const Symbol& symbol : own)
        if (symbol.scope == scope)
            found.push_back(symbol);
    if (!Goes())
        return found;
    symbols::Symbols others = snapshot.InScope(scope, {kMostMembers, limits.cancel});
    steps += others.found.size();
    for (const Symbol& symbol : others.found)
        if (symbol.file != textFile)
            found.push_back(symbol);
    return found;
}

std::string_view World::PathOf(FileNumber file)
{
    return file == textFile ? std::string_view(text->path) : distances.FileOf(file).path;
}

bool World::IsFileLocalElsewhere(const Symbol& symbol)
{
    if (symbol.file == textFile || !symbol.isFileLocal)
        return false;
    return !IsHeader(symbol.file) && Distance(symbol.file) != 0 && !IsIncluded(symbol.file);
}

bool World::IsOtherLanguage(const Symbol& symbol)
{
    if (symbol.file == textFile)
        return false;
    const bool isMethod = symbol.kind == SymbolKind::InstanceMethod || symbol.kind == SymbolKind::ClassMethod ||
                          symbol.kind == SymbolKind::InstanceMethodDeclaration ||
                          symbol.kind == SymbolKind::ClassMethodDeclaration;
    if (isMethod && !text->IsObjectiveC())
        return true;
    const tagging::Language language = distances.FileOf(symbol.file).language;
    const bool isCplusplus =
        language == tagging::Language::Cplusplus || language == tagging::Language::ObjectiveCplusplus;
    return isCplusplus && !text->IsCplusplus() && !IsIncluded(symbol.file);
}

bool World::IsIncluded(FileNumber file)
{
    const int distance = Distance(file);
    return distance < Distances::kUnrelated && distance % 2 == 0;
}

bool World::IsTransparent(std::string_view scope, std::string_view part)
{
    if (part == "__debug" || part == "__profile" || part == "__parallel")
        return false; // of the library, and inline only with an option of the compiler
    if (IsUnnamed(part) || part == "__cxx11" || part == "__1" || part == "_V2")
        return true;
    if (!text->IsCplusplus())
        return false;
    for (const Symbol& symbol : Named(part))
        if (symbol.kind == SymbolKind::Namespace && symbol.isInline && symbol.scope == scope)
            return true;
    return false;
}

std::string World::VisibleScope(std::string_view scope)
{
    const auto seen = visible.find(scope);
    if (seen != visible.end())
        return seen->second;
    std::string result;
    std::string_view rest = scope;
    size_t done = 0;
    while (!rest.empty()) {
        const size_t colons = rest.find("::");
        const std::string_view part = rest.substr(0, colons);
        if (!IsTransparent(scope.substr(0, done < 2 ? 0 : done - 2), part))
            result = Joined(result, part);
        const size_t step = colons == std::string_view::npos ? rest.size() : colons + 2;
        rest.remove_prefix(step);
        done += step;
    }
    return visible.emplace(scope, std::move(result)).first->second;
}

std::string World::VisibleScope(const Symbol& symbol)
{
    std::string_view scope = symbol.scope;
    if (symbol.kind == SymbolKind::Enumerator)
        scope = ScopeOf(scope);
    // The members of an unnamed class that has a typedef or a variable are not visible without it.
    if (IsMemberKind(symbol.kind) && IsUnnamed(scope)) {
        const size_t colons = scope.find("::");
        const bool isAllUnnamed = colons == std::string_view::npos || IsUnnamed(scope.substr(colons + 2));
        if (isAllUnnamed)
            return std::string(scope.substr(0, colons));
    }
    return VisibleScope(scope);
}

void World::Note(const std::string& line)
{
    if (notes.size() < 20'000)
        notes += line + "\n";
}

} // namespace resolve
