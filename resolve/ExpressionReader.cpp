#include "resolve/ExpressionReader.h"

#include "resolve/LibraryTypes.h"
#include "resolve/Messages.h"

#include <string_view>

namespace resolve {

namespace {

bool IsPrimaryBegin(const Token& token)
{
    return token.IsWord() || token.Is('(') || token.Is('[') || token.IsMark("::") || token.kind == Token::kLiteral ||
           token.kind == Token::kNumber || token.Is('@');
}

// Binary operators that end the first operand; its type is a fair guess for the whole.
bool IsBinary(const Token& token)
{
    return token.kind == Token::kMark && token.text.size() == 1 &&
           std::string_view("+-*/%&|^<>").find(token.text[0]) != std::string_view::npos;
}

} // namespace

Type Expressions::TypeOf(size_t begin, size_t end, int depth)
{
    return Reader(*this, begin, end, depth).Read();
}

Type Expressions::Reader::Read()
{
    if (depth > kDeepest || !owner.world.Goes())
        return {};
    return Operators(Unary());
}

// "c ? a : b" has the type of a or b; "a = b" that of a; "a == b" is a bool.
Type Expressions::Reader::Operators(Type first)
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
        return Type::Named("bool", 0);
    if (token.Is('<') && tokens[place + 1].Is('<'))
        return first;
    if ((token.Is('&') && tokens[place + 1].Is('&')) || (token.Is('|') && tokens[place + 1].Is('|')))
        return Type::Named("bool", 0);
    if (IsBinary(token) && !first.IsKnown())
        return Sub(place + 1, end);
    return first;
}

Type Expressions::Reader::AfterColon(size_t question)
{
    for (size_t i = question; i < end; ++i) {
        if (tokens[i].Is(':'))
            return Sub(i + 1, end);
        if (tokens[i].match != kNone && tokens[i].match > i)
            i = tokens[i].match;
    }
    return {};
}

Type Expressions::Reader::Unary()
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
        return Type::Named("bool", 0);
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
bool Expressions::Reader::IsCastAt(size_t open) const
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

bool Expressions::Reader::LooksLikeType(size_t open, size_t close) const
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

Type Expressions::Reader::Dereferenced(Type type)
{
    const Type canonical = owner.classes.Canonical(type);
    if (const auto pointee = Pointee(canonical))
        return *pointee;
    const Type result = owner.TypeOfMember(canonical, "operator *", 0);
    return result.IsKnown() ? result : type;
}

Type Expressions::Reader::New()
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

Type Expressions::Reader::Primary()
{
    const Token& token = tokens[place];
    if (token.kind == Token::kLiteral) {
        ++place;
        while (!IsAtEnd() && tokens[place].kind == Token::kLiteral)
            ++place;
        Type type = Type::Named("char", 0);
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
Type Expressions::Reader::Number()
{
    const std::string_view text = tokens[place++].text;
    const bool isHex = text.starts_with("0x") || text.starts_with("0X");
    const bool isReal = !isHex && text.find_first_of(".eE") != std::string_view::npos;
    if (isReal)
        return Type::Named(text.ends_with('f') || text.ends_with('F') ? "float" : "double", 0);
    return Type::Named(text.find_first_of("lL") != std::string_view::npos ? "long"
                       : text.ends_with('u') || text.ends_with('U')       ? "unsigned"
                                                                          : "int",
                       0);
}

Type Expressions::Reader::ObjectLiteral()
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
    Type type = Type::Named(isArray        ? "NSArray"
                            : isDictionary ? "NSDictionary"
                            : isString     ? "NSString"
                                           : "NSNumber",
                            0);
    if (isSelector)
        return Type::Named("SEL", 0);
    type.pointers = 1;
    return type;
}

Type Expressions::Reader::Parenthesized()
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
Type Expressions::Reader::LastStatement(size_t brace)
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
Type Expressions::Reader::Bracket()
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
    return owner.TypeOfMessage(owner.Receiver(word, depth + 1), SelectorAt(tokens, word));
}

// "(int n) -> Shape {", or what its body returns.
Type Expressions::Reader::Lambda()
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

size_t Expressions::Reader::EndOfStatement(size_t from, size_t limit) const
{
    while (from < limit && !tokens[from].Is(';'))
        from = tokens[from].match != kNone && tokens[from].match > from ? tokens[from].match + 1 : from + 1;
    return std::min(from, limit);
}

void Expressions::Reader::SkipBracket()
{
    if (tokens[place].match != kNone && tokens[place].match > place && !IsAtEnd())
        place = tokens[place].match + 1;
}

Type Expressions::Reader::Postfix(Type type)
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

Type Expressions::Reader::IndexedOf(const Type& type)
{
    const Type canonical = owner.classes.Canonical(type);
    if (const auto element = Indexed(canonical))
        return *element;
    return owner.TypeOfMember(canonical, "operator []", 1);
}

Type Expressions::Reader::Member(const Type& type, bool isArrow)
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
    const Type member = owner.TypeOfMember(of, tokens[place - 1].IsWord() ? tokens[place - 1].text : tokens[word].text,
                                           arguments, written);
    if (isCall)
        SkipBracket();
    return member;
}

} // namespace resolve
