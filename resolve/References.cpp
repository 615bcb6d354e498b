// Where a name occurs, and what derives from a class.
#include "resolve/ParsedText.h"
#include "resolve/Question.h"
#include "resolve/Resolver.h"

#include <algorithm>
#include <set>

namespace resolve {

namespace {

constexpr size_t kMostDerived = 2000;

// The part of a selector that is a word of its own.
std::string_view FirstPart(std::string_view name)
{
    return name.substr(0, name.find(':'));
}

// The occurrences of a name in one text.
class Occurrences {
public:
    Occurrences(std::string_view text, const std::string& path, std::vector<symbols::Symbol> declared)
        : text(text), path(path), declared(std::move(declared))
    {
    }

    void Collect(std::string_view name, Uses& uses, size_t limit)
    {
        const Tokens tokens(text);
        In(tokens, name, uses, limit);
        for (const PlacedDirective& directive : tokens.Directives())
            if (directive.text.find(name) != std::string_view::npos)
                In(Tokens(directive.text.substr(1), directive.offset + 1, directive.line), name, uses, limit);
        std::stable_sort(uses.found.begin(), uses.found.end(), [](const resolve::Use& a, const resolve::Use& b) {
            return std::tie(a.line, a.column) < std::tie(b.line, b.column);
        });
    }

private:
    void In(const Tokens& tokens, std::string_view name, Uses& uses, size_t limit)
    {
        for (size_t i = 0; i < tokens.Count(); ++i) {
            if (!tokens[i].IsWord() || tokens[i].text != name)
                continue;
            if (uses.found.size() == limit) {
                uses.more = true;
                return;
            }
            const size_t lineBegin = text.rfind('\n', tokens[i].offset == 0 ? 0 : tokens[i].offset - 1);
            const size_t begin = lineBegin == std::string_view::npos || tokens[i].offset == 0 ? 0 : lineBegin + 1;
            uses.found.push_back(
                {path, tokens[i].line, static_cast<unsigned>(tokens[i].offset - begin + 1), RoleOf(tokens, i)});
        }
    }

    resolve::Use::Role RoleOf(const Tokens& tokens, size_t i) const
    {
        for (const symbols::Symbol& symbol : declared)
            if (symbol.line == tokens[i].line)
                return symbol.isDefinition ? resolve::Use::Role::Definition : resolve::Use::Role::Declaration;
        return tokens[i + 1].Is('(') ? resolve::Use::Role::Call : resolve::Use::Role::Other;
    }

