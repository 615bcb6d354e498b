// Where a name occurs, and what derives from a class.
#include "resolve/ParsedText.h"
#include "resolve/Question.h"
#include "resolve/Resolver.h"
#include "tagging/tokens/SourceTokens.h"

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

unsigned ColumnOf(std::string_view text, size_t offset)
{
    const size_t before = offset == 0 ? std::string_view::npos : text.rfind('\n', offset - 1);
    return static_cast<unsigned>(before == std::string_view::npos ? offset + 1 : offset - before);
}

// The occurrences of a name in one text, in one pass that ends with the last of them.
class Occurrences {
public:
    Occurrences(std::string_view text, const std::string& path, const std::vector<symbols::Symbol>& declared)
        : text(text), path(path), declared(declared)
    {
    }

    void Collect(std::string_view wanted, Uses& uses, size_t limit)
    {
        name = wanted;
        end = text.rfind(name);
        if (name.empty() || end == std::string_view::npos)
            return;
        Read(text, 1, uses, limit);
    }

private:
    void Read(std::string_view part, unsigned line, Uses& uses, size_t limit)
    {
        tagging::SourceTokens source(part);
        bool mayBeCall = false; // the token before is the name
        for (tagging::Token token; source.Next(token) && !uses.more;) {
            if (mayBeCall && token.Is('(') && uses.found.back().role == resolve::Use::Role::Other)
                uses.found.back().role = resolve::Use::Role::Call;
            const size_t offset = static_cast<size_t>(token.text.data() - text.data());
            if (offset > end)
                return;
            mayBeCall = token.kind == tagging::Token::kWord && token.text == name && !IsOff();
            if (mayBeCall)
                mayBeCall = Add(offset, token.line + line - 1, uses, limit);
            else if (token.kind == tagging::Token::kDirective)
                ReadDirective(token, uses, limit);
        }
    }

    void ReadDirective(const tagging::Token& token, Uses& uses, size_t limit)
    {
        const tagging::Directive directive(token.text);
        if (directive.BeginsBranches())
            off.push_back(directive.IsNever());
        else if (!off.empty() && directive.ContinuesBranches())
            off.back() = directive.IsNever();
        else if (!off.empty() && directive.EndsBranches())
            off.pop_back();
        const bool mentions = token.text.find(name) != std::string_view::npos;
        if (mentions && directive.name != "include" && directive.name != "error" && !IsOff())
            Read(token.text.substr(1), token.line, uses, limit);
    }

    bool IsOff() const { return std::find(off.begin(), off.end(), true) != off.end(); }

    bool Add(size_t offset, unsigned line, Uses& uses, size_t limit)
    {
        if (uses.found.size() == limit) {
            uses.more = true;
            return false;
        }
        uses.found.push_back({path, line, ColumnOf(text, offset), RoleAt(line)});
        return true;
    }

    resolve::Use::Role RoleAt(unsigned line) const
    {
        for (const symbols::Symbol& symbol : declared)
            if (symbol.line == line)
                return symbol.isDefinition ? resolve::Use::Role::Definition : resolve::Use::Role::Declaration;
        return resolve::Use::Role::Other;
    }

    const std::string_view text;
    const std::string& path;
    const std::vector<symbols::Symbol>& declared;
    std::string_view name;
    size_t end = 0;        // nothing stands behind it
    std::vector<bool> off; // the branches around the token that no compiler reads
};

std::vector<symbols::Symbol> DeclaredAs(std::string_view name, const std::vector<symbols::Symbol>& symbols)
{
    std::vector<symbols::Symbol> declared;
    for (const symbols::Symbol& symbol : symbols)
        if (FirstPart(symbol.name) == name)
            declared.push_back(symbol);
    return declared;
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
        uses.found.push_back({path, tokens[i].line, ColumnOf(question.GetWorld().Text().text, tokens[i].offset),
                              i == local.name ? resolve::Use::Role::Definition : resolve::Use::Role::Other});
    }
    return uses;
}

bool IsCancelled(symbols::Limits limits)
{
    return limits.cancel != nullptr && limits.cancel->IsCancelled();
}

} // namespace

bool Resolver::ForEachUse(const Place& place, symbols::Limits limits, bool inTextOnly, const UseSink& sink) const
{
    Question question(snapshot, sources, TextOf(place), place.offset, limits, Known());
    const MeaningList meanings = question.Meanings();
    Uses own;
    if (question.Local()) {
        own = LocalUses(question, *question.Local(), place.path, limits.results);
        const bool goesOn = own.found.empty() || sink(place.text, std::move(own.found));
        return own.more || !goesOn;
    }
    if (question.Name().empty() || meanings.empty())
        return false;
    const std::string name(FirstPart(question.Name()));
    const std::vector<Symbol> declared = DeclaredAs(name, question.GetWorld().OwnSymbols());
    Occurrences(place.text, place.path, declared).Collect(name, own, limits.results);
    const size_t count = own.found.size();
    if (count > 0 && !sink(place.text, std::move(own.found)))
        return true;
    if (inTextOnly || own.more)
        return own.more;
    return EachUseIn(name, question.GetWorld().TextFile(), {limits.results - count, limits.cancel}, sink);
}

Uses Resolver::References(const Place& place, symbols::Limits limits) const
{
    Uses uses;
    uses.more = ForEachUse(place, limits, false, [&](std::string_view, std::vector<Use> found) {
        uses.found.insert(uses.found.end(), found.begin(), found.end());
        return true;
    });
    return uses;
}

Uses Resolver::ReferencesOf(std::string_view name, symbols::Limits limits) const
{
    Uses uses;
    uses.more = EachUseIn(std::string(FirstPart(LeafOf(name))), World::kNewFile, limits,
                          [&](std::string_view, std::vector<Use> found) {
                              uses.found.insert(uses.found.end(), found.begin(), found.end());
                              return true;
                          });
    return uses;
}

bool Resolver::EachUseIn(const std::string& name, FileNumber except, symbols::Limits limits, const UseSink& sink) const
{
    size_t left = limits.results;
    for (const FileNumber number : snapshot.FilesMentioning(name, {SIZE_MAX, limits.cancel})) {
        if (number == except)
            continue;
        if (left == 0 || IsCancelled(limits))
            return true;
        const std::string path(snapshot.FileOf(number).path);
        std::optional<std::string> text;
        if (const auto open = snapshot.OpenText(number))
            text = *open;
        else
            text = sources.Read(path);
        if (!text || text->find(name) == std::string::npos)
            continue;
        const std::vector<Symbol> declared = DeclaredAs(name, snapshot.OfFile(number).found);
        Uses here;
        Occurrences(*text, path, declared).Collect(name, here, left);
        left -= here.found.size();
        if ((!here.found.empty() && !sink(*text, std::move(here.found))) || here.more)
            return true;
    }
    return false;
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
