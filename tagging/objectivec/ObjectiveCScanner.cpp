#include "tagging/objectivec/ObjectiveCScanner.h"

#include <algorithm>

namespace tagging {

namespace {

// Real macros and attributes before a declaration are shorter.
constexpr size_t kLongestPending = 64;

bool IsSign(const Token& token)
{
    return token.Is('-') || token.Is('+');
}

bool BeginsEnumeration(const Token& token)
{
    return token.kind == Token::kWord && (token.text[0] == 'N' || token.text[0] == 'C') &&
           (token.Is("NS_ENUM") || token.Is("NS_OPTIONS") || token.Is("CF_ENUM") || token.Is("CF_OPTIONS") ||
            token.Is("NS_CLOSED_ENUM") || token.Is("CF_CLOSED_ENUM"));
}

ObjectiveCDetails::Access AccessOf(std::string_view keyword)
{
    using Access = ObjectiveCDetails::Access;
    if (keyword == "private")
        return Access::Private;
    return keyword == "protected" ? Access::Protected : Access::Public; // "@package" is public within the library
}

} // namespace

ObjectiveCScanner::ObjectiveCScanner(std::string_view text, const std::set<std::string>& ignoredMacros, Details wanted)
    : text(text), wantsDetails(wanted == Details::Yes), source(text), afterKeyword(text), rest(text)
{
    for (const std::string& macro : ignoredMacros) {
        const bool withArguments = macro.ends_with('+');
        ignored[std::string_view(macro).substr(0, macro.size() - withArguments)] = withArguments;
    }
}

ObjectiveCSource ObjectiveCScanner::Read()
{
    Token token;
    while (Next(token)) {
        OnToken(token);
        last = token;
    }
    Finish();
    EndContainer(last.line);
    return {std::move(tags), std::move(details), std::move(rest.Text())};
}

// Tokens to skip.

bool ObjectiveCScanner::Next(Token& token)
{
    while (source.Next(token)) {
        if (token.kind == Token::kDirective) {
            OnDirective(token);
        } else if (!PassesOver(token)) {
            if (BeginsEnumeration(token))
                OnEnumerationMacro(token);
            return true;
        }
    }
    return false;
}

bool ObjectiveCScanner::PassesOver(const Token& token)
{
    using Skip = Conditions<State>::Skip;
    if (conditions.Skipping() == Skip::OtherBranch)
        rest.TakeOut(token);
    if (conditions.Skipping() != Skip::No)
        return true;
    if (ignored.empty() || token.kind != Token::kWord)
        return false;
    const auto macro = ignored.find(token.text);
    if (macro == ignored.end())
        return false;
    PassOver(token, macro->second);
    return true;
}

void ObjectiveCScanner::PassOver(const Token& macro, bool withArguments)
{
    rest.TakeOut(macro);
    int depth = 0;
    SourceTokens ahead = source;
    Token token;
    while (withArguments && ahead.Next(token) && token.kind != Token::kDirective) {
        const bool goesOn = depth > 0 ? !token.Is(';') && !token.Is('{') && !token.Is('}') : token.Is('(');
        if (!goesOn)
            return;
        source = ahead;
        rest.TakeOut(token);
        depth += token.Is('(') ? 1 : token.Is(')') ? -1 : 0;
        if (depth == 0)
            return;
    }
}

// A header has no end mark: the branches may continue it or follow it.
void ObjectiveCScanner::OnDirective(const Token& token)
{
    const Directive directive(token.text);
    const bool endsHeader = directive.BeginsBranches() && declaration.IsHeader() && !declaration.Tokens().empty() &&
                            conditions.Skipping() == Conditions<State>::Skip::No;
    if (endsHeader || conditions.EndsBranch(directive))
        Finish();
    if (conditions.EndsBranch(directive))
        pending.clear();
    conditions.Follow(directive, state, declaration.IsOpen());
}

// "typedef NS_ENUM(NSInteger, Name) { ... }": the parser of the rest does not know that this is "enum Name".
void ObjectiveCScanner::OnEnumerationMacro(const Token& macro)
{
    constexpr int kMostTokens = 16; // of a type
    SourceTokens ahead = source;
    std::vector<Token> arguments;
    Token token;
    bool hasName = false;
    for (int i = 0; i < kMostTokens && ahead.Next(token) && token.kind != Token::kDirective; ++i) {
        arguments.push_back(token);
        hasName |= token.Is(',');
        if (token.Is(')'))
            break;
    }
    const bool isComplete = arguments.size() > 2 && arguments.front().Is('(') && arguments.back().Is(')');
    if (!isComplete)
        return;
    rest.Replace(macro, "enum");
    const Token& name = arguments[arguments.size() - 2];
    for (const Token& argument : arguments)
        if (!hasName || argument.text.data() != name.text.data())
            rest.TakeOut(argument);
}

// Tokens.

void ObjectiveCScanner::OnToken(const Token& token)
{
    Token word;
    if (token.Is('@')) {
        if (const Keyword keyword = KeywordAfterAt(word); keyword != Keyword::None) {
            source = afterKeyword;
            OnKeyword(keyword, token, word);
            return;
        }
    }
    if (declaration.IsOpen())
        OnDeclaration(token);
    else if (state.mode == Mode::Body)
        OnBody(token);
    else if (state.mode == Mode::Variables)
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
        Begin(Subject::Method, token);
    } else if (token.Is(';')) {
        EndStatement();
    } else if (state.variablesMayFollow && pending.empty() && (token.Is(':') || token.Is('<'))) {
        Begin(Subject::HeaderRest, token);
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

// A brace of C code. Braces outside of classes are ignored: only those of extern "C" can contain a class.
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
    rest.TakeOut(token);
    if (token.Is('{'))
        ++state.depth;
    else if (token.Is('}') && --state.depth == 0) {
        if (ObjectiveCDetails* const body = DetailsOf(method))
            body->endLine = token.line;
        method = kNoTag;
        BackToCode();
    }
}

void ObjectiveCScanner::OnVariables(const Token& token)
{
    if (token.Is('}')) {
        rest.TakeOut(token);
        BackToCode();
    } else if (token.Is(';')) {
        rest.TakeOut(token);
    } else if (IsSign(token)) {
        BackToCode(); // a method: the closing brace is missing
        OnCode(token);
    } else {
        declaration.Begin(Subject::Variable, {});
        OnDeclaration(token);
    }
}

void ObjectiveCScanner::OnDeclaration(const Token& token)
{
    // Only its end shows how much of a variable is left to the parser of C.
    const bool staysForNow = declaration.What() == Subject::Variable;
    if (declaration.IsInBraces()) {
        if (!declaration.IsInTypeOfC())
            rest.TakeOut(token);
        declaration.AddInBraces(token);
    } else if (declaration.IsEndedBy(token)) {
        Finish();
        OnToken(token);
    } else if (token.Is(';')) {
        if (!declaration.HasTypeOfC())
            rest.TakeOut(token);
        if (declaration.What() == Subject::Header)
            declaration.Clear(); // "@protocol A;" declares nothing
        Finish();
    } else if (token.Is('{') && !declaration.BraceIsPart()) {
        Finish();
        BeginBody(token);
    } else {
        const bool isKept = token.Is('{') ? declaration.BeginBraces(token) : declaration.Add(token);
        if (!staysForNow || !isKept)
            rest.TakeOut(token);
    }
}

// A sign that begins a statement or follows possible macros. Outside of braces and parentheses, C and C++ have signs
// only in initial values and after "operator".
bool ObjectiveCScanner::MayBeginMethod(const Token& token) const
{
    return IsSign(token) && state.parentheses == 0 && !state.isInitializer && !last.Is("operator");
}

// "- (type)" at the beginning of a line and of a statement. No statement begins like that.
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
        {"interface", Keyword::Container}, {"implementation", Keyword::Container},
        {"protocol", Keyword::Container},  {"end", Keyword::End},
        {"property", Keyword::Property},   {"class", Keyword::Names},
        {"synthesize", Keyword::Names},    {"dynamic", Keyword::Names},
        {"import", Keyword::Names},        {"compatibility_alias", Keyword::Names},
        {"optional", Keyword::Mark},       {"required", Keyword::Mark},
        {"public", Keyword::Access},       {"protected", Keyword::Access},
        {"private", Keyword::Access},      {"package", Keyword::Access},
    };
    const auto found = kKeywords.find(word);
    return found == kKeywords.end() ? Keyword::None : found->second;
}

