#include "resolve/Type.h"

#include "resolve/Tokens.h"

#include <algorithm>

namespace resolve {

namespace {

constexpr int kDeepestArguments = 8;
constexpr size_t kLongestType = 4000;

// Reads one type from tokens.
class TypeReader {
public:
    TypeReader(const Tokens& tokens, std::string_view scope, symbols::FileNumber file, int depth)
        : tokens(tokens), depth(depth)
    {
        type.scope = scope;
        type.file = file;
    }

    Type Read(size_t begin, size_t end)
    {
        for (place = begin; place < end;)
            ReadNext(end);
        return std::move(type);
    }

private:
    void ReadNext(size_t end)
    {
        const Token& token = tokens[place];
        if (token.IsWord())
            ReadWord(end);
        else if (token.IsMark("::") && tokens[place + 1].IsWord())
            ++place, ReadName(end);
        else
            ReadMark();
    }

    void ReadWord(size_t end)
    {
        const Token& token = tokens[place];
        if (token.text == "const" && type.pointers == 0)
            type.isConstant = true;
        if (IsSpecifier(token.text) || token.text == "auto" || token.text == "const") {
            ++place;
        } else if (token.text == "decltype" || token.text.starts_with("__attribute") || token.text == "alignas" ||
                   token.text == "typeof" || token.text == "__typeof__") {
            ++place;
            SkipBracket();
        } else if (IsBuiltInType(token.text)) {
            // "unsigned long long": the size counts more than the sign.
            const bool isWeaker = token.text == "int" || token.text == "signed" || token.text == "unsigned";
            if (!isWeaker || !type.IsKnown())
                type.name = token.text;
            ++place;
        } else if (IsMacro(end)) {
            if (tokens[++place].Is('('))
                SkipBracket();
        } else {
            ReadName(end);
        }
    }

    // "API Type", "DECLARE(x) Type": words before the name of the type.
    bool IsMacro(size_t end) const
    {
        if (IsBuiltInType(type.name) || (type.IsKnown() && tokens[place].text.starts_with("__")))
            return true;
        size_t next = place + 1;
        if (tokens[next].Is('(') && tokens[next].match != kNone && !tokens[next + 1].Is('*') &&
            !tokens[next + 1].Is('^'))
            next = tokens[next].match + 1;
        return next < end && tokens[next].IsWord() && !IsSpecifier(tokens[next].text);
    }

    void ReadName(size_t end)
    {
        type.name.clear();
        type.arguments.clear();
        for (;;) {
            type.name += tokens[place].text;
            ++place;
            if (tokens[place].Is('<') && place < end)
                ReadArguments(end);
            if (!tokens[place].IsMark("::") || place + 1 >= end)
                return;
            ++place;
            if (tokens[place].text == "template")
                ++place;
            if (!tokens[place].IsWord())
                return;
            type.name += "::";
            type.outer = std::move(type.arguments);
            type.arguments.clear();
        }
    }

    void ReadArguments(size_t end)
    {
        const size_t close = tokens.AngleEnd(place);
        if (close == kNone || close >= end) {
            ++place;
            return;
        }
        if (depth < kDeepestArguments)
            for (const Tokens::Range& part : tokens.Parts(place + 1, close))
                type.arguments.push_back(
                    TypeReader(tokens, type.scope, type.file, depth + 1).Read(part.begin, part.end));
        place = close + 1;
    }

    void ReadMark()
    {
        const Token& token = tokens[place];
        if (token.Is('*') || token.Is('^')) {
            ++type.pointers;
        } else if (token.Is('[')) {
            ++type.pointers;
            SkipBracket();
            return;
        } else if (token.Is('(') && (tokens[place + 1].Is('*') || tokens[place + 1].Is('^'))) {
            type.isFunction = true;
            SkipBracket();
            SkipBracket();
            return;
        } else if (token.Is('(')) {
            type.isFunction |= type.IsKnown(); // "void (int)" among template arguments
            SkipBracket();
            return;
        }
        ++place;
    }

    void SkipBracket()
    {
        if (tokens[place].match != kNone && tokens[place].match > place)
            place = tokens[place].match + 1;
        else if (tokens[place].Is('(') || tokens[place].Is('['))
            ++place;
    }

