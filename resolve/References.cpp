// Where a name occurs, and what derives from a class.
#include "base/Identifier.h"
#include "resolve/Columns.h"
#include "resolve/LocalUses.h"
#include "resolve/MeantThing.h"
#include "resolve/ParsedText.h"
#include "resolve/Question.h"
#include "resolve/Resolver.h"
#include "tagging/tokens/SourceTokens.h"

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <set>

namespace resolve {

namespace {

constexpr size_t kMostDerived = 2000;

// The part of a selector that is a word of its own.
std::string_view FirstPart(std::string_view name)
{
    return name.substr(0, name.find(':'));
}

// How well one occurrence of a name can be what a symbol of its line declares. Indexes know only lines.
struct Mention {
    size_t use = 0; // its number
    bool isBehindTag = false;
    bool isBeforeScope = false;
    bool isBeforeParenthesis = false;
    bool isBeforeDeclarator = false;

    int Distance(symbols::SymbolKind kind) const // 0 is best
    {
        if (IsClassKind(kind) || kind == symbols::SymbolKind::Union || kind == symbols::SymbolKind::Enum ||
            kind == symbols::SymbolKind::Namespace)
            return (isBehindTag ? 0 : 4) + (isBeforeScope ? 2 : 0);
        if (kind == symbols::SymbolKind::Macro)
            return 0;
        const int elsewhere = (isBehindTag ? 4 : 0) + (isBeforeScope ? 4 : 0);
        return elsewhere + (IsCallable(kind) ? (isBeforeParenthesis ? 0 : 2) : (isBeforeDeclarator ? 2 : 0));
    }
};

bool IsTagWord(const tagging::Token& token)
{
    if (token.kind != tagging::Token::kWord)
        return false;
    constexpr std::string_view kWords[] = {"struct",    "class",     "union",    "enum",
                                           "namespace", "interface", "protocol", "implementation"};
    return std::find(std::begin(kWords), std::end(kWords), token.text) != std::end(kWords);
}

// The occurrences of a name in one text, in one pass that ends with the last of them.
class Occurrences {
public:
    Occurrences(std::string_view text, const std::string& path, const std::vector<symbols::Symbol>& declared,
                const MeantThing& thing)
        : text(text), path(path), declared(declared), thing(thing), columns(text)
    {
    }

    void Collect(std::string_view wanted, bool inComments, Uses& uses, size_t limit)
    {
        name = wanted;
        takesComments = inComments;
        end = text.rfind(name);
        if (name.empty() || end == std::string_view::npos)
            return;
        Read(text, 1, uses, limit);
        for (const symbols::Symbol& symbol : declared)
            TellDeclared(symbol, uses);
        DropOthers(uses);
    }

private:
    void Read(std::string_view part, unsigned line, Uses& uses, size_t limit)
    {
        tagging::SourceTokens source(part);
        bool isBehindName = false;
        tagging::Token before;
        size_t gap = OffsetOf(part); // what stands between two tokens begins here
        for (tagging::Token token; source.Next(token) && !uses.more;) {
            if (isBehindName)
                TellNext(token, uses);
            const size_t offset = OffsetOf(token.text);
            AddComments(gap, offset, token.line + line - 1, uses, limit);
            gap = offset + token.text.size();
            if (offset > end || uses.more)
                return;
            isBehindName = token.kind == tagging::Token::kWord && token.text == name && !IsOff() &&
                           (thing.MayBeBehindDot() || !IsMemberSign(before));
            if (isBehindName)
                isBehindName = Add(offset, token.line + line - 1, before, uses, limit);
            else if (token.kind == tagging::Token::kDirective)
                ReadDirective(token, uses, limit);
            before = token;
        }
        const size_t last = OffsetOf(part) + part.size();
        const auto breaks = std::count(part.begin(), part.end(), '\n');
        AddComments(gap, last, line + static_cast<unsigned>(breaks), uses, limit);
    }

    // "x." and "x->", but not the dots of "1 ... 2".
    bool IsMemberSign(const tagging::Token& token) const
    {
        const size_t offset = token.text.empty() ? 0 : OffsetOf(token.text);
        const char before = offset == 0 ? ' ' : text[offset - 1];
        return token.text == "->" || (token.Is('>') && before == '-') || (token.Is('.') && before != '.');
    }

