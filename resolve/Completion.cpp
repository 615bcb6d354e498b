// Names that fit a place, nearest first.
#include "resolve/Blocks.h"
#include "resolve/Fitness.h"
#include "resolve/Nearby.h"
#include "resolve/Operand.h"
#include "resolve/Question.h"
#include "resolve/Resolver.h"
#include "resolve/Slot.h"

#include <algorithm>
#include <cctype>
#include <unordered_map>
#include <unordered_set>

namespace resolve {

namespace {

constexpr size_t kMostByPrefix = 1000;
constexpr size_t kMostIncluded = 200; // files whose symbols are listed
constexpr size_t kEnough = 100;       // names, without the rest of the project
constexpr size_t kMostUsed = 40;      // names of the text that are looked up, the nearest ones

bool Begins(std::string_view name, std::string_view typed)
{
    const bool isExact = std::any_of(typed.begin(), typed.end(), [](unsigned char c) { return std::isupper(c) != 0; });
    if (isExact || name.size() < typed.size())
        return name.starts_with(typed);
    return std::equal(typed.begin(), typed.end(), name.begin(),
                      [](unsigned char a, unsigned char b) { return a == b || a == std::tolower(b); });
}

bool IsOffered(const Symbol& symbol)
{
    return !symbol.name.empty() && !symbol.name.starts_with("__anon") && !symbol.name.starts_with("operator ") &&
           symbol.name[0] != '~' && symbol.kind != SymbolKind::UsingNamespace;
}

struct Offer {
    Symbol symbol;
    How how = How::Name;
    int group = 0; // 0 is the nearest
    size_t order = 0;
};

// Collects the candidates of one place.
class Completion {
public:
    Completion(Question& question, size_t start, size_t before, std::string_view typed, size_t wanted)
        : question(question), tokens(question.GetTokens()), start(start), before(before), typed(typed), wanted(wanted)
    {
    }

    std::vector<Offer> Collect()
    {
        const Token& sign = tokens[before];
        if (before != kNone && (sign.Is('.') || sign.text == "->") && !IsDesignator())
            Members(question.ReceiverBefore(before));
        else if (before != kNone && IsDesignator())
            Members(question.GetExpressions().Initialized(tokens[before].parent));
        else if (before != kNone && sign.IsMark("::"))
            Qualified();
        else if (isMessage = before != kNone && Message(); !isMessage)
            Unqualified();
        Sort();
        return std::move(offers);
    }

private:
    World& GetWorld() { return question.GetWorld(); }

    bool IsDesignator() const
    {
        const size_t open = tokens[before].parent;
        return tokens[before].Is('.') && open != kNone && tokens[open].Is('{') &&
               (tokens[before - 1].Is('{') || tokens[before - 1].Is(','));
    }

    void Add(const Symbol& symbol, How how, int group)
    {
        if (!IsOffered(symbol) || !Begins(symbol.name, typed) || !names.insert(symbol.name).second)
            return;
        offers.push_back({symbol, how, group, offers.size()});
    }

    void Members(const Type& type)
    {
        const std::vector<Class> of = question.GetClasses().Find(type);
        if (!of.empty())
            for (const ClassMember& member : question.GetClasses().Members(of.front()))
                if (member.symbol.name != LeafOf(member.owner) && !IsTypeKind(member.symbol.kind) &&
                    member.symbol.kind != SymbolKind::Enumerator)
                    Add(member.symbol, How::Member, member.symbol.isVirtual ? 0 : static_cast<int>(member.depth));
        if (offers.empty())
            AnyMembers();
    }

    // The receiver is unknown: what is used behind receivers in this text, and members by their names.
    void AnyMembers()
    {
        for (size_t i = 0; i < tokens.Count(); ++i)
            if (tokens[i].IsWord() && (tokens[i - 1].Is('.') || tokens[i - 1].text == "->") &&
                Begins(tokens[i].text, typed))
                for (const Symbol& symbol : std::vector<Symbol>(GetWorld().Named(tokens[i].text)))
                    if (IsMemberLike(symbol) || (IsCallable(symbol.kind) && !symbol.scope.empty()))
                        Add(symbol, How::Name, 0);
        ByPrefix([](const Symbol& symbol) {
            return IsMemberLike(symbol) || (IsCallable(symbol.kind) && !symbol.scope.empty());
        });
    }

