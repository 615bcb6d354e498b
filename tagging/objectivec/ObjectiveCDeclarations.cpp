#include "tagging/objectivec/ObjectiveCDeclarations.h"

#include <algorithm>

namespace tagging {

namespace {

DeclaredName NameOf(const Token& token)
{
    return {WithoutSplices(token.text), token.line};
}

bool IsOneOf(const Token& token, std::initializer_list<std::string_view> words)
{
    return token.kind == Token::kWord && std::find(words.begin(), words.end(), token.text) != words.end();
}

// Words that are never the declared name, in any place.
bool IsQualifier(const Token& token)
{
    return IsOneOf(token, {"const",
                           "volatile",
                           "restrict",
                           "__const",
                           "__volatile__",
                           "__restrict",
                           "__weak",
                           "__strong",
                           "__block",
                           "__unsafe_unretained",
                           "__autoreleasing",
                           "__kindof",
                           "__unused",
                           "__nullable",
                           "__nonnull",
                           "_Nullable",
                           "_Nonnull",
                           "_Null_unspecified",
                           "__null_unspecified",
                           "__extension__",
                           "__attribute__",
                           "__attribute",
                           "__deprecated",
                           "__covariant",
                           "__contravariant"});
}

bool IsBuiltInType(const Token& token)
{
    return IsOneOf(token, {"unsigned", "signed", "int", "char", "short", "long", "float", "double", "void", "bool",
                           "_Bool", "struct", "union", "enum", "class", "typename", "static", "mutable", "auto"});
}

bool IsAggregateKeyword(const Token& token)
{
    return IsOneOf(token, {"struct", "union", "enum"});
}

bool Opens(const Token& token)
{
    return token.Is('(') || token.Is('[') || token.Is('{');
}

bool Closes(const Token& token)
{
    return token.Is(')') || token.Is(']') || token.Is('}');
}

// Returns the place after the group in parentheses or brackets at 'at'; the end if it is not closed.
size_t AfterGroup(TokenSpan tokens, size_t at)
{
    int depth = 0;
    for (; at < tokens.size(); ++at) {
        if (Opens(tokens[at]))
            ++depth;
        else if (Closes(tokens[at]) && --depth <= 0)
            return at + 1;
    }
    return at;
}

// Returns the place after the "<...>" of the name of a class or protocol.
size_t AfterAngles(TokenSpan tokens, size_t at)
{
    int depth = 0;
    while (at < tokens.size()) {
        if (Opens(tokens[at])) {
            at = AfterGroup(tokens, at);
            continue;
        }
        if (tokens[at].Is('<'))
            ++depth;
        else if (tokens[at].Is('>'))
            --depth;
        ++at;
        if (depth == 0)
            break;
    }
    return at;
}

// The first of the marks outside of groups and angles, or the end.
size_t Find(TokenSpan tokens, size_t at, std::string_view marks)
{
    while (at < tokens.size()) {
        const Token& token = tokens[at];
        if (token.kind == Token::kMark && marks.find(token.text[0]) != std::string_view::npos)
            return at;
        if (Opens(token))
            at = AfterGroup(tokens, at);
        else if (token.Is('<'))
            at = AfterAngles(tokens, at);
        else
            ++at;
    }
    return tokens.size();
}

bool HasLowerCase(std::string_view word)
{
    return std::any_of(word.begin(), word.end(), [](char c) { return c >= 'a' && c <= 'z'; });
}

// Methods.

// Returns the words outside of parentheses up to the next colon, and moves 'at' there. Types are in parentheses, and a
// word before parentheses is a macro.
std::vector<Token> WordsToColon(TokenSpan method, size_t& at)
{
    std::vector<Token> words;
    while (at < method.size() && !method[at].Is(':') && !method[at].Is(',')) {
        const bool isMacro = at + 1 < method.size() && method[at].kind == Token::kWord && method[at + 1].Is('(');
        if (isMacro)
            ++at;
        else if (Opens(method[at]))
            at = AfterGroup(method, at);
        else if (method[at].kind == Token::kWord && !IsQualifier(method[at]))
            words.push_back(method[at++]);
        else
            ++at;
    }
    return words;
}

// Variables.

TokenSpan OneDeclarator(TokenSpan rest)
{
    return rest.first(Find(rest, 0, ","));
}

// The declarator without a bit-field's width and without an initial value.
TokenSpan WithoutWidth(TokenSpan declarator)
{
    size_t at = 0;
    while (true) {
        at = Find(declarator, at, ":=");
        const bool isScope = at + 1 < declarator.size() && declarator[at].Is(':') && declarator[at + 1].Is(':');
        if (!isScope)
            return declarator.first(at);
        at += 2;
    }
}

bool HasPointerMark(TokenSpan tokens)
{
    return Find(tokens, 0, "*^") < tokens.size();
}

// "void (*name)(int)", "void (^name)(int)", "int (*name)[3]": the content of the first parentheses.
std::optional<TokenSpan> InnerDeclarator(TokenSpan declarator)
{
    for (size_t at = Find(declarator, 0, "("); at < declarator.size();) {
        const size_t after = AfterGroup(declarator, at);
        const bool goesOn = after < declarator.size() && (declarator[after].Is('(') || declarator[after].Is('['));
        const TokenSpan inner = declarator.subspan(at + 1, after - at - 1);
        if (goesOn && HasPointerMark(inner))
            return inner;
        at = Find(declarator, after, "(");
    }
    return std::nullopt;
}

// The words of a declarator that may be its name or part of its type, in order. Those from 'sinceMark' on follow the
// last '*', '^' or '&'.
struct DeclaratorWords {
    std::vector<Token> words;
    size_t sinceMark = 0;
    bool hasMark = false;

