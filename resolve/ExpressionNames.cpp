// The names in an expression, and the calls that follow them.
#include "resolve/ExpressionReader.h"
#include "resolve/LibraryTypes.h"
#include "resolve/TemplateDeduction.h"
#include "resolve/Usage.h"

#include <algorithm>
#include <optional>

namespace resolve {

namespace {

bool IsCast(std::string_view word)
{
    return word == "static_cast" || word == "dynamic_cast" || word == "const_cast" || word == "reinterpret_cast" ||
           word == "qobject_cast" || word == "dyn_cast" || word == "down_cast" || word == "implicit_cast";
}

} // namespace

Type Expressions::Reader::Word()
{
    const Token& token = tokens[place];
    if (token.text == "this" || token.text == "self") {
        const auto local = token.text == "self" ? FindLocal(tokens, place) : std::nullopt;
        if (!local) {
            Type type = owner.Self(place++);
            type.pointers = 1;
            type.isConstant = owner.IsInConstantMethod(place - 1);
            return type;
        }
    }
    if (token.text == "super") {
        Type type = owner.Self(place++);
        for (const Class& self : owner.classes.Find(type))
            for (const Class& base : owner.classes.Bases(self)) {
                Type super = ParseType(base.scope, "", base.symbol.file);
                super.pointers = 1;
                return super;
            }
        return {};
    }
    if (IsCast(token.text) && tokens[place + 1].Is('<'))
        return NamedCast();
    if (token.text == "sizeof" || token.text == "alignof") {
        place = end;
        return Type::Named("size_t", 0);
    }
    if (token.text == "true" || token.text == "false") {
        ++place;
        return Type::Named("bool", 0);
    }
    if (IsBuiltInType(token.text)) {
        const size_t begin = place;
        while (tokens[place].IsWord() && !IsAtEnd())
            ++place;
        const Type type = owner.TypeFromTokens({begin, place});
        SkipBracket();
        return type;
    }
    return Name();
}

Type Expressions::Reader::NamedCast()
{
    const size_t close = tokens.AngleEnd(place + 1);
    if (close == kNone)
        return {};
    Type type = owner.TypeFromTokens({place + 2, close});
    const bool isPointer = tokens[place].text == "dyn_cast" && type.pointers == 0;
    type.pointers += isPointer ? 1 : 0;
    place = close + 1;
    SkipBracket();
    return type;
}

// "a", "a::b", "a<T>::b", and the call that may follow.
Type Expressions::Reader::Name()
{
    const size_t begin = place;
    size_t last = place;
    std::vector<Type> arguments;
    bool hasArguments = false;
    if (tokens[place].IsMark("::"))
        ++place;
    for (;;) {
        last = place++;
        hasArguments = false;
        if (tokens[place].Is('<') && !IsAtEnd()) {
            const size_t close = tokens.AngleEnd(place);
            const Token& next = tokens[close == kNone ? 0 : close + 1];
            const bool isTemplate =
                close != kNone && close < end && (next.Is('(') || next.Is('{') || next.IsMark("::"));
            if (isTemplate) {
                arguments.clear();
                for (const Tokens::Range& part : tokens.Parts(place + 1, close))
                    arguments.push_back(Argument(part));
                place = close + 1;
                hasArguments = true;
            }
        }
        if (!tokens[place].IsMark("::") || !tokens[place + 1].IsWord() || IsAtEnd())
            break;
        ++place;
    }
    if (!hasArguments)
        arguments.clear();
    const bool isCall = tokens[place].Is('(') && !IsAtEnd();
    if (last == begin && !tokens[begin - 1].IsMark("::"))
        if (const auto local = FindLocal(tokens, last))
            return FromLocal(*local, isCall);
    const std::string_view qualifier = last > begin + 1 ? tokens.Text(begin, last - 2) : std::string_view();
    return FromMeaning(begin, last, qualifier, arguments, isCall);
}

// Of a template; a number has its digits as name.
Type Expressions::Reader::Argument(Tokens::Range part)
{
    if (part.end == part.begin + 1 && tokens[part.begin].kind == Token::kNumber)
        return Type::Named(tokens[part.begin].text, 0);
    return owner.TypeFromTokens(part);
}

Type Expressions::Reader::FromLocal(const LocalName& local, bool isCall)
{
    if (local.kind == SymbolKind::Typedef || local.kind == SymbolKind::TemplateParameter) {
        Type type = local.kind == SymbolKind::Typedef ? owner.TypeFromTokens(local.type)
                                                      : Type::Named(tokens[local.name].text, owner.world.TextFile());
        SkipBracket();
        return type;
    }
    // "auto next = next->link": the name in its own initialiser is an outer one, but there is no use in looking.
    Type type = owner.TypeOfLocal(local, depth + 1);
    if (isCall)
        type = Called(type);
    return type;
}

// The result of calling a variable.
Type Expressions::Reader::Called(Type type)
{
    SkipBracket();
    const Type canonical = owner.classes.Canonical(type);
    if (canonical.isFunction) {
        Type result = canonical;
        result.isFunction = false;
        return result;
    }
    if (canonical.Leaf() == "function" && !canonical.arguments.empty()) {
        Type result = canonical.arguments.front(); // "std::function<Shape(int)>"
        result.isFunction = false;
        return result;
    }
    return owner.TypeOfMember(canonical, "operator ()", std::nullopt);
}

std::vector<Type> Expressions::Reader::Passed(size_t open)
{
    std::vector<Type> passed;
    const size_t close = tokens[open].match;
    if (close == kNone)
        return passed;
    for (const Tokens::Range& part : tokens.Parts(open + 1, close))
        passed.push_back(passed.size() < 2 ? Sub(part.begin, part.end) : Type{});
    return passed;
}

Type Expressions::Reader::FromMeaning(size_t begin, size_t last, std::string_view qualifier,
                                      const std::vector<Type>& arguments, bool isCall)
{
    const std::string_view name = tokens[last].text;
    const Usage usage = UsageAt(tokens, last, owner.world.Text().IsObjectiveC());
    const bool isLibrary = qualifier == "std" || qualifier == "::std" || !arguments.empty() || name == "move";
    if (isCall && isLibrary)
        if (const auto type = LibraryCall(name, arguments, Passed(place))) {
            SkipBracket();
            return *type;
        }
    Type written = owner.TypeFromTokens({begin, place});
    if (isCall && IsLibraryType(owner.classes.Canonical(written)) && qualifier.starts_with("std")) {
        SkipBracket();
        return written;
    }
    const unsigned line = tokens[last].line;
    const MeaningList meanings = qualifier.empty() ? owner.names.Unqualified(name, line, usage)
                                                   : owner.names.Qualified(qualifier, name, line, usage);
    if (meanings.empty() || Misfit(meanings.front().symbol, usage) >= kUnfit) {
        if (tokens[place].Is('{') || isCall)
            SkipBracket();
        return isCall ? Type{} : written;
    }
    return FromSymbol(meanings.front(), written, arguments, isCall);
}

Type Expressions::Reader::FromSymbol(const Meaning& meaning, const Type& written, const std::vector<Type>& arguments,
                                     bool isCall)
{
    const Symbol& symbol = meaning.symbol;
    if (IsTypeKind(symbol.kind)) {
        if (isCall || tokens[place].Is('{'))
            SkipBracket();
        return written;
    }
    if (symbol.kind == SymbolKind::Macro)
        return FromMacro(isCall);
    const bool isConstructor = IsCallable(symbol.kind) && symbol.name == LeafOf(symbol.scope);
    if (isConstructor) {
        SkipBracket();
        return written;
    }
    Type type = BoundType(symbol, meaning.bindings);
    if (symbol.kind == SymbolKind::Enumerator)
        return ParseType(symbol.scope, "", symbol.file);
    if (IsCallable(symbol.kind)) {
        if (!symbol.templateParameters.empty())
            type = Substituted(type, DeducedFor(symbol, arguments, isCall ? Passed(place) : std::vector<Type>()));
        if (isCall)
            SkipBracket();
        else
            type.isFunction = true;
        return type;
    }
    return isCall ? Called(type) : type;
}

// "container_of(p, struct shape, list)" yields what its argument names; "READ_ONCE(p)" what its argument has.
Type Expressions::Reader::FromMacro(bool isCall)
{
    if (!isCall)
        return {};
    const size_t open = place;
    SkipBracket();
    const size_t close = tokens[open].match;
    if (close == kNone)
        return {};
    const auto parts = tokens.Parts(open + 1, close);
    for (const Tokens::Range& part : parts) {
        const std::string_view word = tokens[part.begin].text;
        if (word != "struct" && word != "union")
            continue;
        Type type = owner.TypeFromTokens(part);
        type.pointers += type.pointers == 0 ? 1 : 0;
        return type;
    }
    if (parts.size() == 3 && owner.IsTypeName(tokens[parts[1].begin].text)) {
        Type type = owner.TypeFromTokens(parts[1]);
        type.pointers += type.pointers == 0 ? 1 : 0;
        return type;
    }
    return parts.empty() ? Type{} : Sub(parts.front().begin, parts.front().end);
}

} // namespace resolve