    const Tokens& tokens;
    const int depth;
    Type type;
    size_t place = 0;
};

} // namespace

Type Type::Named(std::string_view name, symbols::FileNumber file)
{
    Type type;
    type.name = name;
    type.file = file;
    return type;
}

std::string_view Type::Leaf() const
{
    return LeafOf(name);
}

std::string_view LeafOf(std::string_view qualified)
{
    const size_t colons = qualified.rfind("::");
    return colons == std::string_view::npos ? qualified : qualified.substr(colons + 2);
}

std::string_view ScopeOf(std::string_view qualified)
{
    const size_t colons = qualified.rfind("::");
    return colons == std::string_view::npos ? std::string_view() : qualified.substr(0, colons);
}

std::string Joined(std::string_view scope, std::string_view name)
{
    std::string joined(scope);
    if (!joined.empty() && !name.empty())
        joined += "::";
    return joined += name;
}

Type ParseType(std::string_view text, std::string_view scope, symbols::FileNumber file)
{
    const Tokens tokens(text.substr(0, kLongestType));
    return TypeReader(tokens, scope, file, 0).Read(0, tokens.Count());
}

std::vector<std::string> TemplateParameterNames(std::string_view parameters)
{
    std::vector<std::string> names;
    const Tokens tokens(parameters.substr(0, kLongestType));
    if (!tokens[0].Is('<') || tokens.Count() < 2)
        return names;
    for (const Tokens::Range& part : tokens.Parts(1, tokens.Count() - 1)) {
        std::string_view name;
        for (size_t i = part.begin; i < part.end && !tokens[i].Is('='); ++i)
            if (tokens[i].IsWord())
                name = tokens[i].text;
        names.emplace_back(name);
    }
    return names;
}

Type Substituted(const Type& type, const Bindings& bindings)
{
    const auto bound =
        std::find_if(bindings.begin(), bindings.end(), [&](const auto& each) { return each.first == type.name; });
    if (bound != bindings.end() && bound->second.IsKnown()) {
        Type result = bound->second;
        result.pointers += type.pointers;
        result.isFunction |= type.isFunction;
        result.isConstant |= type.isConstant;
        return result;
    }
    Type result = type;
    for (Type& argument : result.arguments)
        argument = Substituted(argument, bindings);
    for (Type& argument : result.outer)
        argument = Substituted(argument, bindings);
    return result;
}

std::string TextOf(const Type& type)
{
    std::string text = type.name;
    for (size_t i = 0; i < type.arguments.size(); ++i)
        text += (i == 0 ? "<" : ", ") + TextOf(type.arguments[i]);
    if (!type.arguments.empty())
        text += '>';
    if (type.pointers > 0)
        text += ' ' + std::string(static_cast<size_t>(type.pointers), '*');
    return text;
}

ArgumentCounts CountsOf(std::string_view signature)
{
    ArgumentCounts counts;
    const Tokens tokens(signature.substr(0, kLongestType));
    if (!tokens[0].Is('('))
        return {0, SIZE_MAX};
    const size_t close = tokens[0].match == kNone ? tokens.Count() : tokens[0].match;
    for (const Tokens::Range& part : tokens.Parts(1, close)) {
        const bool isVoid = part.end == part.begin + 1 && tokens[part.begin].text == "void";
        if (part.IsEmpty() || isVoid)
            continue;
        bool hasDefault = false;
        bool isPack = false;
        for (size_t i = part.begin; i < part.end; ++i) {
            hasDefault |= tokens[i].Is('=');
            isPack |= tokens[i].Is('.');
        }
        if (isPack) {
            counts.most = SIZE_MAX;
            break;
        }
        ++counts.most;
        if (!hasDefault)
            ++counts.least;
    }
    return counts;
}

bool IsConstantMethod(std::string_view signature)
{
    const size_t close = signature.rfind(')');
    return close != std::string_view::npos && signature.substr(close).find("const") != std::string_view::npos;
}

std::vector<Type> ParameterTypes(std::string_view signature)
{
    std::vector<Type> types;
    const Tokens tokens(signature.substr(0, kLongestType));
    if (!tokens[0].Is('(') || tokens[0].match == kNone)
        return types;
    for (const Tokens::Range& part : tokens.Parts(1, tokens[0].match)) {
        size_t end = part.begin;
        while (end < part.end && !tokens[end].Is('='))
            ++end;
        // Without the parameter's name: a word behind another one, or behind a sign.
        const bool hasName = end > part.begin + 1 && tokens[end - 1].IsWord() && !IsBuiltInType(tokens[end - 1].text) &&
                             !IsSpecifier(tokens[end - 1].text) && !tokens[end - 2].IsMark("::") &&
                             !IsSpecifier(tokens[end - 2].text);
        types.push_back(TypeReader(tokens, "", 0, 0).Read(part.begin, hasName ? end - 1 : end));
    }
    return types;
}

int PassedMisfit(const std::vector<Type>& parameters, const std::vector<Type>& passed)
{
    int misfit = 0;
    for (size_t i = 0; i < parameters.size() && i < passed.size(); ++i) {
        const Type& parameter = parameters[i];
        const Type& value = passed[i];
        if (!parameter.IsKnown() || !value.IsKnown())
            continue;
        const bool isPointer = parameter.pointers > 0;
        const bool isBuiltIn = IsBuiltInType(parameter.name);
        if (parameter.Leaf() == value.Leaf() && parameter.pointers == value.pointers)
            continue;
        if (isPointer != (value.pointers > 0))
            misfit += isBuiltIn || isPointer ? 4 : 2;
        else if (isPointer && parameter.name == "void")
            misfit += 1;
        else if (IsBuiltInType(value.name) == isBuiltIn)
            misfit += isPointer ? 4 : 1;
        else
            misfit += isBuiltIn ? 2 : 3;
    }
    return misfit;
}

} // namespace resolve