    size_t OffsetOf(std::string_view part) const { return static_cast<size_t>(part.data() - text.data()); }

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

    // Between two tokens stand only blanks and comments. 'line' is that of the end.
    void AddComments(size_t begin, size_t behind, unsigned line, Uses& uses, size_t limit)
    {
        if (!takesComments || IsOff())
            return;
        const std::string_view gap = text.substr(begin, behind - begin);
        for (size_t at = gap.find(name); at != std::string_view::npos; at = gap.find(name, at + name.size())) {
            const size_t next = at + name.size();
            const bool isWord = (at == 0 || !base::IsIdentifierCharacter(gap[at - 1])) &&
                                (next == gap.size() || !base::IsIdentifierCharacter(gap[next]));
            const auto breaks = std::count(gap.begin() + static_cast<std::ptrdiff_t>(at), gap.end(), '\n');
            if (isWord && HasRoom(uses, limit))
                uses.found.push_back(
                    {path, line - static_cast<unsigned>(breaks), columns.At(begin + at), resolve::Use::Role::Comment});
        }
    }

    static bool HasRoom(Uses& uses, size_t limit)
    {
        uses.more = uses.more || uses.found.size() == limit;
        return !uses.more;
    }

    bool Add(size_t offset, unsigned line, const tagging::Token& before, Uses& uses, size_t limit)
    {
        if (!HasRoom(uses, limit))
            return false;
        const auto isThere = [&](const symbols::Symbol& symbol) { return symbol.line == line; };
        if (std::any_of(declared.begin(), declared.end(), isThere)) {
            mentions.emplace_back().use = uses.found.size();
            mentions.back().isBehindTag = IsTagWord(before);
        }
        uses.found.push_back({path, line, columns.At(offset), resolve::Use::Role::Other});
        return true;
    }

    // The token behind the last use.
    void TellNext(const tagging::Token& token, Uses& uses)
    {
        const bool isCall = token.Is('(');
        if (isCall)
            uses.found.back().role = resolve::Use::Role::Call;
        if (mentions.empty() || mentions.back().use + 1 != uses.found.size())
            return;
        Mention& mention = mentions.back();
        mention.isBeforeParenthesis = isCall;
        mention.isBeforeScope = text.substr(OffsetOf(token.text)).starts_with("::");
        mention.isBeforeDeclarator = token.kind == tagging::Token::kWord || token.Is('*') || token.Is('&');
    }

    // Of several mentions on its line, the likeliest one is the declaration: others may be calls of itself.
    void TellDeclared(const symbols::Symbol& symbol, Uses& uses) const
    {
        using Role = resolve::Use::Role;
        const Mention* best = nullptr;
        for (const Mention& mention : mentions) {
            const resolve::Use& use = uses.found[mention.use];
            const bool isFree = use.role == Role::Other || use.role == Role::Call;
            if (use.line == symbol.line && isFree &&
                (best == nullptr || mention.Distance(symbol.kind) < best->Distance(symbol.kind)))
                best = &mention;
        }
        if (best != nullptr)
            uses.found[best->use].role = symbol.isDefinition ? Role::Definition : Role::Declaration;
    }

    // A line that mentions the name once declares nothing but what the index says.
    void DropOthers(Uses& uses) const
    {
        std::vector<size_t> others;
        const auto lineOf = [&](size_t i) { return i < mentions.size() ? uses.found[mentions[i].use].line : 0; };
        for (size_t i = 0; i < mentions.size(); ++i) {
            const unsigned line = lineOf(i);
            const auto mayBe = [&](const symbols::Symbol& each) { return each.line == line && thing.MayBe(each); };
            const bool isAlone = lineOf(i + 1) != line && (i == 0 || lineOf(i - 1) != line);
            if (isAlone && std::ranges::none_of(declared, mayBe))
                others.push_back(mentions[i].use);
        }
        size_t number = 0;
        auto next = others.begin();
        std::erase_if(uses.found, [&](const auto&) {
            const bool isOther = next != others.end() && *next == number;
            next += isOther;
            ++number;
            return isOther;
        });
    }

