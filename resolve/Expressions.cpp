#include "resolve/Expressions.h"

#include "resolve/Blocks.h"
#include "resolve/LibraryTypes.h"
#include "resolve/Usage.h"

#include <algorithm>

namespace resolve {

namespace {

constexpr int kDeepest = 12;

bool IsCast(std::string_view word)
{
    return word == "static_cast" || word == "dynamic_cast" || word == "const_cast" || word == "reinterpret_cast" ||
           word == "qobject_cast" || word == "dyn_cast" || word == "down_cast" || word == "implicit_cast";
}

bool IsPrimaryBegin(const Token& token)
{
    return token.IsWord() || token.Is('(') || token.Is('[') || token.IsMark("::") || token.kind == Token::kLiteral ||
           token.kind == Token::kNumber || token.Is('@');
}

Type Named(std::string_view name, FileNumber file)
{
    Type type;
    type.name = name;
    type.file = file;
    return type;
}

// Binary operators that end the first operand; its type is a fair guess for the whole.
bool IsBinary(const Token& token)
{
    return token.kind == Token::kMark && token.text.size() == 1 &&
           std::string_view("+-*/%&|^<>").find(token.text[0]) != std::string_view::npos;
}

// Binds "T" where a parameter is a "const Box<T>&" and what is passed a "Box<Shape>".
void Deduce(const Type& parameter, const Type& passed, const std::vector<std::string>& names, Bindings* bindings)
{
    if (!parameter.IsKnown() || !passed.IsKnown())
        return;
    if (std::find(names.begin(), names.end(), parameter.name) != names.end()) {
        Type bound = passed;
        bound.pointers = std::max(0, bound.pointers - parameter.pointers);
        bindings->emplace_back(parameter.name, bound);
        return;
    }
    for (size_t i = 0; i < parameter.arguments.size() && i < passed.arguments.size(); ++i)
        Deduce(parameter.arguments[i], passed.arguments[i], names, bindings);
}

// What the parameters of a function's template stand for: the written arguments, or what the passed values say.
Bindings DeducedFor(const Symbol& function, const std::vector<Type>& written, const std::vector<Type>& passed)
{
    Bindings bindings;
    const std::vector<std::string> names = TemplateParameterNames(function.templateParameters);
    for (size_t i = 0; i < names.size() && i < written.size(); ++i)
        bindings.emplace_back(names[i], written[i]);
    if (passed.empty())
        return bindings;
    const std::vector<Type> parameters = ParameterTypes(function.signature);
    for (size_t i = 0; i < parameters.size() && i < passed.size(); ++i)
        Deduce(parameters[i], passed[i], names, &bindings);
    return bindings;
}

} // namespace

// Reads one expression.
class Expressions::Reader {
public:
    Reader(Expressions& owner, size_t begin, size_t end, int depth)
        : owner(owner), tokens(owner.tokens), place(begin), end(end), depth(depth)
    {
    }

    Type Read()
    {
        if (depth > kDeepest || !owner.world.Goes())
            return {};
        return Operators(Unary());
    }

private:
    Type Sub(size_t from, size_t to) { return Reader(owner, from, to, depth + 1).Read(); }

    bool IsAtEnd() const { return place >= end; }

    // "c ? a : b" has the type of a or b; "a = b" that of a; "a == b" is a bool.
    Type Operators(Type first)
    {
        if (IsAtEnd())
            return first;
        for (size_t i = place; i < end; ++i) {
            const Token& token = tokens[i];
            if (token.Is('?')) {
                const Type chosen = Sub(i + 1, end);
                return chosen.IsKnown() ? chosen : AfterColon(i);
            }
            if (token.match != kNone && token.match > i)
                i = token.match;
        }
        const Token& token = tokens[place];
        if (token.Is('=') && !tokens.IsAssignment(place))
            return Named("bool", 0);
        if (token.Is('<') && tokens[place + 1].Is('<'))
            return first;
        if ((token.Is('&') && tokens[place + 1].Is('&')) || (token.Is('|') && tokens[place + 1].Is('|')))
            return Named("bool", 0);
        if (IsBinary(token) && !first.IsKnown())
            return Sub(place + 1, end);
        return first;
    }