    void Qualified()
    {
        const size_t begin = BeginOfOperand(tokens, before);
        const std::string_view qualifier = begin >= before ? std::string_view() : tokens.Text(begin, before - 1);
        const unsigned line = tokens[before].line;
        const Type type = ParseType(qualifier, question.GetNames().ScopesAt(line).front(), GetWorld().TextFile());
        const std::vector<Symbol> types = question.GetClasses().FindTypes(type.name, type.scope, type.file);
        const bool isNamespace = !types.empty() && types.front().kind == SymbolKind::Namespace;
        const std::vector<Class> of = isNamespace ? std::vector<Class>() : question.GetClasses().Find(type);
        if (!of.empty()) {
            for (const ClassMember& member : question.GetClasses().Members(of.front()))
                AddWithEnumerators(member.symbol, How::Member, static_cast<int>(member.depth));
            isInClass = IsClassKind(of.front().symbol.kind) && !IsSystem(of.front().symbol);
            return;
        }
        if (begin >= before)
            return Global();
        std::string scope = type.name;
        for (const Symbol& symbol : types) {
            if (symbol.kind == SymbolKind::NamespaceAlias && !symbol.target.empty())
                scope = symbol.target;
            else if (symbol.kind == SymbolKind::Namespace)
                scope = Joined(symbol.scope, symbol.name);
            break;
        }
        if (isNamespace && !IsAnyReachable(types))
            UsedBehindQualifier();
        UsedInScope(scope);
        InScope(scope, 0);
    }

    bool IsAnyReachable(const std::vector<Symbol>& all)
    {
        return std::any_of(all.begin(), all.end(), [&](const Symbol& each) { return IsReachable(each); });
    }

    // Only namespaces of that name are known that the text does not include: a macro may open the one that is meant.
    void UsedBehindQualifier()
    {
        const std::string_view qualifier = ReceiverName(tokens, before);
        for (size_t i = 2; i < tokens.Count(); ++i)
            if (tokens[i].IsWord() && tokens[i - 1].IsMark("::") && tokens[i - 2].text == qualifier)
                if (Begins(tokens[i].text, typed) && !names.contains(tokens[i].text))
                    AddReachable(GetWorld().Named(tokens[i].text));
    }

    void AddReachable(const std::vector<Symbol>& all)
    {
        for (const Symbol& symbol : all)
            if (!IsMemberLike(symbol) && IsReachable(symbol))
                return Add(symbol, How::Name, 0);
    }

    // "::na"
    void Global()
    {
        scopes.emplace_back(0, "");
        for (const Symbol& symbol : GetWorld().OwnSymbols())
            if (IsVisible(symbol) && symbol.scope.empty())
                Add(symbol, How::Scope, 0);
        FromText();
        FromIncluded();
    }

    // A large namespace has more names than can be listed: what the text uses of it is there in any case.
    void UsedInScope(const std::string& scope)
    {
        const std::string_view qualifier = ReceiverName(tokens, before);
        std::unordered_set<std::string_view> seen;
        for (size_t i = 2; i < tokens.Count(); ++i) {
            const bool isUse = tokens[i].IsWord() && i - 1 != before && tokens[i - 1].IsMark("::") &&
                               tokens[i - 2].text == qualifier && Begins(tokens[i].text, typed);
            if (!isUse || !seen.insert(tokens[i].text).second || names.contains(tokens[i].text))
                continue;
            for (const Symbol& symbol : GetWorld().Named(tokens[i].text))
                if (GetWorld().VisibleScope(symbol) == scope && !GetWorld().IsFileLocalElsewhere(symbol)) {
                    Add(symbol, How::Scope, 0);
                    break;
                }
        }
    }

    // The enumerators of an unscoped enum are names of the scope around it, too.
    void AddWithEnumerators(const Symbol& symbol, How how, int group)
    {
        Add(symbol, how, group);
        if (symbol.kind != SymbolKind::Enum || symbol.isScopedEnum)
            return;
        for (const Symbol& each : GetWorld().InScope(Joined(symbol.scope, symbol.name)))
            if (each.kind == SymbolKind::Enumerator)
                Add(each, how, group);
    }

    bool IsSystem(const Symbol& symbol)
    {
        return symbol.file != GetWorld().TextFile() && GetWorld().Files().FileOf(symbol.file).isSystem;
    }

    void InScope(const std::string& scope, int group)
    {
        if (scope.empty())
            return;
        std::vector<Symbol> found = GetWorld().InScope(scope);
        for (const Symbol& symbol : found) {
            const bool isInline = symbol.kind == SymbolKind::Namespace && symbol.isInline;
            if (isInline && group < 20)
                InScope(Joined(scope, symbol.name), group + 1);
        }
        for (const Symbol& symbol : found)
            if (!GetWorld().IsFileLocalElsewhere(symbol))
                AddWithEnumerators(symbol, How::Scope,
                                   group + (GetWorld().Distance(symbol.file) >= Distances::kUnrelated ? 1 : 0));
    }