    const std::string_view text;
    const std::string path;
    const std::vector<symbols::Symbol> declared;
};

void Append(Uses& to, Uses from)
{
    to.found.insert(to.found.end(), from.found.begin(), from.found.end());
    to.more |= from.more;
}

Uses LocalUses(Question& question, const LocalName& local, const std::string& path, size_t limit)
{
    Uses uses;
    const Tokens& tokens = question.GetTokens();
    const std::string_view name = tokens[local.name].text;
    for (size_t i = 0; i < tokens.Count(); ++i) {
        if (tokens[i].text != name || !tokens[i].IsWord())
            continue;
        const Token& before = tokens[i - 1];
        if (i != local.name && (before.Is('.') || before.text == "->" || before.IsMark("::")))
            continue;
        const auto meant = local.kind == SymbolKind::Label ? FindLabel(tokens, i) : FindLocal(tokens, i);
        const bool isParameter = local.kind == SymbolKind::MacroParameter && question.IsInDirective();
        if (!isParameter && (!meant || meant->name != local.name))
            continue;
        if (uses.found.size() == limit) {
            uses.more = true;
            break;
        }
        const std::string_view text = question.GetWorld().Text().text;
        const size_t lineBegin =
            tokens[i].offset == 0 ? std::string_view::npos : text.rfind('\n', tokens[i].offset - 1);
        const size_t begin = lineBegin == std::string_view::npos ? 0 : lineBegin + 1;
        uses.found.push_back({path, tokens[i].line, static_cast<unsigned>(tokens[i].offset - begin + 1),
                              i == local.name ? resolve::Use::Role::Definition : resolve::Use::Role::Other});
    }
    return uses;
}

bool IsCancelled(symbols::Limits limits)
{
    return limits.cancel != nullptr && limits.cancel->IsCancelled();
}

} // namespace

Uses Resolver::References(const Place& place, symbols::Limits limits) const
{
    Question question(snapshot, sources, TextOf(place), place.offset, limits, Known());
    const MeaningList meanings = question.Meanings();
    if (question.Local())
        return LocalUses(question, *question.Local(), place.path, limits.results);
    Uses uses;
    if (question.Name().empty() || meanings.empty())
        return uses;
    const std::string name(FirstPart(question.Name()));
    const FileNumber own = question.GetWorld().TextFile();
    std::vector<Symbol> declared;
    for (const Symbol& symbol : question.GetWorld().OwnSymbols())
        if (FirstPart(symbol.name) == name)
            declared.push_back(symbol);
    Occurrences(place.text, place.path, declared).Collect(name, uses, limits.results);
    Append(uses,
           ReferencesIn(name, own, {limits.results - std::min(limits.results, uses.found.size()), limits.cancel}));
    return uses;
}

Uses Resolver::ReferencesOf(std::string_view name, symbols::Limits limits) const
{
    return ReferencesIn(std::string(FirstPart(LeafOf(name))), World::kNewFile, limits);
}

Uses Resolver::ReferencesIn(const std::string& name, FileNumber except, symbols::Limits limits) const
{
    Uses uses;
    for (const FileNumber number : snapshot.FilesMentioning(name, {SIZE_MAX, limits.cancel})) {
        if (number == except)
            continue;
        if (uses.found.size() >= limits.results || IsCancelled(limits)) {
            uses.more = true;
            break;
        }
        const symbols::File file = snapshot.FileOf(number);
        const std::string path(file.path);
        std::optional<std::string> text;
        if (const auto open = snapshot.OpenText(number))
            text = *open;
        else
            text = sources.Read(path);
        if (!text)
            continue;
        std::vector<Symbol> declared;
        for (const Symbol& symbol : snapshot.OfFile(number).found)
            if (FirstPart(symbol.name) == name)
                declared.push_back(symbol);
        Uses here;
        Occurrences(*text, path, std::move(declared)).Collect(name, here, limits.results - uses.found.size());
        Append(uses, std::move(here));
    }
    return uses;
}

Answers Resolver::Implementations(const Place& place, symbols::Limits limits) const
{
    Answers answers;
    answers.text = TextOf(place);
    Question question(snapshot, sources, answers.text, place.offset, limits, Known());
    const MeaningList meanings = question.Meanings();
    answers.name = question.Name();
    if (meanings.empty())
        return answers;
    World& world = question.GetWorld();
    const Symbol& meant = meanings.front().symbol;
    const bool isClass = IsClassKind(meant.kind);
    const std::string base(isClass ? meant.name : LeafOf(meant.scope));
    if (base.empty())
        return answers;
    std::set<std::string> seen = {base};
    std::vector<std::string> bases = {base};
    for (size_t i = 0; i < bases.size() && i < kMostDerived && world.Goes(); ++i) {
        for (const Symbol& derived : snapshot.DerivedFrom(bases[i], {kMostDerived, limits.cancel}).found) {
            const std::string scope = Joined(derived.scope, derived.name);
            if (seen.insert(std::string(derived.name)).second)
                bases.emplace_back(derived.name);
            std::vector<Symbol> found;
            if (isClass)
                found = {derived};
            else
                for (const Symbol& symbol : world.Named(meant.name))
                    if (symbol.scope == scope && IsCallable(symbol.kind) == IsCallable(meant.kind))
                        found.push_back(symbol);
            const bool hasDefinition =
                std::any_of(found.begin(), found.end(), [](const Symbol& each) { return each.isDefinition; });
            for (const Symbol& symbol : found) {
                if (hasDefinition && !symbol.isDefinition)
                    continue;
                if (answers.found.size() == limits.results) {
                    answers.more = true;
                    return answers;
                }
                answers.found.push_back({symbol, std::string(world.PathOf(symbol.file)), How::Scope,
                                         (isClass ? "derived from '" : "overrides the one of '") + bases[i] + "'"});
            }
        }
    }
    return answers;
}

} // namespace resolve