// "@protocol(Name)" is an expression.
ObjectiveCScanner::Keyword ObjectiveCScanner::KeywordAfterAt(Token& word)
{
    SourceTokens ahead = source;
    if (!ahead.Next(word) || word.kind != Token::kWord)
        return Keyword::None;
    const Keyword keyword = KeywordOf(WithoutSplices(word.text));
    afterKeyword = ahead;
    Token next;
    const bool isExpression = keyword == Keyword::Container && ahead.Next(next) && next.Is('(');
    return isExpression ? Keyword::None : keyword;
}

// Only access keywords can be inside braces of code. For any other, a closing brace was missing, which is tolerated.
void ObjectiveCScanner::OnKeyword(Keyword keyword, const Token& at, const Token& word)
{
    Finish();
    if (keyword != Keyword::Access)
        BackToCode();
    rest.TakeOut(at);
    switch (keyword) {
    case Keyword::End:
        EndContainer(word.line);
        state = {};
        break;
    case Keyword::Container:
        EndContainer(last.line);
        state = {};
        Begin(Subject::Header, word);
        return;
    case Keyword::Property:
        Begin(Subject::Property, word);
        return;
    case Keyword::Names:
        Begin(Subject::Names, word);
        return;
    case Keyword::Access:
        state.access = AccessOf(WithoutSplices(word.text));
        break;
    case Keyword::Mark:
    case Keyword::None:
        break;
    }
    rest.TakeOut(word);
}

