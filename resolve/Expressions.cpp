#include "resolve/Expressions.h"

#include "resolve/Blocks.h"
#include "resolve/LibraryTypes.h"
#include "resolve/Messages.h"
#include "resolve/TemplateDeduction.h"
#include "resolve/Usage.h"

#include <algorithm>

namespace resolve {

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
    const auto receiver = ReceiverOf(tokens, word);
    return receiver ? TypeOf(receiver->begin, receiver->end, depth + 1) : Type{};
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
    return Type::Named(names.ScopesAt(tokens[place].line).front(), world.TextFile());
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

} // namespace resolve