    explicit DeclaratorWords(TokenSpan declarator)
    {
        size_t at = 0;
        while (at < declarator.size()) {
            const Token& token = declarator[at];
            if (token.Is('[') && !words.empty())
                break;
            if (token.kind == Token::kWord && at + 1 < declarator.size() && declarator[at + 1].Is('('))
                at = AddCall(declarator, at);
            else if (Opens(token))
                at = AfterGroup(declarator, at);
            else if (token.Is('<'))
                at = AfterAngles(declarator, at);
            else {
                Add(token);
                ++at;
            }
        }
    }

private:
    // "typeof(x)" and "GS_GENERIC_CLASS(NSArray, T)" are types at the beginning, and macros elsewhere.
    size_t AddCall(TokenSpan declarator, size_t at)
    {
        if (words.empty() && !IsQualifier(declarator[at]))
            words.push_back(declarator[at]);
        return AfterGroup(declarator, at + 1);
    }

    // "struct Name" and "Outer::Name" count as one word of a type.
    void Add(const Token& token)
    {
        if (token.Is('*') || token.Is('^') || token.Is('&')) {
            sinceMark = words.size();
            hasMark = true;
        } else if (token.Is(':')) {
            joinsNext = true;
        } else if (token.kind == Token::kWord && !IsQualifier(token)) {
            if (!words.empty() && (joinsNext || IsAggregateKeyword(words.back())))
                words.pop_back();
            words.push_back(token);
            joinsNext = false;
        }
    }