// Declarations.

void ObjectiveCScanner::Begin(Subject subject, const Token& introducer)
{
    TakeOutPending();
    EndStatement();
    rest.TakeOut(introducer);
    declaration.Begin(subject, introducer);
}

void ObjectiveCScanner::BeginBody(const Token& brace)
{
    rest.TakeOut(brace);
    state.mode = Mode::Body;
    state.depth = 1;
}

void ObjectiveCScanner::BeginVariables(const Token& brace)
{
    TakeOutPending();
    EndStatement();
    rest.TakeOut(brace);
    state.mode = Mode::Variables;
}

void ObjectiveCScanner::BackToCode()
{
    TakeOutPending();
    EndStatement();
    state.mode = Mode::Code;
    state.depth = 0;
}

void ObjectiveCScanner::EndStatement()
{
    pending.clear();
    state.parentheses = 0;
    state.isInitializer = false;
    state.variablesMayFollow = false;
}

void ObjectiveCScanner::Finish()
{
    switch (declaration.What()) {
    case Subject::Header:
        FinishHeader();
        break;
    case Subject::HeaderRest:
        FinishHeaderRest();
        break;
    case Subject::Method:
        FinishMethod();
        break;
    case Subject::Property:
        FinishProperty();
        break;
    case Subject::Variable:
        FinishVariable();
        break;
    case Subject::Names:
    case Subject::None:
        break;
    }
    declaration.Clear();
}

void ObjectiveCScanner::FinishHeader()
{
    const std::optional<ContainerHeader> header = ContainerHeaderOf(declaration.Tokens());
    if (!header)
        return;
    const std::string keyword = WithoutSplices(declaration.Introducer().text);
    const bool isProtocol = keyword == "protocol";
    const bool isImplementation = keyword == "implementation";
    state.container.kind = isProtocol         ? Container::kProtocol
                           : isImplementation ? Container::kImplementation
                                              : Container::kInterface;
    state.container.scope =
        tags.Keep(std::string(tagsfile::KindOf(tagsfile::kind::kClass).scopeWord) + header->name.name);
    state.variablesMayFollow = !isProtocol;
    state.container.tag = header->isExtension ? kNoTag : tags.tags.size();
    state.access = isImplementation ? ObjectiveCDetails::Access::Private : ObjectiveCDetails::Access::Protected;
    ObjectiveCDetails* found = &unwanted;
    if (isProtocol)
        found = &AddTag(header->name, tagsfile::kind::kProtocol, "");
    else if (header->category)
        found =
            &AddTag(*header->category, isImplementation ? tagsfile::kind::kImplementation : tagsfile::kind::kCategory,
                    state.container.scope);
    else if (!header->isExtension)
        found =
            &AddTag(header->name, isImplementation ? tagsfile::kind::kImplementation : tagsfile::kind::kInterface, "");
    if (header->category)
        state.container.category = tags.Keep(header->category->name);
    if (wantsDetails) {
        found->bases = BasesOf(header->bases);
        found->parameters = Joined(header->parameters);
    }
}

