#include "resolve/Usage.h"

#include "resolve/Blocks.h"

namespace resolve {

namespace {

using tagging::SymbolKind;

bool IsTagWord(std::string_view word)
{
    return word == "struct" || word == "class" || word == "union" || word == "enum";
}

size_t ArgumentsOf(const Tokens& tokens, size_t open)
{
    const size_t close = tokens[open].match == kNone ? tokens.Count() : tokens[open].match;
    const auto parts = tokens.Parts(open + 1, close);
    return parts.size() == 1 && parts.front().IsEmpty() ? 0 : parts.size();
}

// The token behind the template's arguments, if any.
size_t BehindArguments(const Tokens& tokens, size_t word)
{
    const size_t next = word + 1;
    if (!tokens[next].Is('<'))
        return next;
    const size_t close = tokens.AngleEnd(next);
    return close == kNone ? next : close + 1;
}

// "X y", "X* y;": whether a declaration begins with the word.
bool BeginsDeclaration(const Tokens& tokens, size_t word, size_t next)
{
    const Token& after = tokens[next];
    if (after.IsWord())
        return !IsStatementWord(after.text) && after.text != "in" && after.text != "and" && after.text != "or";
    if (!after.Is('*') && !after.Is('&'))
        return false;
    size_t end = next;
    while (tokens[end].Is('*') || tokens[end].Is('&') || tokens[end].text == "const")
        ++end;
    if (tokens[end].Is('>') || tokens[end].Is(',') || tokens[end].Is(')'))
        return true;
    if (!tokens[end].IsWord() && !tokens[end].IsMark("::"))
        return false;
    size_t begin = word;
    while (tokens[begin - 1].IsMark("::") && tokens[begin - 2].IsWord())
        begin -= 2;
    const Token& before = tokens[begin - 1];
    const bool isStart = begin == 0 || before.Is(';') || before.Is('{') || before.Is('}') || before.Is(':') ||
                         (before.IsWord() && (IsSpecifier(before.text) || before.text == "typedef"));
    if (isStart || before.Is('<'))
        return true;
    const bool isParameter = (before.Is('(') || before.Is(',')) && tokens[word].parent != kNone;
    const Token& last = tokens[end + 1];
    return isParameter && !IsInFunction(tokens, word) && (last.Is(',') || last.Is(')') || last.Is('=') || last.Is('['));
}

Usage::Form FormOf(const Tokens& tokens, size_t word)
{
    const Token& before = tokens[word - 1];
    const size_t next = BehindArguments(tokens, word);
    if (before.text == "goto")
        return Usage::Form::Label;
    if (before.Is('~') &&
        (tokens[word - 2].IsMark("::") || tokens[word - 2].text == "virtual" || !IsInFunction(tokens, word)))
        return Usage::Form::Type;
    if (before.text == "namespace" && tokens[word - 2].text == "using")
        return Usage::Form::Namespace;
    if (tokens[next].IsMark("::"))
        return Usage::Form::Scope;
    if (before.IsWord() && IsTagWord(before.text))
        return Usage::Form::Tag;
    if (tokens[next].Is('('))
        return Usage::Form::Call;
    if (BeginsDeclaration(tokens, word, next) || next != word + 1)
        return Usage::Form::Type;
    if (before.text == "new" || before.text == "typename" || (before.Is('<') && tokens[next].Is('>')))
        return Usage::Form::Type;
    return tokens[next].Is('{') && !before.Is(')') ? Usage::Form::Type : Usage::Form::Value;
}

// Whether a bracket is that of a message, "[receiver message]".
bool IsMessage(const Tokens& tokens, size_t open)
{
    if (open == kNone || !tokens[open].Is('['))
        return false;
    const Token& before = tokens[open - 1];
    const bool isIndex = (before.IsWord() && !IsStatementWord(before.text)) || before.Is(']');
    return !isIndex && !before.Is('@');
}

// The receiver is the first expression; the message's words are followed by ':' or are the last.
bool IsMessageWord(const Tokens& tokens, size_t word)
{
    const size_t open = tokens[word].parent;
    if (!IsMessage(tokens, open) || word == open + 1)
        return false;
    const Token& before = tokens[word - 1];
    const Token& after = tokens[word + 1];
    const bool followsExpression = before.IsWord() || before.Is(')') || before.Is(']') || before.Is('}') ||
                                   before.kind == Token::kLiteral || before.kind == Token::kNumber;
    if (!followsExpression || before.text == "return" || tokens[word - 2].Is('@'))
        return false;
    return after.Is(':') || after.Is(']');
}

int CallMisfit(const tagging::Symbol& symbol, const Usage& use)
{
    switch (symbol.kind) {
    case SymbolKind::Function:
    case SymbolKind::Prototype:
        return 0;
    case SymbolKind::Macro:
        return symbol.signature.empty() ? 3 : 0;
    case SymbolKind::Class:
    case SymbolKind::Struct:
    case SymbolKind::Typedef:
    case SymbolKind::Interface:
        return use.isNew ? 0 : 1;
    case SymbolKind::Union:
    case SymbolKind::Enum:
    case SymbolKind::UsingName:
        return 2;
    case SymbolKind::Variable:
    case SymbolKind::ExternVariable:
    case SymbolKind::Member:
    case SymbolKind::InstanceVariable:
        return 2;
    case SymbolKind::Property:
        return 3;
    default:
        return kUnfit;
    }
}

int TypeMisfit(const tagging::Symbol& symbol)
{
    switch (symbol.kind) {
    case SymbolKind::Class:
    case SymbolKind::Struct:
    case SymbolKind::Union:
    case SymbolKind::Enum:
    case SymbolKind::Typedef:
    case SymbolKind::Interface:
        return 0;
    case SymbolKind::Protocol:
    case SymbolKind::UsingName:
    case SymbolKind::Implementation:
        return 2;
    case SymbolKind::Macro:
        return symbol.signature.empty() ? 1 : kUnfit;
    default:
        return kUnfit;
    }
}

int ScopeMisfit(const tagging::Symbol& symbol)
{
    switch (symbol.kind) {
    case SymbolKind::Class:
    case SymbolKind::Struct:
    case SymbolKind::Union:
    case SymbolKind::Namespace:
    case SymbolKind::NamespaceAlias:
    case SymbolKind::Enum:
    case SymbolKind::Typedef:
        return 0;
    case SymbolKind::Macro:
    case SymbolKind::UsingName:
        return 2;
    default:
        return kUnfit;
    }
}

int ValueMisfit(const tagging::Symbol& symbol)
{
    switch (symbol.kind) {
    case SymbolKind::Class:
    case SymbolKind::Struct:
    case SymbolKind::Union:
    case SymbolKind::Enum:
        return 2;
    case SymbolKind::Typedef:
    case SymbolKind::Interface:
        return 1;
    case SymbolKind::Protocol:
    case SymbolKind::Implementation:
    case SymbolKind::Category:
    case SymbolKind::Namespace:
    case SymbolKind::NamespaceAlias:
        return 3;
    case SymbolKind::Macro:
        return symbol.signature.empty() ? 0 : 3;
    case SymbolKind::UsingName:
    case SymbolKind::InstanceMethod:
    case SymbolKind::ClassMethod:
    case SymbolKind::InstanceMethodDeclaration:
    case SymbolKind::ClassMethodDeclaration:
        return kUnfit;
    case SymbolKind::UsingNamespace:
        return kUnfit + 1;
    default:
        return 0;
    }
}

int TagMisfit(const tagging::Symbol& symbol)
{
    switch (symbol.kind) {
    case SymbolKind::Class:
    case SymbolKind::Struct:
    case SymbolKind::Union:
    case SymbolKind::Enum:
        return 0;
    case SymbolKind::Typedef:
    case SymbolKind::Macro:
        return 3;
    default:
        return kUnfit;
    }
}

} // namespace

Usage UsageAt(const Tokens& tokens, size_t word, bool isObjectiveC)
{
    Usage use;
    use.form = FormOf(tokens, word);
    const size_t next = BehindArguments(tokens, word);
    if (use.form == Usage::Form::Call)
        use.arguments = ArgumentsOf(tokens, next);
    const Token& before = tokens[word - 1];
    if (before.Is('.') || before.text == "->") {
        const Token& first = tokens[word - 2];
        const bool isDesignator = before.Is('.') && (first.Is('{') || first.Is(',')) && tokens[word].parent != kNone &&
                                  tokens[tokens[word].parent].Is('{');
        use.access = isDesignator ? Usage::Access::Designator : Usage::Access::Member;
    } else if (before.IsMark("::")) {
        use.access = Usage::Access::Scope;
    } else if (isObjectiveC && IsMessageWord(tokens, word)) {
        use.access = Usage::Access::Message;
    } else if (isObjectiveC && tokens[tokens[word].parent - 1].text == "selector" && tokens[word].parent != kNone) {
        use.access = Usage::Access::Selector;
    }
    size_t begin = word;
    while (tokens[begin - 1].IsMark("::") && tokens[begin - 2].IsWord())
        begin -= 2;
    use.isNew = tokens[begin - 1].text == "new";
    if (isObjectiveC && (use.form == Usage::Form::Value || use.form == Usage::Form::Type) &&
        word == tokens[word].parent + 1 && IsMessage(tokens, tokens[word].parent))
        use.form = Usage::Form::Receiver;
    if (tokens[tokens[word].parent - 1].text == "protocol" && tokens[tokens[word].parent].Is('('))
        use.form = Usage::Form::Protocol;
    if (before.text == "protocol" && tokens[word - 2].Is('@'))
        use.form = Usage::Form::Protocol;
    return use;
}

size_t ArgumentsBegin(const Tokens& tokens, size_t word)
{
    return BehindArguments(tokens, word);
}

int Misfit(const tagging::Symbol& symbol, const Usage& use)
{
    switch (use.form) {
    case Usage::Form::Call:
        return CallMisfit(symbol, use);
    case Usage::Form::Type:
    case Usage::Form::Receiver:
        return use.form == Usage::Form::Receiver && ValueMisfit(symbol) == 0 ? 0 : TypeMisfit(symbol);
    case Usage::Form::Tag:
        return TagMisfit(symbol);
    case Usage::Form::Scope:
        return ScopeMisfit(symbol);
    case Usage::Form::Namespace:
        return symbol.kind == SymbolKind::Namespace || symbol.kind == SymbolKind::NamespaceAlias ? 0 : kUnfit;
    case Usage::Form::Macro:
        return symbol.kind == SymbolKind::Macro ? 0 : kUnfit;
    case Usage::Form::Protocol:
        return symbol.kind == SymbolKind::Protocol ? 0 : kUnfit;
    case Usage::Form::Label:
        return symbol.kind == SymbolKind::Label ? 0 : kUnfit;
    case Usage::Form::Value:
        break;
    }
    return ValueMisfit(symbol);
}

} // namespace resolve