    // "[receiver na": the names of methods.
    bool Message()
    {
        const size_t open = tokens[before].parent;
        const size_t at = open != kNone ? open : before;
        if (!question.GetWorld().Text().IsObjectiveC() || !tokens[at].Is('[') || before == at)
            return false;
        if (tokens[at - 1].IsWord() && !IsStatementWord(tokens[at - 1].text))
            return false;
        const Token& last = tokens[before];
        if (!last.IsWord() && !last.Is(']') && !last.Is(')'))
            return false;
        const Type type = question.GetExpressions().TypeOf(at + 1, before + 1);
        const std::vector<Class> of = question.GetClasses().Find(type);
        if (!of.empty())
            for (const ClassMember& member : question.GetClasses().Members(of.front()))
                if (IsMethod(member.symbol.kind) || member.symbol.kind == SymbolKind::Property)
                    Add(member.symbol, How::Member, static_cast<int>(member.depth));
        UsedMethods();
        if (offers.empty())
            ByPrefix([](const Symbol& symbol) { return IsMethod(symbol.kind); });
        return true;
    }

    // The receiver may be more than its type says, or unknown: methods that the text names.
    void UsedMethods()
    {
        std::unordered_set<std::string> seen;
        for (size_t i = 0; i < tokens.Count(); ++i) {
            const bool isPart = tokens[i].IsWord() && tokens[i].offset != start && Begins(tokens[i].text, typed) &&
                                (tokens[i + 1].Is(':') || tokens[i + 1].Is(']'));
            if (!isPart)
                continue;
            const std::string selector = std::string(tokens[i].text) + (tokens[i + 1].Is(':') ? ":" : "");
            if (names.contains(selector) || !seen.insert(selector).second)
                continue;
            for (const Symbol& symbol : GetWorld().Named(selector))
                if (IsMethod(symbol.kind)) {
                    Add(symbol, How::Name, 4);
                    break;
                }
        }
    }

    void Unqualified()
    {
        const size_t place = before == kNone ? 0 : before;
        const unsigned line = tokens[place].line;
        // The walk outwards begins at a token of the place's block.
        const size_t next = tokens.FirstFrom(start);
        if (tokens.Count() > 0)
            ForEachLocal(tokens, next < tokens.Count() ? next : tokens.Count() - 1, [&](const LocalName& local) {
                if (tokens[local.name].offset < start)
                    Local(local);
                return true;
            });
        for (const auto& [scope, level] : question.GetNames().VisibleScopes(line))
            scopes.emplace_back(level, scope);
        std::sort(scopes.begin(), scopes.end());
        for (const auto& [level, scope] : scopes)
            Enclosing(scope, level);
        for (const Symbol& symbol : GetWorld().OwnSymbols())
            if (symbol.scope.empty() || GetWorld().VisibleScope(symbol).empty())
                Add(symbol, How::Scope, 2);
        FromText();
        FromIncluded();
        ByPrefix([&](const Symbol& symbol) { return IsVisible(symbol); });
    }

    // What the text uses already, wherever it is declared: there may be too many names with the same beginning.
    void FromText()
    {
        std::unordered_set<std::string_view> seen;
        const size_t place = std::min(tokens.FirstFrom(start), tokens.Count());
        for (size_t step = 0; step < tokens.Count() && seen.size() < kMostUsed; ++step) {
            const size_t i = step < place ? place - 1 - step : step;
            const Token& token = tokens[i];
            const bool isUse = token.IsWord() && token.offset != start && Begins(token.text, typed) &&
                               !tokens[i - 1].Is('.') && tokens[i - 1].text != "->" && !IsKeyword(token.text);
            if (!isUse || names.contains(token.text) || !seen.insert(token.text).second)
                continue;
            FromAnywhere(GetWorld().Named(token.text));
        }
    }

    void FromAnywhere(const std::vector<Symbol>& all)
    {
        const Symbol* other = nullptr;
        for (const Symbol& symbol : all) {
            if (!IsVisible(symbol))
                continue;
            if (IsReachable(symbol))
                return Add(symbol, How::Include, 3);
            const bool isOut = GetWorld().IsOtherLanguage(symbol) || GetWorld().IsFileLocalElsewhere(symbol);
            if (other == nullptr && !isOut)
                other = &symbol;
        }
        if (other != nullptr)
            Add(*other, How::Name, IsSystem(*other) ? 5 : 4);
    }