    bool joinsNext = false;
};

// The "flag" of "IBOutlet BOOL flag UNUSED": the last word after the first that cannot be a macro.
std::optional<Token> NameAfterType(const std::vector<Token>& words)
{
    const auto lastSuch = [&](auto&& isSuch) -> std::optional<Token> {
        for (size_t i = words.size(); i-- > 1;)
            if (!IsBuiltInType(words[i]) && isSuch(words[i].text))
                return words[i];
        return std::nullopt;
    };
    if (const std::optional<Token> name = lastSuch(HasLowerCase))
        return name;
    if (const std::optional<Token> name = lastSuch([](auto word) { return word.find('_') == word.npos; }))
        return name;
    return lastSuch([](auto) { return true; });
}

// 'levels': a block that returns a block has two. Real declarations have only a few.
std::optional<Token> NameOfInner(TokenSpan inner, int levels = 8)
{
    const std::optional<TokenSpan> more = InnerDeclarator(inner);
    if (more && levels > 0)
        return NameOfInner(*more, levels - 1);
    const DeclaratorWords declarator(inner);
    if (declarator.words.size() <= declarator.sinceMark)
        return std::nullopt;
    return declarator.words[declarator.sinceMark];
}

std::optional<Token> NameOfDeclarator(TokenSpan declarator, bool withType)
{
    declarator = WithoutWidth(declarator);
    if (const std::optional<TokenSpan> inner = InnerDeclarator(declarator))
        return NameOfInner(*inner);
    const DeclaratorWords found(declarator);
    if (found.hasMark && found.sinceMark < found.words.size())
        return found.words[found.sinceMark];
    if (found.hasMark || found.words.empty())
        return std::nullopt;
    return withType ? NameAfterType(found.words) : found.words[0];
}

// The part after the members of "struct Name { ... } variable", if any.
TokenSpan AfterMembers(TokenSpan declaration)
{
    const size_t brace = Find(declaration, 0, "{");
    return brace == declaration.size() ? declaration : declaration.subspan(AfterGroup(declaration, brace));
}

struct DeclaredVariable {
    Token name;
    TokenSpan declarator;  // without a width or an initial value
    bool withType = false; // the first of several, with the type before it
};

std::vector<DeclaredVariable> DeclaredVariables(TokenSpan declaration)
{
    std::vector<DeclaredVariable> variables;
    TokenSpan rest = AfterMembers(declaration);
    const bool hasMembers = rest.size() != declaration.size();
    bool withType = !hasMembers;
    while (!rest.empty()) {
        const TokenSpan declarator = OneDeclarator(rest);
        if (const std::optional<Token> name = NameOfDeclarator(declarator, withType))
            variables.push_back({*name, WithoutWidth(declarator), withType});
        withType = false;
        rest = rest.subspan(std::min(declarator.size() + 1, rest.size()));
    }
    return variables;
}

// Headers of classes and protocols.

// Returns the content of the parentheses at 'at', and moves 'at' past them.
TokenSpan TakeGroup(TokenSpan tokens, size_t& at)
{
    const size_t begin = at + 1;
    at = AfterGroup(tokens, at);
    const bool closed = at > begin && tokens[at - 1].Is(')');
    return tokens.subspan(begin, at - begin - (closed ? 1 : 0));
}

std::optional<DeclaredName> FirstName(TokenSpan tokens)
{
    for (const Token& token : tokens)
        if (token.kind == Token::kWord && !IsQualifier(token))
            return NameOf(token);
    return std::nullopt;
}

bool IsMarkAt(TokenSpan tokens, size_t at, std::string_view marks)
{
    return at < tokens.size() && tokens[at].kind == Token::kMark && marks.find(tokens[at].text[0]) != marks.npos;
}

// Types as text.

// Words that say nothing of a type.
bool IsNoType(const Token& token)
{
    return (IsQualifier(token) && !IsOneOf(token, {"const", "volatile"})) ||
           IsOneOf(token, {"IBOutlet", "IBInspectable", "nullable", "nonnull", "null_unspecified", "in", "out", "inout",
                           "bycopy", "byref", "oneway", "NS_REFINED_FOR_SWIFT"});
}

std::vector<Token> WithoutNoTypes(TokenSpan tokens)
{
    std::vector<Token> kept;
    for (size_t at = 0; at < tokens.size(); ++at) {
        if (!IsNoType(tokens[at]))
            kept.push_back(tokens[at]);
        else if (IsMarkAt(tokens, at + 1, "("))
            at = AfterGroup(tokens, at + 1) - 1;
    }
    return kept;
}

// All of the declarator but the name, and but the macros after it.
std::vector<Token> TypeTokens(const DeclaredVariable& variable)
{
    std::vector<Token> tokens;
    bool isAfterName = false;
    for (const Token& token : variable.declarator) {
        if (token.text.data() == variable.name.text.data())
            isAfterName = true;
        else if (!isAfterName || token.kind == Token::kMark || token.kind == Token::kNumber)
            tokens.push_back(token);
        else if (InnerDeclarator(variable.declarator))
            tokens.push_back(token);
    }
    return WithoutNoTypes(tokens);
}

bool EndsSharedType(const Token& token)
{
    return token.Is('*') || token.Is('^') || token.Is('&') || token.Is('[') || token.Is('(');
}

// Moves 'at' behind the parentheses.
std::string TypeInParentheses(TokenSpan tokens, size_t& at)
{
    return Joined(WithoutNoTypes(TakeGroup(tokens, at)));
}

// One parameter of a method: "(type)name", at 'at', which moves to the next colon.
void AddParameter(TokenSpan method, size_t& at, std::string& parameters)
{
    if (!parameters.empty())
        parameters += ',';
    std::string type = "id";
    if (at < method.size() && method[at].Is('('))
        type = TypeInParentheses(method, at);
    parameters += type;
    while (at < method.size() && (method[at].kind != Token::kWord || IsQualifier(method[at])) && !method[at].Is(':') &&
           !method[at].Is(','))
        ++at;
    if (at < method.size() && method[at].kind == Token::kWord)
        parameters += " " + WithoutSplices(method[at++].text);
    while (at < method.size() && !method[at].Is(':') && !method[at].Is(','))
        ++at;
    if (at < method.size() && method[at].Is(','))
        parameters += ",...";
}

// Returns the class's name, and moves 'at' past it. In "GS_GENERIC_CLASS(NSArray, ElementT) : NSObject" it is a
// macro's argument; in "GS_SOMETHING NSArray : NSObject" it follows a macro.
std::optional<DeclaredName> TakeName(TokenSpan header, size_t& at)
{
    if (header.empty() || header[0].kind != Token::kWord)
        return std::nullopt;
    at = 1;
    if (header.size() > 2 && header[1].kind == Token::kWord && IsMarkAt(header, 2, ":(<"))
        at = 2;
    if (!IsMarkAt(header, at, "("))
        return NameOf(header[at - 1]);
    size_t after = at;
    const TokenSpan arguments = TakeGroup(header, after);
    const bool isMacro = Find(arguments, 0, ",") < arguments.size() || IsMarkAt(header, after, ":(");
    if (!isMacro)
        return NameOf(header[at - 1]);
    at = after;
    return FirstName(arguments);
}

} // namespace

std::optional<DeclaredName> SelectorOf(TokenSpan method)
{
    size_t at = 0;
    std::vector<Token> words = WordsToColon(method, at);
    const bool hasArguments = at < method.size() && method[at].Is(':');
    if (!hasArguments)
        return words.empty() ? std::nullopt : std::optional(NameOf(words.front()));

    // The last word before the colon is the selector's; those before it are macros or the previous argument's name.
    DeclaredName selector{"", method[at].line};
    if (!words.empty())
        selector = NameOf(words.back());
    selector.name += ':';
    while (true) {
        words = WordsToColon(method, ++at);
        if (at >= method.size() || !method[at].Is(':'))
            return selector;
        if (words.size() > 1)
            selector.name += WithoutSplices(words.back().text);
        selector.name += ':';
    }
}

std::vector<DeclaredName> VariablesOf(TokenSpan declaration)
{
    std::vector<DeclaredName> names;
    for (const DeclaredVariable& variable : DeclaredVariables(declaration))
        names.push_back(NameOf(variable.name));
    return names;
}

std::vector<TypedName> TypedVariablesOf(TokenSpan declaration)
{
    std::vector<TypedName> names;
    std::vector<Token> shared; // the words before the marks of the first
    for (const DeclaredVariable& variable : DeclaredVariables(declaration)) {
        std::vector<Token> type = TypeTokens(variable);
        if (variable.withType) {
            const auto mark = std::find_if(type.begin(), type.end(), EndsSharedType);
            shared.assign(type.begin(), mark);
        } else {
            type.insert(type.begin(), shared.begin(), shared.end());
        }
        names.push_back({NameOf(variable.name), Joined(type)});
    }
    return names;
}

MethodTypes TypesOf(TokenSpan method)
{
    MethodTypes types{"id", ""};
    size_t at = 0;
    if (!method.empty() && method[0].Is('('))
        types.result = TypeInParentheses(method, at);
    std::string parameters;
    while (at < method.size() && !method[at].Is(':'))
        ++at;
    while (at < method.size() && method[at].Is(':'))
        AddParameter(method, ++at, parameters);
    types.parameters = "(" + parameters + ")";
    return types;
}

std::string BasesOf(TokenSpan bases)
{
    std::string text;
    const auto add = [&text](const Token& token) {
        if (!text.empty())
            text += ',';
        text += WithoutSplices(token.text);
    };
    size_t at = 0;
    if (IsMarkAt(bases, 0, ":")) {
        while (++at < bases.size() && bases[at].kind != Token::kWord)
            continue;
        if (at < bases.size())
            add(bases[at++]);
        // "Superclass<Argument *> <Protocol>": only the names of protocols are bases.
        const size_t after = IsMarkAt(bases, at, "<") ? AfterAngles(bases, at) : at;
        if (IsMarkAt(bases, after, "<") || Find(bases.subspan(0, after), at + 1, "*") < after)
            at = after;
    }
    if (!IsMarkAt(bases, at, "<"))
        return text;
    const size_t end = AfterAngles(bases, at);
    for (; at < end; ++at)
        if (bases[at].kind == Token::kWord)
            add(bases[at]);
    return text;
}

TokenSpan AfterPropertyAttributes(TokenSpan property)
{
    if (property.empty() || !property[0].Is('('))
        return property;
    return property.subspan(AfterGroup(property, 0));
}

std::optional<ContainerHeader> ContainerHeaderOf(TokenSpan header)
{
    size_t at = 0;
    const std::optional<DeclaredName> name = TakeName(header, at);
    if (!name || Find(header, at, ",") < header.size())
        return std::nullopt;
    ContainerHeader result{*name, false, std::nullopt, {}, {}};
    const size_t angles = at;
    if (IsMarkAt(header, at, "<"))
        at = AfterAngles(header, at);
    const bool isGeneric = at > angles && IsMarkAt(header, at, ":(");
    if (isGeneric)
        result.parameters = header.subspan(angles, at - angles);
    if (IsMarkAt(header, at, "(")) {
        result.category = FirstName(TakeGroup(header, at));
        if (result.category)
            result.category->line = name->line;
        result.isExtension = !result.category;
    }
    result.bases = header.subspan(isGeneric || at == angles || result.category || result.isExtension ? at : angles);
    return result;
}

std::string Joined(TokenSpan tokens)
{
    std::string text;
    const Token* before = nullptr;
    for (const Token& token : tokens) {
        const bool isWord = token.kind != Token::kMark;
        const bool followsWord = before != nullptr && (before->kind != Token::kMark || before->Is('>') ||
                                                       before->Is('*') || before->Is('&'));
        if (followsWord && (isWord || (token.Is('*') && !before->Is('*')) || token.Is('&') || token.Is('(')))
            text += ' ';
        text += token.kind == Token::kWord ? WithoutSplices(token.text) : std::string(token.text);
        before = &token;
    }
    return text;
}

std::optional<size_t> OpenAggregate(TokenSpan tokens)
{
    for (size_t at = tokens.size(); at-- > 0;) {
        if (IsAggregateKeyword(tokens[at]))
            return at;
        if (tokens[at].Is(',') || tokens[at].Is(';') || tokens[at].Is('{'))
            break;
    }
    return std::nullopt;
}

bool MayBeOneMacro(TokenSpan tokens)
{
    return !tokens.empty() && tokens[0].kind == Token::kWord && !IsAggregateKeyword(tokens[0]) &&
           !IsOneOf(tokens[0], {"namespace", "class", "extern"}) &&
           (tokens.size() == 1 || (tokens[1].Is('(') && AfterGroup(tokens, 1) == tokens.size()));
}

} // namespace tagging