    Type AfterColon(size_t question)
    {
        for (size_t i = question; i < end; ++i) {
            if (tokens[i].Is(':'))
                return Sub(i + 1, end);
            if (tokens[i].match != kNone && tokens[i].match > i)
                i = tokens[i].match;
        }
        return {};
    }

    Type Unary()
    {
        const Token& token = tokens[place];
        if (IsAtEnd())
            return {};
        if (token.Is('*')) {
            ++place;
            return Dereferenced(Unary());
        }
        if (token.Is('&')) {
            ++place;
            Type type = Unary();
            if (type.IsKnown())
                ++type.pointers;
            type.isFunction = false;
            return type;
        }
        if (token.Is('!')) {
            ++place;
            Unary();
            return Named("bool", 0);
        }
        if (token.Is('-') || token.Is('+') || token.Is('~') || token.text == "co_await" || token.text == "return") {
            ++place;
            return Unary();
        }
        if (token.text == "new")
            return New();
        if (token.Is('(') && IsCastAt(place)) {
            const Type type = owner.TypeFromTokens({place + 1, token.match});
            place = token.match + 1;
            if (tokens[place].Is('{'))
                place = tokens[place].match == kNone ? end : tokens[place].match + 1;
            else
                Unary();
            return type.pointers == 0 && !type.IsKnown() ? type : Postfix(type);
        }
        return Postfix(Primary());
    }

    // "(T*)p", "(struct point){1, 2}".
    bool IsCastAt(size_t open) const
    {
        const size_t close = tokens[open].match;
        if (close == kNone || close + 1 >= end || tokens[open + 1].Is('{'))
            return false;
        const Token& next = tokens[close + 1];
        const bool isFollowed = IsPrimaryBegin(next) || next.Is('{') || next.Is('&') || next.Is('*') || next.Is('^');
        if (!isFollowed || next.Is('['))
            return next.Is('[') && LooksLikeType(open, close) && tokens[close - 1].Is('*');
        if (next.Is('*') || next.Is('&') || next.Is('('))
            return LooksLikeType(open, close) &&
                   (tokens[close - 1].Is('*') || !tokens[open + 2].Is(')') || owner.IsTypeName(tokens[open + 1].text));
        return LooksLikeType(open, close);
    }

    bool LooksLikeType(size_t open, size_t close) const
    {
        bool hasName = false;
        for (size_t i = open + 1; i < close; ++i) {
            const Token& token = tokens[i];
            if (token.Is('<') && tokens.AngleEnd(i) < close)
                i = tokens.AngleEnd(i);
            else if (token.IsWord())
                hasName = true;
            else if (token.Is('(') && tokens[i + 1].Is('*'))
                return hasName;
            else if (!token.Is('*') && !token.Is('&') && !token.IsMark("::") && !token.Is('^'))
                return false;
        }
        return hasName;
    }

    Type Dereferenced(Type type)
    {
        const Type canonical = owner.classes.Canonical(type);
        if (const auto pointee = Pointee(canonical))
            return *pointee;
        const Type result = owner.TypeOfMember(canonical, "operator *", 0);
        return result.IsKnown() ? result : type;
    }

    Type New()
    {
        ++place;
        if (tokens[place].Is('('))
            place = tokens[place].match == kNone ? end : tokens[place].match + 1;
        const size_t begin = place;
        while (!IsAtEnd() && (tokens[place].IsWord() || tokens[place].IsMark("::") || tokens[place].Is('<'))) {
            const size_t close = tokens[place].Is('<') ? tokens.AngleEnd(place) : place;
            place = close == kNone ? end : close + 1;
        }
        Type type = owner.TypeFromTokens({begin, place});
        if (type.IsKnown())
            ++type.pointers;
        place = end;
        return type;
    }