    bool IsReachable(const Symbol& symbol)
    {
        return !GetWorld().IsOtherLanguage(symbol) && GetWorld().Distance(symbol.file) < Distances::kUnrelated;
    }

    void Local(const LocalName& local)
    {
        Symbol symbol;
        symbol.name = tokens[local.name].text;
        symbol.line = tokens[local.name].line;
        symbol.kind = local.kind;
        symbol.file = GetWorld().TextFile();
        Add(symbol, How::Local, 0);
    }

    void Enclosing(const std::string& scope, int level)
    {
        if (scope.empty())
            return;
        const std::vector<Class> of = question.GetClasses().Find(scope, "", GetWorld().TextFile());
        if (of.empty()) {
            InScope(scope, 2);
            return;
        }
        for (const Symbol& symbol : GetWorld().InScope(of.front().scope))
            Add(symbol, How::Member, level % 10 == 0 ? 1 : 2);
    }

    bool IsVisible(const Symbol& symbol)
    {
        if (IsMemberLike(symbol))
            return false;
        if (!GetWorld().Text().IsCplusplus())
            return true;
        const std::string scope = GetWorld().VisibleScope(symbol);
        return std::any_of(scopes.begin(), scopes.end(), [&](const auto& each) { return each.second == scope; });
    }

    void FromIncluded()
    {
        const int first = typed.empty() ? 0 : std::tolower(static_cast<unsigned char>(typed[0]));
        size_t files = 0;
        for (const FileNumber file : GetWorld().Files().Included()) {
            if (++files > kMostIncluded || !GetWorld().Goes())
                return;
            const FileSymbolsPointer all = GetWorld().SymbolsOf(file);
            for (size_t i = 0; i < all->symbols.size(); ++i)
                if ((typed.empty() || all->firsts[i] == first) && Begins(all->symbols[i].name, typed) &&
                    IsVisible(all->symbols[i]))
                    Add(all->symbols[i], How::Include, 3);
        }
    }

    template <class Predicate>
    void ByPrefix(Predicate fits)
    {
        if (typed.empty() || offers.size() > std::max(wanted, kEnough))
            return; // enough without the rest of the project, which comes last
        std::vector<std::pair<int, Symbol>> found;
        for (const Symbol& symbol : GetWorld().Index().ByPrefix(typed, {kMostByPrefix, nullptr}).found)
            if (symbol.file != GetWorld().TextFile() && fits(symbol) && !GetWorld().IsFileLocalElsewhere(symbol) &&
                !GetWorld().IsOtherLanguage(symbol))
                found.emplace_back(GetWorld().Distance(symbol.file), symbol);
        std::stable_sort(found.begin(), found.end(), [](const auto& a, const auto& b) { return a.first < b.first; });
        for (const auto& [distance, symbol] : found)
            Add(symbol, distance < Distances::kUnrelated ? How::Include : How::Name,
                distance < Distances::kUnrelated ? 3
                : distance < Distances::kSystem  ? 4
                                                 : 5);
    }

    void Sort()
    {
        const bool isBehindSign =
            before != kNone && (tokens[before].Is('.') || tokens[before].text == "->" || tokens[before].IsMark("::"));
        const bool isDefining = isInClass && IsAtDefinition();
        const bool isPlain = !isBehindSign && !isMessage;
        const Slot slot = isPlain ? SlotBehind(tokens, before, GetWorld().Text().IsCplusplus()) : Slot::Any;
        const size_t place = tokens.FirstFrom(start);
        std::optional<Fitness> fitness;
        std::optional<Nearby> nearby;
        if (isBehindSign)
            fitness.emplace(question, place, before);
        else
            nearby.emplace(tokens, place, kNone);
        struct Key {
            bool isNotLocal;
            bool isMisfit;
            bool isOtherCase; // than what is typed
            int phase;
            std::uint64_t unused; // less is more use
            bool isInner;
            int group;
            size_t order;
            auto operator<=>(const Key&) const = default;
        };
        std::vector<std::pair<Key, size_t>> keys;
        const size_t next = fitness ? NextDeclared(fitness->LastUsed()) : kNone;
        for (const Offer& offer : offers) {
            const std::string_view name = offer.symbol.name;
            const bool isInner = name.starts_with('_') && !typed.starts_with('_'); // meant for the library itself
            const bool fits = Fits(offer.symbol.kind, !offer.symbol.signature.empty(), slot);
            Key key{false, !fits, !name.starts_with(typed), 0, 0, isInner, offer.group, offer.order};
            if (isBehindSign) {
                key.phase = isDefining && !IsUndefined(offer.symbol) ? 1 : 0;
                key.unused = key.phase == 0 && isDefining
                                 ? 0
                                 : UINT64_MAX - fitness->Of(offer.symbol, DepthOf(offer), keys.size() == next);
            } else {
                key.unused = UINT64_MAX - nearby->Anywhere(name);
                key.isNotLocal = offer.how != How::Local;
                key.phase = isMessage && offer.how == How::Name ? 1 : 0;
            }
            keys.emplace_back(key, keys.size());
        }
        const size_t count = std::min(keys.size(), wanted < SIZE_MAX ? wanted + 1 : wanted);
        std::partial_sort(keys.begin(), keys.begin() + static_cast<std::ptrdiff_t>(count), keys.end());
        std::vector<Offer> sorted;
        for (size_t i = 0; i < count; ++i)
            sorted.push_back(offers[keys[i].second]);
        offers = std::move(sorted);
    }