    const std::string_view text;
    const std::string& path;
    const std::vector<symbols::Symbol>& declared;
    const MeantThing& thing;
    Columns columns;
    std::string_view name;
    bool takesComments = false;
    size_t end = 0;                // nothing stands behind it
    std::vector<bool> off;         // the branches around the token that no compiler reads
    std::vector<Mention> mentions; // on lines that declare the name
};

std::vector<symbols::Symbol> DeclaredAs(std::string_view name, const std::vector<symbols::Symbol>& symbols)
{
    std::vector<symbols::Symbol> declared;
    for (const symbols::Symbol& symbol : symbols)
        if (FirstPart(symbol.name) == name)
            declared.push_back(symbol);
    return declared;
}

bool IsCancelled(symbols::Limits limits)
{
    return limits.cancel != nullptr && limits.cancel->IsCancelled();
}

// An index does not know what comments mention, so that other files of the project have to be read: as many as take no
// longer than people wait.
void AddFilesWithComments(const symbols::Snapshot& snapshot, std::vector<FileNumber>& files)
{
    constexpr size_t kMostFiles = 5000;
    const std::set<FileNumber> known(files.begin(), files.end());
    size_t left = kMostFiles;
    snapshot.ForEachFile([&](FileNumber number, const symbols::File& file) {
        if (!file.isSystem && !known.contains(number)) {
            files.push_back(number);
            --left;
        }
        return left > 0;
    });
}

} // namespace

bool Resolver::ForEachUse(const Place& place, symbols::Limits limits, Where where, const UseSink& sink) const
{
    Question question(snapshot, sources, TextOf(place), place.offset, limits, Known());
    const MeaningList meanings = question.Meanings();
    Uses own;
    if (question.Local()) {
        own = UsesOfLocal(question, *question.Local(), place.path, limits);
        const bool goesOn = own.found.empty() || sink(place.text, std::move(own.found));
        return own.more || !goesOn;
    }
    // A name that nothing declares, or nothing any more, is mentioned all the same.
    if (meanings.empty() && (question.IsInDirective() || IsKeyword(question.Name())))
        return false;
    const std::string name(FirstPart(question.Name()));
    if (name.empty())
        return false;
    const std::vector<Symbol> declared = DeclaredAs(name, question.GetWorld().OwnSymbols());
    MeantThing thing(question, meanings);
    Occurrences(place.text, place.path, declared, thing)
        .Collect(name, where == Where::AlsoComments, own, limits.results);
    const size_t count = own.found.size();
    if (count > 0 && !sink(place.text, std::move(own.found)))
        return true;
    if (where == Where::InText || own.more)
        return own.more;
    return EachUseIn(name, thing, question.GetWorld().TextFile(), {limits.results - count, limits.cancel}, where, sink);
}

Uses Resolver::References(const Place& place, symbols::Limits limits) const
{
    Uses uses;
    uses.more = ForEachUse(place, limits, Where::Everywhere, [&](std::string_view, std::vector<Use> found) {
        uses.found.insert(uses.found.end(), found.begin(), found.end());
        return true;
    });
    return uses;
}

Uses Resolver::ReferencesOf(std::string_view name, symbols::Limits limits) const
{
    Uses uses;
    MeantThing anything;
    uses.more = EachUseIn(std::string(FirstPart(LeafOf(name))), anything, World::kNewFile, limits, Where::Everywhere,
                          [&](std::string_view, std::vector<Use> found) {
                              uses.found.insert(uses.found.end(), found.begin(), found.end());
                              return true;
                          });
    return uses;
}

bool Resolver::EachUseIn(const std::string& name, MeantThing& thing, FileNumber except, symbols::Limits limits,
                         Where where, const UseSink& sink) const
{
    size_t left = limits.results;
    std::vector<FileNumber> files = snapshot.FilesMentioning(name, {SIZE_MAX, limits.cancel});
    if (where == Where::AlsoComments)
        AddFilesWithComments(snapshot, files);
    for (const FileNumber number : files) {
        if (number == except || !thing.MayBeIn(number))
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
        Occurrences(*text, path, declared, thing).Collect(name, where == Where::AlsoComments, here, left);
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