    Type Primary()
    {
        const Token& token = tokens[place];
        if (token.kind == Token::kLiteral) {
            ++place;
            while (!IsAtEnd() && tokens[place].kind == Token::kLiteral)
                ++place;
            Type type = Named("char", 0);
            type.pointers = token.text.starts_with("'") ? 0 : 1;
            type.isConstant = type.pointers > 0;
            return type;
        }
        if (token.kind == Token::kNumber)
            return Number();
        if (token.Is('@'))
            return ObjectLiteral();
        if (token.Is('('))
            return Parenthesized();
        if (token.Is('['))
            return Bracket();
        if (token.IsMark("::"))
            return Name();
        return token.IsWord() ? Word() : Type{};
    }

    // "1", "1.5", "1.5f", "10UL".
    Type Number()
    {
        const std::string_view text = tokens[place++].text;
        const bool isHex = text.starts_with("0x") || text.starts_with("0X");
        const bool isReal = !isHex && text.find_first_of(".eE") != std::string_view::npos;
        if (isReal)
            return Named(text.ends_with('f') || text.ends_with('F') ? "float" : "double", 0);
        return Named(text.find_first_of("lL") != std::string_view::npos ? "long"
                     : text.ends_with('u') || text.ends_with('U')       ? "unsigned"
                                                                        : "int",
                     0);
    }

    Type ObjectLiteral()
    {
        const Token& token = tokens[++place];
        const size_t next = token.match != kNone && token.match > place ? token.match + 1 : place + 1;
        const bool isArray = token.Is('[');
        const bool isDictionary = token.Is('{');
        const bool isString = token.kind == Token::kLiteral;
        const bool isSelector = token.text == "selector";
        place = next;
        if (tokens[place].Is('(') && tokens[place].match != kNone)
            place = tokens[place].match + 1;
        Type type = Named(isArray ? "NSArray" : isDictionary ? "NSDictionary" : isString ? "NSString" : "NSNumber", 0);
        if (isSelector)
            return Named("SEL", 0);
        type.pointers = 1;
        return type;
    }

    Type Parenthesized()
    {
        const size_t open = place;
        const size_t close = tokens[open].match;
        if (close == kNone)
            return {};
        place = close + 1;
        if (tokens[open + 1].Is('{') && tokens[open + 1].match != kNone)
            return LastStatement(open + 1);
        return Sub(open + 1, close);
    }

    // "({ ...; value; })"
    Type LastStatement(size_t brace)
    {
        const size_t close = tokens[brace].match;
        size_t begin = brace + 1;
        for (size_t i = brace + 1; i + 1 < close; ++i) {
            if (tokens[i].Is(';'))
                begin = i + 1;
            if (tokens[i].match != kNone && tokens[i].match > i)
                i = tokens[i].match;
        }
        return Sub(begin, tokens[close - 1].Is(';') ? close - 1 : close);
    }

    // A message or a lambda.
    Type Bracket()
    {
        const size_t open = place;
        const size_t close = tokens[open].match;
        if (close == kNone)
            return {};
        place = close + 1;
        if (!owner.world.Text().IsObjectiveC() || close == open + 1 || tokens[place].Is('(') || tokens[place].Is('{')) {
            return Lambda();
        }
        // A word of the selector: the last one, or any that a colon follows.
        size_t word = tokens[close - 1].IsWord() ? close - 1 : kNone;
        for (size_t i = open + 1; i < close; ++i) {
            if (tokens[i].Is(':') && tokens[i - 1].IsWord()) {
                word = i - 1;
                break;
            }
            if (tokens[i].match != kNone && tokens[i].match > i)
                i = tokens[i].match;
        }
        if (word == kNone || word == open + 1)
            return {};
        return owner.TypeOfMessage(owner.Receiver(word, depth + 1), owner.SelectorAt(word));
    }

    // "(int n) -> Shape {", or what its body returns.
    Type Lambda()
    {
        Type result;
        while (!IsAtEnd() && !tokens[place].Is('{')) {
            if (tokens[place].match != kNone && tokens[place].match > place) {
                place = tokens[place].match + 1;
            } else if (tokens[place++].text == "->") {
                const size_t begin = place;
                while (!IsAtEnd() && !tokens[place].Is('{'))
                    ++place;
                result = owner.TypeFromTokens({begin, place});
            }
        }
        const size_t open = place;
        const size_t close = IsAtEnd() ? kNone : tokens[open].match;
        place = close == kNone ? end : close + 1;
        for (size_t i = open; !result.IsKnown() && close != kNone && i < close; ++i)
            if (tokens[i].text == "return")
                result = Sub(i + 1, EndOfStatement(i, close));
        result.isFunction = result.IsKnown();
        return result;
    }