    // In steps of bases.
    static size_t DepthOf(const Offer& offer)
    {
        return offer.how == How::Member ? static_cast<size_t>(offer.group) : 0;
    }

    // The offer that is declared behind that of the name.
    size_t NextDeclared(std::string_view name) const
    {
        const auto used =
            std::find_if(offers.begin(), offers.end(), [&](const Offer& each) { return each.symbol.name == name; });
        if (used == offers.end() || used + 1 == offers.end())
            return kNone;
        const bool isNext = used[1].symbol.file == used->symbol.file && used[1].symbol.scope == used->symbol.scope;
        return isNext ? static_cast<size_t>(used + 1 - offers.begin()) : kNone;
    }

    // "void Shape::", but neither "int f(Shape::" nor "class Round { Shape::".
    bool IsAtDefinition() const
    {
        const size_t around = tokens[before].parent;
        const bool isInParentheses = around != kNone && !tokens[around].Is('{');
        return !isInParentheses && !IsInFunction(tokens, before);
    }

    // "void Shape::": the methods come first that the class declares and the text does not define yet.
    bool IsUndefined(const Symbol& symbol)
    {
        if (symbol.kind != SymbolKind::Prototype)
            return false;
        const auto& own = GetWorld().OwnSymbols();
        return std::none_of(own.begin(), own.end(), [&](const Symbol& each) {
            return each.kind == SymbolKind::Function && each.name == symbol.name &&
                   LeafOf(each.scope) == LeafOf(symbol.scope);
        });
    }

    Question& question;
    const Tokens& tokens;
    const size_t start;
    const size_t before;
    const std::string_view typed;
    const size_t wanted; // how many are enough
    std::vector<Offer> offers;
    std::unordered_set<std::string_view> names;
    std::vector<std::pair<int, std::string>> scopes;
    bool isMessage = false;
    bool isInClass = false; // behind a class of the project and "::"
};

} // namespace

Candidates Resolver::Complete(const Place& place, symbols::Limits limits) const
{
    Candidates candidates;
    candidates.text = TextOf(place);
    Question question(snapshot, sources, candidates.text, place.offset, limits, Known());
    const Tokens& tokens = question.GetTokens();
    const size_t word = question.Word();
    candidates.start = std::min(place.offset, place.text.size());
    if (word != kNone)
        candidates.start = tokens[word].offset;
    const std::string_view typed =
        std::string_view(candidates.text->text).substr(candidates.start, place.offset - candidates.start);
    const size_t next = tokens.FirstFrom(candidates.start);
    const Token& last = tokens[next - 1];
    const bool isInLiteral = next > 0 && last.kind == Token::kLiteral && last.End() > candidates.start;
    if (isInLiteral)
        return candidates;
    for (const Offer& offer :
         Completion(question, candidates.start, next == 0 ? kNone : next - 1, typed, limits.results).Collect()) {
        if (candidates.found.size() == limits.results) {
            candidates.more = true;
            break;
        }
        candidates.found.push_back(
            {offer.symbol, std::string(question.GetWorld().PathOf(offer.symbol.file)), offer.how});
    }
    return candidates;
}

void Resolver::ReadAhead(const Place& place) const
{
    World world(snapshot, sources, TextOf(place), {}, Known());
    size_t files = 0;
    for (const FileNumber file : world.Files().Included())
        if (++files <= kMostIncluded)
            world.SymbolsOf(file);
}

} // namespace resolve
