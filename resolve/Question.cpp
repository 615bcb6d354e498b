#include "resolve/Question.h"

#include "resolve/Blocks.h"
#include "resolve/Messages.h"
#include "resolve/Operand.h"
#include "resolve/Usage.h"

#include <algorithm>

namespace resolve {

namespace {

unsigned LineOf(const Tokens& tokens, size_t word)
{
    return tokens[word].line;
}

// The name between the delimiters, with its place in the directive's text.
std::optional<std::pair<size_t, size_t>> IncludedName(std::string_view directive)
{
    const size_t open = directive.find_first_of("<\"");
    if (open == std::string_view::npos)
        return std::nullopt;
    const size_t close = directive.find(directive[open] == '<' ? '>' : '"', open + 1);
    if (close == std::string_view::npos)
        return std::nullopt;
    return std::pair(open + 1, close);
}

// ": (int)x : (int)y": the word directly behind a type belongs to the colon before it.
bool IsParameterName(const Tokens& tokens, size_t word)
{
    const Token& before = tokens[word - 1];
    if (before.Is(':'))
        return true;
    return before.Is(')') && before.match != kNone && tokens[before.match - 1].Is(':');
}

bool IsIncludeDirective(std::string_view name)
{
    return name == "include" || name == "import" || name == "include_next";
}

} // namespace

std::unique_ptr<Tokens> Question::TokensOf(const PlacedDirective& directive)
{
    // Behind the '#', which would make a directive of it.
    return std::make_unique<Tokens>(directive.text.substr(1), directive.offset + 1, directive.line);
}

Question::Question(const symbols::Snapshot& snapshot, const Sources& sources, ParsedTextPointer given, size_t offset,
                   symbols::Limits limits, KnownFiles* known)
    : text(std::move(given)), offset(offset), directive(text->tokens.DirectiveAt(offset)),
      ownTokens(directive != nullptr ? TokensOf(*directive) : nullptr),
      tokens(ownTokens ? ownTokens.get() : &text->tokens), world(snapshot, sources, text, limits, known),
      classes(world), names(world, classes), expressions(world, classes, names, *tokens)
{
    word = tokens->WordAt(offset);
    if (word != kNone)
        name = (*tokens)[word].text;
}

MeaningList Question::Meanings()
{
    if (directive != nullptr)
        return InDirective();
    return word == kNone ? MeaningList() : OfWord();
}

MeaningList Question::Included()
{
    const auto range = IncludedName(directive->text);
    if (!range)
        return {};
    name = directive->text.substr(range->first, range->second - range->first);
    symbols::Include include;
    include.name = name;
    include.isAngled = directive->text[range->first - 1] == '<';
    MeaningList meanings;
    for (const FileNumber file : world.Files().Files().Find(text->path, include)) {
        Meaning meaning;
        meaning.symbol.file = file;
        meaning.symbol.line = 1;
        meaning.how = How::Include;
        meaning.reason = "the included file";
        meaning.entity = meanings.size();
        meanings.push_back(meaning);
    }
    return meanings;
}

MeaningList Question::InDirective()
{
    const std::string_view kind = (*tokens)[0].text;
    if (IsIncludeDirective(kind))
        return Included();
    if (word == kNone || word == 0)
        return {};
    if (kind != "define")
        return names.Unqualified(name, directive->line, {.form = Usage::Form::Macro, .arguments = {}});
    if (word == 1)
        return SelfMeaning();
    // Parameters follow the macro's name without a blank.
    if ((*tokens)[2].Is('(') && tokens->Touch(1, 2)) {
        const size_t close = (*tokens)[2].match == kNone ? tokens->Count() : (*tokens)[2].match;
        for (size_t i = 3; i < close; ++i)
            if ((*tokens)[i].text == name) {
                LocalName found;
                found.name = i;
                found.kind = SymbolKind::MacroParameter;
                return LocalMeaning(found);
            }
    }
    return OfWord();
}

// "TEST_F(Suite, Name) {" looks like a function without a type.
bool Question::IsMacroCall(const Symbol& symbol)
{
    if (!LooksLikeMacroCall(symbol))
        return false;
    for (const Symbol& other : world.Named(symbol.name))
        if (other.kind == SymbolKind::Macro && !other.signature.empty())
            return true;
    return false;
}

bool Question::IsSelf(const Symbol& symbol, const Usage& usage)
{
    if (symbol.line != LineOf(*tokens, word) || symbol.name != name)
        return false;
    const Token& before = (*tokens)[word - 1];
    const Token& after = (*tokens)[word + 1];
    if (before.IsMark("::") && symbol.kind == SymbolKind::Typedef)
        return false;
    if (IsCallable(symbol.kind) && IsInFunction(*tokens, word))
        return false; // "void Write(int n) { Write(n, 0); }"
    if (before.Is('~') || (usage.form == Usage::Form::Tag && !after.Is('{') && !after.Is(':') && !after.IsWord()))
        return false;
    if (usage.access == Usage::Access::Member || usage.form == Usage::Form::Scope)
        return false;
    if (IsClassKind(symbol.kind) || symbol.kind == SymbolKind::Namespace)
        return before.IsWord() || before.IsMark("::") || before.Is(']') || before.Is(')');
    if (IsCallable(symbol.kind) && IsMacroCall(symbol))
        return false;
    if (IsCallable(symbol.kind))
        return after.Is('(') || after.Is('<') || before.text == "operator";
    if (symbol.kind == SymbolKind::Macro)
        return directive != nullptr && word == 1;
    if (symbol.kind == SymbolKind::Typedef)
        return after.Is(';') || after.Is(')') || after.Is(',') || after.Is('[') || after.Is('=') || after.Is('(') ||
               after.IsWord();
    if (symbol.kind == SymbolKind::Enumerator)
        return before.Is('{') || before.Is(',');
    if (symbol.kind == SymbolKind::UsingName || symbol.kind == SymbolKind::UsingNamespace)
        return false;
    const bool isDeclarator = after.Is(';') || after.Is('=') || after.Is('[') || after.Is(',') || after.Is('{') ||
                              after.Is(':') || after.Is(')') || after.Is('(') || after.IsWord();
    return isDeclarator;
}

MeaningList Question::SelfMeaning()
{
    const Usage usage = UsageAt(*tokens, word, text->IsObjectiveC());
    for (const Symbol& symbol : world.OwnSymbols())
        if (IsSelf(symbol, usage))
            self = symbol;
    return self ? MeaningsOfSelf() : MeaningList();
}

MeaningList Question::MeaningsOfSelf()
{
    MeaningList meanings;
    const std::string scope = world.VisibleScope(*self);
    const std::vector<Symbol> named = world.Named(self->name);
    for (const Symbol& symbol : named) {
        const bool isIt = symbol.file == self->file && symbol.line == self->line && symbol.kind == self->kind;
        if (!isIt && (world.VisibleScope(symbol) != scope || IsMemberLike(symbol) != IsMemberLike(*self) ||
                      IsMethod(symbol.kind) != IsMethod(self->kind)))
            continue;
        Meaning meaning{.symbol = symbol, .how = How::Scope, .bindings = {}, .reason = "declared here"};
        meaning.level = isIt ? 0 : 1;
        meanings.push_back(meaning);
    }
    Usage use;
    if (IsCallable(self->kind)) {
        use.form = Usage::Form::Call;
        use.arguments = CountsOf(self->signature).most;
        use.passed = ParameterTypes(self->signature);
        use.isConstant = IsConstantMethod(self->signature);
        if (use.arguments == SIZE_MAX)
            use.arguments.reset();
    }
    names.Rank(meanings, use, self->line);
    return meanings;
}

// "- (void) draw: (int)x with: (id)y;": the words of the selector.
MeaningList Question::OfMethodHead()
{
    if ((*tokens)[word].parent != kNone)
        return {};
    const size_t head = HeadOfBlock(*tokens, word);
    if (!BeginsMethod(*tokens, head))
        return {};
    std::string selector;
    bool isPart = false;
    size_t i = head + 1;
    if ((*tokens)[i].Is('(') && (*tokens)[i].match != kNone)
        i = (*tokens)[i].match + 1;
    const size_t first = i;
    for (; i < tokens->Count() && !(*tokens)[i].Is(';') && !(*tokens)[i].Is('{') && !(*tokens)[i].Is(','); ++i) {
        const Token& token = (*tokens)[i];
        if (token.Is(':')) {
            if ((*tokens)[i - 1].IsWord() && (i - 1 == first || !IsParameterName(*tokens, i - 1))) {
                selector += (*tokens)[i - 1].text;
                isPart |= i - 1 == word;
            }
            selector += ':';
        } else if (token.match != kNone && token.match > i) {
            i = token.match;
        }
    }
    if (selector.empty() && (*tokens)[first].IsWord()) {
        selector = (*tokens)[first].text;
        isPart = first == word;
    }
    if (!isPart)
        return {};
    name = selector;
    const unsigned from = (*tokens)[head].line;
    for (const Symbol& symbol : world.OwnSymbols())
        if (symbol.name == selector && IsMethod(symbol.kind) && symbol.line >= from && symbol.line <= (*tokens)[i].line)
            self = symbol;
    return self ? MeaningsOfSelf() : names.AnyMember(name, {.arguments = {}});
}

// "@implementation Shape (Drawing)": the category.
MeaningList Question::OfCategory()
{
    const std::string_view before = (*tokens)[word - 1].text;
    const bool isClass = (before == "implementation" || before == "interface") && (*tokens)[word - 2].Is('@') &&
                         (*tokens)[word + 1].Is('(') && (*tokens)[word + 2].IsWord();
    if (!isClass)
        return {};
    const std::string_view category = (*tokens)[word + 2].text;
    for (const Symbol& symbol : world.OwnSymbols())
        if (symbol.name == category && symbol.scope == name && symbol.line == (*tokens)[word].line)
            self = symbol;
    return self ? MeaningsOfSelf() : MeaningList();
}

MeaningList Question::LocalMeaning(const LocalName& found)
{
    local = found;
    Meaning meaning;
    const Token& token = (*tokens)[found.name];
    meaning.symbol.name = token.text;
    meaning.symbol.line = token.line;
    meaning.symbol.kind = found.kind;
    meaning.symbol.file = world.TextFile();
    meaning.symbol.isDefinition = true;
    if (!found.type.IsEmpty())
        meaning.symbol.type = tokens->Text(found.type.begin, found.type.end - 1);
    meaning.how = How::Local;
    meaning.reason = "declared in the function, line " + std::to_string(token.line);
    world.Note(meaning.reason);
    return {meaning};
}

MeaningList Question::OfWord()
{
    if (text->IsObjectiveC() && directive == nullptr) {
        MeaningList own = OfMethodHead();
        if (own.empty())
            own = OfCategory();
        if (!own.empty())
            return own;
    }
    if (IsKeyword(name) && name != "this")
        return {};
    Usage usage = UsageAt(*tokens, word, text->IsObjectiveC());
    if (usage.arguments && text->IsCplusplus())
        usage.passed = expressions.Passed(ArgumentsBegin(*tokens, word));
    usage.isConstant = usage.access == Usage::Access::None && expressions.IsInConstantMethod(word);
    if (usage.access == Usage::Access::Member)
        return Member(usage);
    if (usage.access == Usage::Access::Message || usage.access == Usage::Access::Selector)
        return Message(usage);
    if (usage.access == Usage::Access::Designator) {
        const Type type = expressions.Initialized((*tokens)[word].parent);
        world.Note("initialises " + (type.IsKnown() ? TextOf(type) : std::string("an unknown type")));
        return MembersOf(type, name, usage);
    }
    const bool isLabel = usage.form == Usage::Form::Label ||
                         ((*tokens)[word + 1].Is(':') && !(*tokens)[word - 1].Is('?')) ||
                         ((*tokens)[word - 1].Is('&') && (*tokens)[word - 2].Is('&'));
    if (isLabel)
        if (const auto label = FindLabel(*tokens, word);
            label && (usage.form == Usage::Form::Label || label->name == word || (*tokens)[word - 1].Is('&')))
            return LocalMeaning(*label);
    if (usage.access == Usage::Access::None && usage.form != Usage::Form::Tag)
        if (const auto found = FindLocal(*tokens, word); found && (*tokens)[found->name].text == name)
            return LocalMeaning(*found);
    if (directive == nullptr) {
        MeaningList own = SelfMeaning();
        if (!own.empty())
            return own;
    }
    if (usage.access == Usage::Access::Scope)
        return Scope(usage);
    MeaningList found = names.Unqualified(name, LineOf(*tokens, word), usage);
    const bool isUnknown = found.empty() || found.front().level >= kUnreachable || found.front().how == How::Name;
    if (isUnknown && IsCodeOutsideOfFunctions())
        if (const auto loose = FindLoosely(*tokens, word)) {
            MeaningList meant = LocalMeaning(*loose);
            meant.front().how = How::Name;
            meant.front().reason = "declared before it; the function around it has no clear bounds";
            found.insert(found.begin(), meant.front());
        }
    const bool isProtocol = text->IsObjectiveC() && (*tokens)[word - 1].Is('<');
    if (isProtocol)
        std::stable_partition(found.begin(), found.end(),
                              [](const Meaning& each) { return each.symbol.kind == SymbolKind::Protocol; });
    return found;
}

// Braces that conditions have left open make statements look as if they were outside of functions.
bool Question::IsCodeOutsideOfFunctions()
{
    return directive == nullptr && names.FunctionAt(LineOf(*tokens, word)) == nullptr;
}

MeaningList Question::MembersOf(const Type& type, std::string_view wanted, const Usage& how)
{
    MeaningList found;
    Usage usage = how;
    usage.isConstant = type.isConstant;
    if (type.IsKnown()) {
        const std::vector<Class> of = classes.Find(type);
        for (const Class& each : of)
            world.Note("class " + each.scope + " in " + std::string(world.PathOf(each.symbol.file)));
        found = names.Members(of, wanted, usage, "a member of '" + TextOf(type) + "', the type before it");
    }
    return found.empty() ? names.AnyMember(wanted, usage) : found;
}

Type Question::ReceiverBefore(size_t sign)
{
    const size_t begin = BeginOfOperand(*tokens, sign);
    Type type = expressions.TypeOf(begin, sign);
    if ((*tokens)[sign].text == "->")
        type = expressions.BehindArrow(type);
    else if (const Type canonical = classes.Canonical(type); canonical.IsKnown())
        type = canonical;
    world.Note("the type of '" + std::string(tokens->Text(begin, sign - 1)) + "' is " +
               (type.IsKnown() ? "'" + TextOf(type) + "'" : "unknown"));
    return type;
}

MeaningList Question::Member(const Usage& usage)
{
    return MembersOf(ReceiverBefore(word - 1), name, usage);
}

MeaningList Question::Scope(const Usage& usage)
{
    size_t begin = BeginOfOperand(*tokens, word - 1);
    if ((*tokens)[begin].IsMark("::"))
        ++begin;
    const std::string qualifier(begin >= word - 1 ? "" : tokens->Text(begin, word - 2));
    world.Note("behind the qualifier '" + qualifier + "'");
    return names.Qualified(qualifier, name, LineOf(*tokens, word), usage);
}

MeaningList Question::Message(const Usage& usage)
{
    name = SelectorAt(*tokens, word);
    Usage value = usage;
    value.form = Usage::Form::Value;
    value.arguments.reset();
    MeaningList found;
    if (usage.access == Usage::Access::Message) {
        const Type type = expressions.Receiver(word);
        world.Note("the receiver's type is " + (type.IsKnown() ? TextOf(type) : std::string("unknown")));
        if (type.IsKnown())
            found = names.Members(classes.Find(type), name, value, "a method of '" + TextOf(type) + "', the receiver");
    }
    if (found.empty())
        found = names.AnyMember(name, value);
    std::stable_partition(found.begin(), found.end(), [](const Meaning& each) {
        return IsMethod(each.symbol.kind) || each.symbol.kind == SymbolKind::Property;
    });
    return found;
}

} // namespace resolve