void ObjectiveCScanner::FinishHeaderRest()
{
    state.variablesMayFollow = true;
    ObjectiveCDetails* const container = DetailsOf(state.container.tag);
    if (container == nullptr || !container->bases.empty())
        return;
    std::vector<Token> bases = {declaration.Introducer()};
    bases.insert(bases.end(), declaration.Tokens().begin(), declaration.Tokens().end());
    container->bases = BasesOf(bases);
}

// Not only "@end" ends it: there is another container, or the text ends.
void ObjectiveCScanner::EndContainer(unsigned line)
{
    ObjectiveCDetails* const container = DetailsOf(state.container.tag);
    if (container != nullptr && container->endLine == 0)
        container->endLine = line;
}

void ObjectiveCScanner::FinishMethod()
{
    const std::optional<DeclaredName> selector = SelectorOf(declaration.Tokens());
    if (!selector)
        return;
    const bool isDefinition = state.container.kind == Container::kImplementation;
    const bool isInstances = declaration.Introducer().Is('-');
    const char kind = isDefinition ? (isInstances ? tagsfile::kind::kInstanceMethod : tagsfile::kind::kClassMethod)
                                   : (isInstances ? tagsfile::kind::kInstanceMethodDeclaration
                                                  : tagsfile::kind::kClassMethodDeclaration);
    method = tags.tags.size();
    ObjectiveCDetails& found = AddTag(*selector, kind, state.container.scope);
    if (!wantsDetails)
        return;
    MethodTypes types = TypesOf(declaration.Tokens());
    found.type = std::move(types.result);
    found.signature = std::move(types.parameters);
    found.category = state.container.category;
}

void ObjectiveCScanner::FinishProperty()
{
    if (state.container.kind == Container::kNone)
        return;
    for (TypedName& variable : TypedVariablesOf(AfterPropertyAttributes(declaration.Tokens()))) {
        ObjectiveCDetails& found = AddTag(variable.name, tagsfile::kind::kProperty, state.container.scope);
        if (wantsDetails) {
            found.type = std::move(variable.type);
            found.category = state.container.category;
        }
    }
}

void ObjectiveCScanner::FinishVariable()
{
    for (TypedName& variable : TypedVariablesOf(declaration.Tokens())) {
        ObjectiveCDetails& found = AddTag(variable.name, tagsfile::kind::kInstanceVariable, state.container.scope);
        if (wantsDetails) {
            found.type = std::move(variable.type);
            found.access = state.access;
        }
    }
    for (size_t i = 0; i < declaration.Tokens().size(); ++i)
        if (!declaration.IsOfTypeOfC(i))
            rest.TakeOut(declaration.Tokens()[i]);
}

ObjectiveCDetails& ObjectiveCScanner::AddTag(const DeclaredName& name, char kind, std::string_view scope)
{
    tags.tags.push_back({tags.Keep(name.name), name.line, kind, scope});
    return wantsDetails ? details.emplace_back() : unwanted;
}

ObjectiveCDetails* ObjectiveCScanner::DetailsOf(size_t tag)
{
    return tag < details.size() ? &details[tag] : nullptr;
}

void ObjectiveCScanner::TakeOutPending()
{
    if (pending.size() < kLongestPending)
        for (const Token& token : pending)
            rest.TakeOut(token);
    pending.clear();
}

ObjectiveCSource ReadObjectiveC(std::string_view text, const std::set<std::string>& ignored, Details details)
{
    return ObjectiveCScanner(text, ignored, details).Read();
}

} // namespace tagging
