#include "cplustags/ObjectiveCScanner.h"

#include <algorithm>

namespace cplustags {

namespace {

// No declaration that somebody wrote is longer; what is gets no tags, and bounds the work for damaged files.
constexpr size_t kLongestDeclaration = 4096;

// Macros and attributes before a declaration are shorter.
constexpr size_t kLongestPending = 64;

bool IsSign(const Token& token)
{
    return token.Is('-') || token.Is('+');
}

bool IsNamedAggregate(TokenSpan tokens, size_t keyword)
{
    return tokens[keyword].text == "enum" || (keyword + 1 < tokens.size() && tokens.back().kind == Token::kWord);
}

} // namespace

ObjectiveCScanner::ObjectiveCScanner(std::string_view text, const std::set<std::string>& ignoredMacros)
    : text(text), source(text), afterKeyword(text)
{
    for (const std::string& macro : ignoredMacros) {
        const bool withArguments = macro.ends_with('+');
        ignored[std::string_view(macro).substr(0, macro.size() - withArguments)] = withArguments;
    }
}

ObjectiveCSource ObjectiveCScanner::Read()
{
    result.rest = text;
    Token token;
    while (Next(token)) {
        OnToken(token);
        last = token;
    }
    Finish();
    return std::move(result);
}

// What counts, and what does not.

bool ObjectiveCScanner::Next(Token& token)
{
    while (source.Next(token)) {
        if (token.kind == Token::kDirective) {
            OnDirective(token);
        } else if (skip == Skip::kOtherBranch) {
            Blank(token);
        } else if (skip == Skip::kNo) {
            const auto macro =
                token.kind == Token::kWord && !ignored.empty() ? ignored.find(token.text) : ignored.end();
            if (macro == ignored.end())
                return true;
            PassOver(token, macro->second);
        }
    }
    return false;
}

void ObjectiveCScanner::PassOver(const Token& macro, bool withArguments)
{
    Blank(macro);
    int depth = 0;
    SourceTokens ahead = source;
    Token token;
    while (withArguments && ahead.Next(token) && token.kind != Token::kDirective) {
        const bool goesOn = depth > 0 ? !token.Is(';') && !token.Is('{') && !token.Is('}') : token.Is('(');
        if (!goesOn)
            return;
        source = ahead;
        Blank(token);
        depth += token.Is('(') ? 1 : token.Is(')') ? -1 : 0;
        if (depth == 0)
            return;
    }
}

void ObjectiveCScanner::OnDirective(const Token& token)
{
    const Directive directive(token.text);
    if (directive.BeginsBranches())
        BeginBranches(directive);
    else if (directive.ContinuesBranches())
        NextBranch(directive);
    else if (directive.EndsBranches())
        EndBranches();
}

void ObjectiveCScanner::BeginBranches(const Directive& directive)
{
    // A header has no end of its own: what is in the branches may be the rest of it or what follows.
    const bool isHeader = declaration.subject == Subject::kHeader || declaration.subject == Subject::kHeaderRest;
    if (skip == Skip::kNo && isHeader && !declaration.tokens.empty())
        Finish();
    Branches added;
    added.before = state;
    added.skipAround = skip;
    added.isInDeclaration = declaration.subject != Subject::kNone;
    if (skip == Skip::kNo && directive.IsNever())
        skip = Skip::kPutAway;
    added.hadLive = skip == Skip::kNo;
    branches.push_back(added);
}

// Each branch goes on from what was before the first. Inside of a declaration only one branch can be read: two together
// would be none that anybody wrote.
void ObjectiveCScanner::NextBranch(const Directive& directive)
{
    if (branches.empty() || branches.back().skipAround != Skip::kNo)
        return;
    Branches& around = branches.back();
    if (skip == Skip::kNo && !around.isInDeclaration) {
        Finish();
        pending.clear();
        if (!around.afterFirst)
            around.afterFirst = state;
        state = around.before;
    }
    if (around.isInDeclaration && around.hadLive)
        skip = Skip::kOtherBranch;
    else
        skip = directive.IsNever() ? Skip::kPutAway : Skip::kNo;
    around.hadLive |= skip == Skip::kNo;
}

// What follows belongs to what the first branch began: "#if NEW", "@protocol P", "#else", "@interface NSObject (P)",
// "#endif" and methods.
void ObjectiveCScanner::EndBranches()
{
    if (branches.empty())
        return;
    const Branches& ended = branches.back();
    if (ended.afterFirst) {
        if (skip == Skip::kNo) {
            Finish();
            pending.clear();
        }
        state = *ended.afterFirst;
    }
    skip = ended.skipAround;
    branches.pop_back();
}

// Tokens.

void ObjectiveCScanner::OnToken(const Token& token)
{
    Token word;
    if (token.Is('@')) {
        if (const Keyword keyword = KeywordAfterAt(word); keyword != Keyword::kNone) {
            source = afterKeyword;
            OnKeyword(keyword, token, word);
            return;
        }
    }
    if (declaration.subject != Subject::kNone)
        OnDeclaration(token);
    else if (state.mode == Mode::kBody)
        OnBody(token);
    else if (state.mode == Mode::kVariables)
        OnVariables(token);
    else
        OnCode(token);
}

void ObjectiveCScanner::OnCode(const Token& token)
{
    const bool isInContainer = state.container.kind != Container::kNone;
    if (token.Is('{') || token.Is('}')) {
        OnBrace(token);
    } else if (isInContainer && state.depth == 0) {
        OnCodeOutsideOfBraces(token);
    } else if (isInContainer && IsMethodAfterMissingBrace(token)) {
        BackToCode();
        OnCodeOutsideOfBraces(token);
    } else if (token.Is(';')) {
        pending.clear();
    } else if (!isInContainer && pending.size() < kLongestPending) {
        pending.push_back(token);
    }
}

void ObjectiveCScanner::OnCodeOutsideOfBraces(const Token& token)
{
    if (MayBeginMethod(token)) {
        Begin(Subject::kMethod, token);
    } else if (token.Is(';')) {
        EndStatement();
    } else if (state.variablesMayFollow && pending.empty() && (token.Is(':') || token.Is('<'))) {
        Begin(Subject::kHeaderRest, token);
        declaration.angles = token.Is('<');
        state.variablesMayFollow = true;
    } else {
        if (token.Is('(') || token.Is('['))
            ++state.parentheses;
        else if ((token.Is(')') || token.Is(']')) && state.parentheses > 0)
            --state.parentheses;
        else if (token.Is('=') && state.parentheses == 0)
            state.isInitializer = true;
        if (pending.size() < kLongestPending)
            pending.push_back(token);
    }
}

// Of C code. The braces of what is outside of classes do not matter: a class cannot be in any but those of extern "C".
void ObjectiveCScanner::OnBrace(const Token& token)
{
    if (state.container.kind == Container::kNone) {
        pending.clear();
    } else if (token.Is('}')) {
        if (state.depth > 0)
            --state.depth;
        if (state.depth == 0 && state.parentheses == 0)
            EndStatement();
    } else if (state.depth == 0 && state.variablesMayFollow && (pending.empty() || MayBeOneMacro(pending))) {
        BeginVariables(token);
    } else if (state.depth == 0 && pending.empty() && state.container.kind == Container::kImplementation) {
        BeginBody(token); // "- foo; {": a semicolon may end the method's header
    } else {
        ++state.depth;
        state.variablesMayFollow = false;
    }
}

void ObjectiveCScanner::OnBody(const Token& token)
{
    if (IsMethodAfterMissingBrace(token)) {
        BackToCode();
        OnCode(token);
        return;
    }
    Blank(token);
    if (token.Is('{'))
        ++state.depth;
    else if (token.Is('}') && --state.depth == 0)
        BackToCode();
}

void ObjectiveCScanner::OnVariables(const Token& token)
{
    if (token.Is('}')) {
        Blank(token);
        BackToCode();
    } else if (token.Is(';')) {
        Blank(token);
    } else if (IsSign(token)) {
        BackToCode(); // a method: the brace is missing
        OnCode(token);
    } else {
        declaration.subject = Subject::kVariable;
        OnDeclaration(token);
    }
}

void ObjectiveCScanner::OnDeclaration(const Token& token)
{
    if (declaration.braces > 0) {
        OnTokenInBraces(token);
    } else if (EndsDeclaration(token)) {
        Finish();
        OnToken(token);
    } else if (token.Is(';')) {
        const bool isForward = declaration.subject == Subject::kHeader;
        const bool staysForC = declaration.keptTo > 0;
        if (isForward)
            declaration = {};
        Finish();
        if (!staysForC)
            Blank(token);
    } else if (token.Is('{')) {
        OnBraceInDeclaration(token);
    } else {
        Add(token);
    }
}

void ObjectiveCScanner::OnBraceInDeclaration(const Token& token)
{
    const std::optional<size_t> aggregate = OpenAggregate(declaration.tokens);
    const bool isMember = aggregate && declaration.parentheses > 0;
    if (declaration.subject == Subject::kMethod && !isMember) {
        Finish();
        BeginBody(token);
        return;
    }
    declaration.braces = 1;
    declaration.keepsBraces = declaration.subject == Subject::kVariable && declaration.keptTo == 0 && aggregate &&
                              IsNamedAggregate(declaration.tokens, *aggregate);
    if (declaration.keepsBraces)
        declaration.keptFrom = *aggregate;
    Add(token);
}

void ObjectiveCScanner::OnTokenInBraces(const Token& token)
{
    if (token.Is('{'))
        ++declaration.braces;
    const bool closes = token.Is('}') && --declaration.braces == 0;
    if (!closes) {
        if (!declaration.keepsBraces)
            Blank(token);
        return;
    }
    Add(token);
    if (declaration.keepsBraces)
        declaration.keptTo = declaration.tokens.size();
    declaration.keepsBraces = false;
}

// Ends of declarations that belong to what follows. Damaged and unfinished ones shall not take the next with them.
bool ObjectiveCScanner::EndsDeclaration(const Token& token) const
{
    const bool isSign = IsSign(token) && declaration.parentheses == 0;
    switch (declaration.subject) {
    case Subject::kHeader:
    case Subject::kHeaderRest:
        return EndsHeader(token);
    case Subject::kMethod:
    case Subject::kProperty:
        return token.Is('}') || isSign;
    case Subject::kVariable:
        return token.Is('}');
    case Subject::kNames:
        return token.Is('{') || token.Is('}') || isSign || EndsNames(token);
    case Subject::kNone:
        break;
    }
    return false;
}

bool ObjectiveCScanner::EndsHeader(const Token& token) const
{
    if (token.Is(';'))
        return declaration.subject == Subject::kHeaderRest;
    if (token.Is('{') || token.Is('}') || IsSign(token))
        return true;
    if (declaration.parentheses > 0 || declaration.angles > 0)
        return false;
    if (token.kind != Token::kWord)
        return !token.Is('(') && !token.Is('<') && !token.Is(':') && !token.Is(',');
    if (declaration.tokens.empty())
        return declaration.subject == Subject::kHeaderRest && !declaration.introducer.Is(':');
    const Token& before = declaration.tokens.back();
    const bool mayFollowMacro = declaration.tokens.size() == 1 && before.kind == Token::kWord;
    return !before.Is(':') && !before.Is(',') && !(mayFollowMacro && before.line == token.line);
}

// "@class A" without its semicolon, and a declaration on the next line.
bool ObjectiveCScanner::EndsNames(const Token& token) const
{
    if (token.kind != Token::kWord || declaration.tokens.empty())
        return false;
    const Token& before = declaration.tokens.back();
    return before.kind == Token::kWord && before.line != token.line;
}

// A sign that begins a statement, or follows what may be macros: no C or C++ code outside of braces and parentheses has
// one but in an initial value and after "operator".
bool ObjectiveCScanner::MayBeginMethod(const Token& token) const
{
    return IsSign(token) && state.parentheses == 0 && !state.isInitializer && !last.Is("operator");
}

// "- (type)" at the beginning of a line and of a statement. No statement begins so.
bool ObjectiveCScanner::IsMethodAfterMissingBrace(const Token& token) const
{
    if (!IsSign(token) || !(last.Is(';') || last.Is('}')))
        return false;
    const char* place = token.text.data();
    if (place == text.data() || place[-1] != '\n')
        return false;
    SourceTokens ahead = source;
    Token next;
    return ahead.Next(next) && next.Is('(');
}

// Keywords.

ObjectiveCScanner::Keyword ObjectiveCScanner::KeywordOf(std::string_view word)
{
    static const std::unordered_map<std::string_view, Keyword> kKeywords = {
        {"interface", Keyword::kContainer}, {"implementation", Keyword::kContainer},
        {"protocol", Keyword::kContainer},  {"end", Keyword::kEnd},
        {"property", Keyword::kProperty},   {"class", Keyword::kNames},
        {"synthesize", Keyword::kNames},    {"dynamic", Keyword::kNames},
        {"import", Keyword::kNames},        {"compatibility_alias", Keyword::kNames},
        {"optional", Keyword::kMark},       {"required", Keyword::kMark},
        {"public", Keyword::kAccess},       {"protected", Keyword::kAccess},
        {"private", Keyword::kAccess},      {"package", Keyword::kAccess},
    };
    const auto found = kKeywords.find(word);
    return found == kKeywords.end() ? Keyword::kNone : found->second;
}

// "@protocol(Name)" is an expression.
ObjectiveCScanner::Keyword ObjectiveCScanner::KeywordAfterAt(Token& word)
{
    SourceTokens ahead = source;
    if (!ahead.Next(word) || word.kind != Token::kWord)
        return Keyword::kNone;
    const Keyword keyword = KeywordOf(word.text);
    afterKeyword = ahead;
    Token next;
    return word.text == "protocol" && ahead.Next(next) && next.Is('(') ? Keyword::kNone : keyword;
}

// None of these but the access keywords can be in braces of code: there, a closing brace was missing, and is passed over.
void ObjectiveCScanner::OnKeyword(Keyword keyword, const Token& at, const Token& word)
{
    Finish();
    if (keyword != Keyword::kAccess)
        BackToCode();
    Blank(at);
    switch (keyword) {
    case Keyword::kEnd:
        state = {};
        break;
    case Keyword::kContainer:
        state = {};
        Begin(Subject::kHeader, word);
        return;
    case Keyword::kProperty:
        Begin(Subject::kProperty, word);
        return;
    case Keyword::kNames:
        Begin(Subject::kNames, word);
        return;
    case Keyword::kMark:
    case Keyword::kAccess:
    case Keyword::kNone:
        break;
    }
    Blank(word);
}

// Declarations.

void ObjectiveCScanner::Begin(Subject subject, const Token& introducer)
{
    BlankPending();
    EndStatement();
    Blank(introducer);
    declaration.subject = subject;
    declaration.introducer = introducer;
}

void ObjectiveCScanner::BeginBody(const Token& brace)
{
    Blank(brace);
    state.mode = Mode::kBody;
    state.depth = 1;
}

void ObjectiveCScanner::BeginVariables(const Token& brace)
{
    BlankPending();
    EndStatement();
    Blank(brace);
    state.mode = Mode::kVariables;
}

void ObjectiveCScanner::BackToCode()
{
    BlankPending();
    EndStatement();
    state.mode = Mode::kCode;
    state.depth = 0;
}

void ObjectiveCScanner::EndStatement()
{
    pending.clear();
    state.parentheses = 0;
    state.isInitializer = false;
    state.variablesMayFollow = false;
}

void ObjectiveCScanner::Add(const Token& token)
{
    const bool isFull = declaration.tokens.size() >= kLongestDeclaration;
    if (declaration.subject != Subject::kVariable || isFull)
        Blank(token);
    if (token.Is('(') || token.Is('['))
        ++declaration.parentheses;
    else if ((token.Is(')') || token.Is(']')) && declaration.parentheses > 0)
        --declaration.parentheses;
    else if (token.Is('<'))
        ++declaration.angles;
    else if (token.Is('>') && declaration.angles > 0)
        --declaration.angles;
    if (!isFull)
        declaration.tokens.push_back(token);
}

void ObjectiveCScanner::Finish()
{
    switch (declaration.subject) {
    case Subject::kHeader:
        FinishHeader();
        break;
    case Subject::kHeaderRest:
        state.variablesMayFollow = true;
        break;
    case Subject::kMethod:
        FinishMethod();
        break;
    case Subject::kProperty:
        FinishProperty();
        break;
    case Subject::kVariable:
        FinishVariable();
        break;
    case Subject::kNames:
    case Subject::kNone:
        break;
    }
    declaration = {};
}

void ObjectiveCScanner::FinishHeader()
{
    const std::optional<ContainerHeader> header = ContainerHeaderOf(declaration.tokens);
    if (!header)
        return;
    const std::string_view keyword = declaration.introducer.text;
    const bool isProtocol = keyword == "protocol";
    const bool isImplementation = keyword == "implementation";
    state.container.kind = isProtocol         ? Container::kProtocol
                           : isImplementation ? Container::kImplementation
                                              : Container::kInterface;
    state.container.scope = result.tags.Keep("class:" + header->name.name);
    state.variablesMayFollow = !isProtocol;
    if (isProtocol)
        AddTag(header->name, kind::kProtocol, "");
    else if (header->category)
        AddTag(*header->category, isImplementation ? kind::kImplementation : kind::kCategory, state.container.scope);
    else if (!header->isExtension)
        AddTag(header->name, isImplementation ? kind::kImplementation : kind::kInterface, "");
}

void ObjectiveCScanner::FinishMethod()
{
    const std::optional<DeclaredName> selector = SelectorOf(declaration.tokens);
    if (!selector)
        return;
    const bool isDefinition = state.container.kind == Container::kImplementation;
    if (declaration.introducer.Is('-'))
        AddTag(*selector, isDefinition ? kind::kInstanceMethod : kind::kInstanceMethodDeclaration,
               state.container.scope);
    else
        AddTag(*selector, isDefinition ? kind::kClassMethod : kind::kClassMethodDeclaration, state.container.scope);
}

void ObjectiveCScanner::FinishProperty()
{
    if (state.container.kind == Container::kNone)
        return;
    for (const DeclaredName& name : VariablesOf(AfterPropertyAttributes(declaration.tokens)))
        AddTag(name, kind::kProperty, state.container.scope);
}

void ObjectiveCScanner::FinishVariable()
{
    for (const DeclaredName& name : VariablesOf(declaration.tokens))
        AddTag(name, kind::kInstanceVariable, state.container.scope);
    for (size_t i = 0; i < declaration.tokens.size(); ++i)
        if (i < declaration.keptFrom || i >= declaration.keptTo)
            Blank(declaration.tokens[i]);
}

// Results.

void ObjectiveCScanner::AddTag(const DeclaredName& name, char kind, std::string_view scope)
{
    result.tags.tags.push_back({result.tags.Keep(name.name), name.line, kind, scope});
}

// Line breaks stay, also those of splices inside the token.
void ObjectiveCScanner::Blank(const Token& token)
{
    const size_t place = static_cast<size_t>(token.text.data() - text.data());
    for (size_t i = place; i < place + token.text.size(); ++i)
        if (result.rest[i] != '\n' && result.rest[i] != '\r')
            result.rest[i] = ' ';
}

void ObjectiveCScanner::BlankPending()
{
    if (pending.size() < kLongestPending)
        for (const Token& token : pending)
            Blank(token);
    pending.clear();
}

} // namespace cplustags