    Type Word()
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
            return Named("size_t", 0);
        }
        if (token.text == "true" || token.text == "false") {
            ++place;
            return Named("bool", 0);
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

    size_t EndOfStatement(size_t from, size_t limit) const
    {
        while (from < limit && !tokens[from].Is(';'))
            from = tokens[from].match != kNone && tokens[from].match > from ? tokens[from].match + 1 : from + 1;
        return std::min(from, limit);
    }

    Type NamedCast()
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

    void SkipBracket()
    {
        if (tokens[place].match != kNone && tokens[place].match > place && !IsAtEnd())
            place = tokens[place].match + 1;
    }

    // "a", "a::b", "a<T>::b", and the call that may follow.
    Type Name()
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
    Type Argument(Tokens::Range part)
    {
        if (part.end == part.begin + 1 && tokens[part.begin].kind == Token::kNumber)
            return Named(tokens[part.begin].text, 0);
        return owner.TypeFromTokens(part);
    }

    Type FromLocal(const LocalName& local, bool isCall)
    {
        if (local.kind == SymbolKind::Typedef || local.kind == SymbolKind::TemplateParameter) {
            Type type = local.kind == SymbolKind::Typedef ? owner.TypeFromTokens(local.type)
                                                          : Named(tokens[local.name].text, owner.world.TextFile());
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
    Type Called(Type type)
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

    std::vector<Type> Passed(size_t open)
    {
        std::vector<Type> passed;
        const size_t close = tokens[open].match;
        if (close == kNone)
            return passed;
        for (const Tokens::Range& part : tokens.Parts(open + 1, close))
            passed.push_back(passed.size() < 2 ? Sub(part.begin, part.end) : Type{});
        return passed;
    }

    Type FromMeaning(size_t begin, size_t last, std::string_view qualifier, const std::vector<Type>& arguments,
                     bool isCall)
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

    Type FromSymbol(const Meaning& meaning, const Type& written, const std::vector<Type>& arguments, bool isCall)
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
    Type FromMacro(bool isCall)
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

    Type Postfix(Type type)
    {
        while (!IsAtEnd()) {
            const Token& token = tokens[place];
            const bool isUnclosed = (token.Is('(') || token.Is('[')) && (token.match == kNone || token.match < place);
            if (isUnclosed) {
                place = end;
            } else if (token.Is('.') || token.text == "->") {
                type = Member(type, token.text == "->");
            } else if (token.Is('[')) {
                SkipBracket();
                type = IndexedOf(type);
            } else if (token.Is('(')) {
                type = Called(type);
            } else if ((token.Is('+') || token.Is('-')) && tokens[place + 1].text == token.text &&
                       tokens.Touch(place, place + 1) && (place + 2 >= end || !IsPrimaryBegin(tokens[place + 2]))) {
                place += 2;
            } else {
                return type;
            }
        }
        return type;
    }

    Type IndexedOf(const Type& type)
    {
        const Type canonical = owner.classes.Canonical(type);
        if (const auto element = Indexed(canonical))
            return *element;
        return owner.TypeOfMember(canonical, "operator []", 1);
    }

    Type Member(const Type& type, bool isArrow)
    {
        ++place;
        if (tokens[place].text == "template")
            ++place;
        const size_t word = place;
        if (!tokens[word].IsWord()) {
            place = end;
            return {};
        }
        ++place;
        std::vector<Type> written;
        if (tokens[place].Is('<')) {
            const size_t close = tokens.AngleEnd(place);
            if (close != kNone && close < end && tokens[close + 1].Is('(')) {
                for (const Tokens::Range& part : tokens.Parts(place + 1, close))
                    written.push_back(Argument(part));
                place = close + 1;
            }
        }
        if (tokens[place].IsMark("::") && tokens[place + 1].IsWord())
            place += 2; // "x->Base::f()"
        const bool isCall = tokens[place].Is('(') && !IsAtEnd();
        std::optional<size_t> arguments;
        if (isCall)
            arguments = tokens[place].match == kNone ? 0 : tokens.Parts(place + 1, tokens[place].match).size();
        const Type of = isArrow ? owner.BehindArrow(type) : type;
        const Type member = owner.TypeOfMember(
            of, tokens[place - 1].IsWord() ? tokens[place - 1].text : tokens[word].text, arguments, written);
        if (isCall)
            SkipBracket();
        return member;
    }

    Expressions& owner;
    const Tokens& tokens;
    size_t place;
    const size_t end;
    const int depth;
};

bool Expressions::IsTypeName(std::string_view name)
{
    if (IsBuiltInType(name))
        return true;
    bool isType = false;
    for (const Symbol& symbol : world.Named(name)) {
        if (IsTypeKind(symbol.kind))
            isType = true;
        else if (symbol.file == world.TextFile())
            return false;
    }
    return isType;
}

Type Expressions::TypeOf(size_t begin, size_t end, int depth)
{
    return Reader(*this, begin, end, depth).Read();
}

Type Expressions::TypeFromTokens(Tokens::Range range)
{
    if (range.IsEmpty())
        return {};
    const unsigned line = tokens[range.begin].line;
    return ParseType(tokens.Text(range.begin, range.end - 1), names.ScopesAt(line).front(), world.TextFile());
}

Type Expressions::TypeOfLocal(const LocalName& local, int depth)
{
    const std::string_view first = local.type.IsEmpty() ? "auto" : tokens[local.type.begin].text;
    std::string_view word = first;
    for (size_t i = local.type.begin; i < local.type.end && IsSpecifier(word); ++i)
        word = tokens[i].text;
    const bool isDeduced = word == "auto" || word == "__auto_type" || word == "__typeof" || first == "__typeof";
    if (word == "decltype" || word == "typeof" || word == "__typeof__" || word == "__typeof") {
        for (size_t i = local.type.begin; i < local.type.end; ++i)
            if (tokens[i].Is('(') && tokens[i].match != kNone) {
                Type type = TypeOf(i + 1, tokens[i].match, depth + 1);
                if (!type.IsKnown())
                    type = TypeFromTokens({i + 1, tokens[i].match});
                type.pointers += local.pointers;
                return type;
            }
    }
    if (!isDeduced) {
        Type type = TypeFromTokens(local.type);
        type.pointers += local.pointers;
        type.isFunction |= local.isFunction;
        return type;
    }
    if (local.initializer.IsEmpty())
        return {};
    Type type = TypeOf(local.initializer.begin, local.initializer.end, depth + 1);
    if (local.isRange) {
        const Type range = classes.Canonical(type);
        if (const auto element = Element(range))
            type = *element;
        else if (const auto begin = TypeOfMember(range, "begin", 0); begin.IsKnown())
            type = BehindArrow(begin);
        else
            type = {};
    }
    if (local.part != kNone) {
        const auto part = Part(classes.Canonical(type), local.part);
        return part ? *part : Type{};
    }
    return type;
}

Type Expressions::BehindArrow(const Type& type)
{
    Type canonical = classes.Canonical(type);
    for (int i = 0; i < 4; ++i) {
        if (const auto pointee = Pointee(canonical))
            return *pointee;
        const Type next = TypeOfMember(canonical, "operator ->", 0);
        if (!next.IsKnown())
            return canonical;
        canonical = classes.Canonical(next);
    }
    return canonical;
}

Type Expressions::TypeOfMember(const Type& of, std::string_view name, std::optional<size_t> arguments,
                               const std::vector<Type>& written)
{
    const Type canonical = classes.Canonical(of);
    if (!canonical.IsKnown())
        return {};
    if (const auto known = LibraryMember(canonical, name))
        return *known;
    Usage usage;
    usage.form = arguments ? Usage::Form::Call : Usage::Form::Value;
    usage.arguments = arguments;
    usage.isConstant = canonical.isConstant;
    const MeaningList found = names.Members(classes.Find(canonical), name, usage, "");
    if (found.empty())
        return {};
    const Symbol& symbol = found.front().symbol;
    Type type = BoundType(symbol, found.front().bindings);
    if (!written.empty())
        type = Substituted(type, DeducedFor(symbol, written, {}));
    if (arguments && !IsCallable(symbol.kind) && !IsMethod(symbol.kind)) {
        Type called = classes.Canonical(type);
        if (called.isFunction)
            called.isFunction = false;
        else if (name != "operator ()")
            called = TypeOfMember(called, "operator ()", arguments);
        return called;
    }
    return type;
}

Type Expressions::TypeOfMessage(const Type& receiver, const std::string& selector)
{
    const std::string_view first = selector;
    if (receiver.IsKnown() &&
        (first == "alloc" || first == "init" || first.starts_with("initWith") || first == "self" || first == "retain" ||
         first == "autorelease" || first == "new" || first == "copy" || first == "mutableCopy" ||
         first == "sharedInstance" || first == "allocWithZone:" || first == "copyWithZone:")) {
        Type instance = receiver;
        if (first != "copy" && first != "mutableCopy")
            instance.pointers = 1;
        return instance;
    }
    Usage usage;
    MeaningList found = names.Members(classes.Find(receiver), selector, usage, "");
    if (found.empty())
        found = names.AnyMember(selector, usage);
    if (found.empty())
        return {};
    const Symbol& symbol = found.front().symbol;
    Type type = ParseType(symbol.type, symbol.scope, symbol.file);
    if ((type.name == "instancetype" || (type.name == "id" && type.arguments.empty())) && receiver.IsKnown() &&
        symbol.kind != SymbolKind::InstanceMethod && symbol.kind != SymbolKind::InstanceMethodDeclaration) {
        type = receiver;
        type.pointers = 1;
    } else if (type.name == "instancetype") {
        type = receiver;
    }
    return type;
}

Type Expressions::Receiver(size_t word, int depth)
{
    const size_t open = tokens[word].parent;
    if (open == kNone)
        return {};
    // The receiver ends before the first word of the selector.
    size_t end = word;
    for (size_t i = open + 1; i < word; ++i) {
        if (tokens[i].Is(':') && tokens[i - 1].IsWord() && i - 1 > open + 1) {
            end = i - 1;
            break;
        }
        if (tokens[i].Is('?'))
            break;
        if (tokens[i].match != kNone && tokens[i].match > i)
            i = tokens[i].match;
    }
    return TypeOf(open + 1, end, depth + 1);
}

std::string Expressions::SelectorAt(size_t word) const
{
    const size_t open = tokens[word].parent;
    const size_t close = open == kNone || tokens[open].match == kNone ? tokens.Count() : tokens[open].match;
    std::string selector;
    int conditions = 0;
    for (size_t i = open == kNone ? 0 : open + 1; i < close; ++i) {
        if (tokens[i].Is('?')) {
            ++conditions;
        } else if (tokens[i].Is(':')) {
            if (conditions > 0) {
                --conditions;
                continue;
            }
            if (tokens[i - 1].IsWord() && (i - 1 > open + 1 || tokens[open - 1].text == "selector"))
                selector += tokens[i - 1].text;
            selector += ':';
        }
        if (tokens[i].match != kNone && tokens[i].match > i)
            i = tokens[i].match;
    }
    return selector.empty() ? std::string(tokens[word].text) : selector;
}

std::vector<Type> Expressions::Passed(size_t open)
{
    constexpr size_t kMost = 6;
    std::vector<Type> passed;
    const size_t close = tokens[open].match;
    if (close == kNone)
        return passed;
    for (const Tokens::Range& part : tokens.Parts(open + 1, close)) {
        Type type = passed.size() < kMost ? TypeOf(part.begin, part.end, 1) : Type();
        passed.push_back(type.IsKnown() && !IsBuiltInType(type.name) ? classes.Canonical(type) : type);
    }
    return passed;
}

bool Expressions::IsInConstantMethod(size_t place)
{
    const Symbol* const function = names.FunctionAt(tokens[place].line);
    return function != nullptr && IsConstantMethod(function->signature);
}

Type Expressions::Self(size_t place)
{
    const std::vector<std::string> scopes = names.ScopesAt(tokens[place].line);
    Type type;
    type.name = scopes.front();
    type.file = world.TextFile();
    return type;
}

Type Expressions::Initialized(size_t brace, int depth)
{
    if (depth > kDeepest || brace == kNone)
        return {};
    size_t before = brace - 1;
    if (tokens[before].Is('=') && tokens[before - 1].IsWord() && tokens[before - 2].Is('.')) {
        const Type outer = Initialized(tokens[brace].parent, depth + 1);
        return TypeOfMember(outer, tokens[before - 1].text, std::nullopt);
    }
    if (tokens[before].Is('{') || tokens[before].Is(',')) {
        Type outer = Initialized(tokens[brace].parent, depth + 1); // an element of an array
        outer.pointers = std::max(0, outer.pointers - 1);
        return outer;
    }
    if (tokens[before].Is('=') && tokens[before - 1].Is(']') &&
        tokens[tokens[before - 1].match - 1].kind == Token::kMark) {
        Type outer = Initialized(tokens[brace].parent, depth + 1); // "[3] = {"
        outer.pointers = std::max(0, outer.pointers - 1);
        return outer;
    }
    if (tokens[before].Is(')'))
        return TypeFromTokens({tokens[before].match + 1, before});
    // "struct ops table[] = {", "T x{", "T{"
    const size_t head = HeadOfBlock(tokens, brace);
    const auto declared = ReadStatement(tokens, {head, brace});
    size_t end = before;
    if (!declared.empty()) {
        Type type = TypeFromTokens(declared.back().type);
        type.pointers += declared.back().pointers;
        return type;
    }
    if (tokens[before].Is('='))
        return TypeOf(head, before, depth + 1);
    return TypeFromTokens({head, end + 1});
}

size_t Expressions::BeginOfOperand(size_t end) const
{
    size_t i = end;
    for (int steps = 0; i > 0 && steps < 500; ++steps) {
        size_t last = i - 1;
        const Token& token = tokens[last];
        if (token.match != kNone && token.match < last && !token.Is('}')) {
            i = token.match;
            const Token& before = tokens[i - 1];
            const bool goesOn = (before.IsWord() && !IsStatementWord(before.text)) || before.Is(')') ||
                                before.Is(']') || before.Is('>') || before.Is('}');
            if (token.Is(']') && !goesOn)
                return i; // a message
            if (!goesOn || i == 0)
                return tokens[i - 1].Is('@') ? i - 1 : i;
            if (before.Is('>')) {
                const size_t open = tokens.AngleBegin(i - 1);
                if (open == kNone)
                    return i;
                i = open;
            }
            if (before.Is(')') && token.Is(')') && tokens[before.match - 1].IsMark("=")) // "(a)(b)"
                return i;
            continue;
        }
        if (token.Is('}') && token.match != kNone) {
            i = token.match;
            if (tokens[i - 1].Is('@'))
                return i - 1;
            continue;
        }
        if (token.Is('>')) {
            const size_t open = tokens.AngleBegin(last);
            if (open == kNone)
                return i;
            i = open;
            continue;
        }
        if (!token.IsWord() && token.kind != Token::kLiteral && token.kind != Token::kNumber)
            return i;
        if (token.IsWord() && IsStatementWord(token.text))
            return i;
        i = last;
        while (tokens[i - 1].kind == Token::kLiteral && token.kind == Token::kLiteral)
            --i;
        if (tokens[i - 1].Is('@'))
            return i - 1;
        const Token& before = tokens[i - 1];
        if (!before.Is('.') && before.text != "->" && !before.IsMark("::"))
            return i;
        if (i < 2)
            return i;
        const Token& further = tokens[i - 2];
        const bool isOperand = further.IsWord() || further.Is(')') || further.Is(']') || further.Is('>') ||
                               further.Is('}') || further.kind == Token::kLiteral;
        if (!isOperand || (further.IsWord() && IsStatementWord(further.text)))
            return before.IsMark("::") ? i - 1 : i;
        i -= 1;
    }
    return i;
}

} // namespace resolve
