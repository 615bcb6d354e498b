#include "resolve/Fitness.h"

#include "resolve/Blocks.h"
#include "resolve/Operand.h"

#include <algorithm>
#include <bit>

namespace resolve {

namespace {

constexpr std::uint64_t kUse = std::uint64_t{1} << 32; // the unit of Nearby
constexpr std::uint64_t kUnused = kUse / 20'000;       // of a name that nothing is known of
constexpr std::uint64_t kDoubling = kUse / 4000;       // for twice as many files of the project that mention the name
constexpr std::uint64_t kInherited = 16;               // a class is used for what it adds, unless the text says more
constexpr size_t kMostCounted = 63;                    // of these that are counted
constexpr size_t kMostWeighed = 400;                   // names whose files are counted

bool BeginsStatement(const Tokens& tokens, size_t place)
{
    const Token& before = tokens[place - 1];
    if (before.Is(';') || before.Is('}'))
        return IsInFunction(tokens, place);
    if (before.Is('{'))
        return KindOfBlock(tokens, place - 1) != BlockKind::Value && IsInFunction(tokens, place);
    if (before.text == "else" || before.text == "do")
        return true;
    const std::string_view word = before.Is(')') && before.match != kNone ? tokens[before.match - 1].text : "";
    return word == "if" || word == "for" || word == "while";
}

// "Shape* s = ", "s->next = "
Type Assigned(Question& question, size_t sign)
{
    const Tokens& tokens = question.GetTokens();
    size_t head = sign;
    while (head > 0 && sign - head < 100) {
        const Token& before = tokens[head - 1];
        const bool isClosed = (before.Is(')') || before.Is(']')) && before.match < head;
        if (!isClosed && (before.Is(';') || before.Is('{') || before.Is('}') || before.Is('(') || before.Is(',')))
            break;
        head = isClosed ? before.match : head - 1;
    }
    const std::vector<Declared> declared = ReadStatement(tokens, {head, sign});
    if (declared.empty())
        return question.GetExpressions().TypeOf(head, sign);
    LocalName local;
    static_cast<Declared&>(local) = declared.front();
    local.initializer = {};
    return question.GetExpressions().TypeOfLocal(local);
}

bool BeginsType(const Tokens& tokens, size_t place)
{
    const Token& before = tokens[place - 1];
    if (!tokens[place + 1].IsMark("::") && !tokens[place].IsMark("::"))
        return false;
    return before.Is('<') || before.text == "const" || before.text == "static" || before.text == "inline" ||
           before.text == "constexpr" || before.text == "typename" || !IsInFunction(tokens, place);
}

std::string_view LastBehind(const Tokens& tokens, size_t sign)
{
    constexpr size_t kMost = 300;
    const std::string_view receiver = ReceiverName(tokens, sign);
    for (size_t i = sign; !receiver.empty() && i-- > 0 && sign - i < kMost;) {
        const bool isAccess = tokens[i].Is('.') || tokens[i].text == "->" || tokens[i].IsMark("::");
        if (isAccess && tokens[i + 1].IsWord() && ReceiverName(tokens, i) == receiver)
            return tokens[i + 1].text;
    }
    return {};
}

// The names of "case A::name:" in the innermost switch.
std::set<std::string_view> OtherCases(const Tokens& tokens, size_t sign)
{
    std::set<std::string_view> names;
    const size_t open = tokens[sign].parent;
    const size_t close = tokens[open].match == kNone ? tokens.Count() : tokens[open].match;
    for (size_t i = open + 1; i < close; ++i) {
        if (tokens[i].match != kNone && tokens[i].match > i)
            i = tokens[i].match;
        else if (tokens[i].text == "case")
            for (; i < close && !tokens[i + 1].Is(':') && i != sign; ++i)
                if (tokens[i].IsMark("::") && tokens[i + 2].Is(':'))
                    names.insert(tokens[i + 1].text);
    }
    return names;
}

// "string" is short for "basic_string".
std::string_view WithoutBasic(std::string_view leaf)
{
    return leaf.starts_with("basic_") ? leaf.substr(6) : leaf;
}

} // namespace

Wanted WantedBehind(Question& question, size_t sign)
{
    const Tokens& tokens = question.GetTokens();
    const size_t begin = BeginOfOperand(tokens, sign);
    const Token& before = tokens[begin - 1];
    if (BeginsType(tokens, begin))
        return {Wanted::Role::Type, {}};
    if (BeginsStatement(tokens, begin))
        return {tokens[sign].IsMark("::") ? Wanted::Role::Any : Wanted::Role::Effect, {}};
    if (!IsInFunction(tokens, sign))
        return {};
    if (before.text == "case")
        return {Wanted::Role::Constant, {}};
    if (before.text == "return") {
        const Symbol* const function = question.GetNames().FunctionAt(before.line);
        return {Wanted::Role::Value,
                function == nullptr ? Type() : ParseType(function->type, function->scope, function->file)};
    }
    if (before.Is('=') && tokens.IsAssignment(begin - 1))
        return {Wanted::Role::Value, Assigned(question, begin - 1)};
    if (before.Is('!') || ((before.Is('&') || before.Is('|')) && tokens[begin - 2].text == before.text))
        return {Wanted::Role::Value, ParseType("bool", "", 0)};
    if (before.Is('(') && (tokens[begin - 2].text == "if" || tokens[begin - 2].text == "while"))
        return {Wanted::Role::Value, ParseType("bool", "", 0)};
    if (before.kind == Token::kMark && !before.Is(')') && !before.Is('<') && !before.Is('>'))
        return {Wanted::Role::Value, {}};
    return {};
}

Fitness::Fitness(Question& question, size_t place, size_t sign)
    : question(question), nearby(question.GetTokens(), place, sign), wanted(WantedBehind(question, sign)),
      around(question.GetNames().VisibleScopes(question.GetTokens()[sign].line)),
      isScope(question.GetTokens()[sign].IsMark("::")), last(LastBehind(question.GetTokens(), sign))
{
    if (wanted.role == Wanted::Role::Constant)
        cases = OtherCases(question.GetTokens(), sign);
}

std::uint64_t Fitness::Of(const Symbol& symbol, size_t depth, bool isNextDeclared)
{
    std::uint64_t fitness = nearby.Fitting(symbol.name) + (kUnused + InProject(symbol)) / (1 + kInherited * depth);
    if (!IsAccessible(symbol))
        fitness /= 8;
    fitness = Weighed(symbol, fitness);
    if (HasWantedType(symbol))
        fitness *= 4;
    return fitness + (isNextDeclared ? kNextDeclared : 0);
}

std::uint64_t Fitness::Weighed(const Symbol& symbol, std::uint64_t fitness) const
{
    const bool isCalled = IsCallable(symbol.kind);
    const bool isVoid = isCalled && symbol.type == "void";
    switch (wanted.role) {
    case Wanted::Role::Effect:
        return isVoid ? 2 * fitness : isCalled && IsConstantMethod(symbol.signature) ? fitness / 2 : fitness;
    case Wanted::Role::Value:
        return isVoid ? fitness / 8 : fitness;
    case Wanted::Role::Constant:
        return isCalled || IsTypeKind(symbol.kind) || cases.contains(symbol.name) ? fitness / 64 : fitness;
    case Wanted::Role::Type:
        return IsTypeKind(symbol.kind) || symbol.kind == SymbolKind::Namespace ? 2 * fitness : fitness / 2;
    default:
        return fitness;
    }
}

// Files that mention the name are counted by powers of two.
std::uint64_t Fitness::InProject(const Symbol& symbol)
{
    if (asked++ >= kMostWeighed)
        return 0;
    size_t files = 0;
    World& world = question.GetWorld();
    for (const FileNumber file : world.Index().FilesMentioning(symbol.name, {.results = kMostCounted}))
        if (file != world.TextFile() && !world.Files().FileOf(file).isSystem)
            ++files;
    const std::uint64_t fitness = kDoubling * static_cast<std::uint64_t>(std::bit_width(files));
    return files > 0 && isScope && IsElsewhere(symbol) ? fitness / 4 : fitness;
}

// Of the system, while the project has an own name like that: its files mention their own.
bool Fitness::IsElsewhere(const Symbol& symbol)
{
    World& world = question.GetWorld();
    const auto isSystem = [&](const Symbol& each) {
        return each.file != world.TextFile() && world.Files().FileOf(each.file).isSystem;
    };
    const std::vector<Symbol>& named = world.Named(symbol.name);
    return isSystem(symbol) &&
           std::any_of(named.begin(), named.end(), [&](const Symbol& each) { return !isSystem(each); });
}

bool Fitness::IsAccessible(const Symbol& symbol) const
{
    const bool isClosed = symbol.access == Symbol::Access::Private || symbol.access == Symbol::Access::Protected;
    return !isClosed || around.contains(std::string(symbol.scope));
}

bool Fitness::HasWantedType(const Symbol& symbol) const
{
    if (!wanted.type.IsKnown() || symbol.type.empty() || IsTypeKind(symbol.kind))
        return false;
    const Type type = ParseType(symbol.type, symbol.scope, symbol.file);
    return type.IsKnown() && WithoutBasic(type.Leaf()) == WithoutBasic(wanted.type.Leaf()) &&
           type.pointers == wanted.type.pointers;
}

} // namespace resolve
