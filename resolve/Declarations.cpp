#include "resolve/Declarations.h"

#include <algorithm>

namespace resolve {

namespace {

using tagging::SymbolKind;

// Reads "specifiers type declarator, declarator".
class DeclarationReader {
public:
    DeclarationReader(const Tokens& tokens, Tokens::Range range, bool isParameter)
        : tokens(tokens), place(range.begin), end(range.end), isParameter(isParameter)
    {
    }

    std::vector<Declared> Read()
    {
        if (!ReadType())
            return {};
        if (ReadBinding())
            return std::move(found);
        while (ReadDeclarator() && !isParameter && tokens[place].Is(',') && place < end)
            ++place;
        return std::move(found);
    }

private:
    bool IsAtEnd() const { return place >= end; }

    bool SkipBracket()
    {
        const size_t match = tokens[place].match;
        if (match == kNone || match < place || match >= end)
            return false;
        place = match + 1;
        return true;
    }

    void SkipAttributes()
    {
        while (!IsAtEnd()) {
            if (tokens[place].Is('[') && tokens[place + 1].Is('[') && SkipBracket())
                continue;
            const std::string_view word = tokens[place].text;
            const bool takesArguments =
                word == "__attribute__" || word == "alignas" || word == "__declspec" || word == "__attribute";
            if (!takesArguments)
                return;
            ++place;
            SkipBracket();
        }
    }

    // Stops at the first token of the declarator. The type's name is the last word that another word or a sign of a
    // pointer follows.
    bool ReadType()
    {
        type.begin = place;
        bool hasName = false;
        for (SkipAttributes(); !IsAtEnd(); SkipAttributes()) {
            const Token& token = tokens[place];
            if (token.IsMark("::") && tokens[place + 1].IsWord()) {
                ++place;
                continue;
            }
            if (!token.IsWord() || IsStatementWord(token.text))
                break;
            if (token.text == "auto" || token.text == "__auto_type") {
                hasName = true;
                ++place;
            } else if (token.text == "decltype" || token.text == "typeof" || token.text == "__typeof__" ||
                       token.text == "__typeof" || token.text == "_Atomic") {
                ++place;
                if (tokens[place].Is('(') && !SkipBracket())
                    return false;
                hasName = true;
            } else if (token.text == "enum" || token.text == "struct" || token.text == "union" ||
                       token.text == "class") {
                ++place;
                SkipAttributes();
                ReadTag();
                hasName = true;
            } else if (IsBuiltInType(token.text)) {
                hasName = true;
                ++place;
            } else if (IsSpecifierAt(place)) {
                ++place;
            } else if (!hasName || !IsDeclaratorName()) {
                if (!ReadQualifiedName())
                    return false;
                hasName = true;
            } else {
                break;
            }
        }
        if (type.end == 0)
            type.end = place;
        return hasName && (IsAtEnd() ? isParameter : true);
    }

    // "buffer out;" declares "out", although Objective-C has it in front of types.
    bool IsSpecifierAt(size_t index) const
    {
        const Token& token = tokens[index];
        const Token& next = tokens[index + 1];
        const bool isBeforeWord = index + 1 < end && next.IsWord() && next.text != "in";
        return token.IsWord() && IsSpecifier(token.text) && (isBeforeWord || IsKeyword(token.text));
    }

    // "struct point", "enum { A, B }".
    void ReadTag()
    {
        if (tokens[place].IsWord() && tokens[place].text != "final") {
            Declared tag;
            tag.name = place;
            tag.kind = SymbolKind::Struct;
            ReadQualifiedName();
            if (tokens[place].Is('{') && !isParameter)
                found.push_back(tag);
        }
        if (tokens[place].Is(':'))
            while (!IsAtEnd() && !tokens[place].Is('{'))
                ++place;
        if (!tokens[place].Is('{'))
            return;
        type.end = place;
        const bool isEnum = tokens[type.begin].text == "enum" || tokens[type.begin + 1].text == "enum";
        const size_t close = tokens[place].match;
        if (isEnum && close != kNone && close < end)
            for (const Tokens::Range& part : tokens.Parts(place + 1, close))
                if (tokens[part.begin].IsWord())
                    found.push_back(
                        {.name = part.begin, .type = type, .initializer = {}, .kind = SymbolKind::Enumerator});
        SkipBracket();
    }

    // Whether the word can only be the name that is declared, as the type has been read.
    bool IsDeclaratorName() const
    {
        const Token& next = tokens[place + 1];
        if (place + 1 >= end)
            return true;
        if (next.IsMark("::") || next.IsWord())
            return next.IsWord() && (next.text == "in" || next.text.starts_with("__attribute") || next.text == "asm");
        if (next.Is('*') || next.Is('&'))
            return tokens[place - 1].Is('*');
        return true;
    }

    bool ReadQualifiedName()
    {
        for (;;) {
            if (!tokens[place].IsWord() || IsAtEnd())
                return false;
            ++place;
            if (tokens[place].Is('<') && !IsAtEnd()) {
                const size_t close = tokens.AngleEnd(place);
                if (close == kNone || close >= end)
                    return false;
                place = close + 1;
            }
            if (!tokens[place].IsMark("::") || IsAtEnd())
                return true;
            ++place;
            if (tokens[place].text == "template")
                ++place;
        }
    }

    // "auto& [key, value] = ...": the names have parts of the initialiser's type.
    bool ReadBinding()
    {
        size_t open = place;
        while (tokens[open].Is('&'))
            ++open;
        const size_t close = tokens[open].match;
        if (!tokens[open].Is('[') || close == kNone || close >= end || tokens[place - 1].text != "auto")
            return false;
        place = close + 1;
        Declared common;
        common.type = type;
        ReadInitializer(common);
        size_t number = 0;
        for (const Tokens::Range& part : tokens.Parts(open + 1, close)) {
            common.name = part.begin;
            common.part = number++;
            if (tokens[part.begin].IsWord())
                found.push_back(common);
        }
        return true;
    }

    bool ReadDeclarator()
    {
        Declared declared;
        declared.type = type;
        declared.kind = isParameter ? SymbolKind::Parameter : SymbolKind::Local;
        SkipPointers(declared);
        if (tokens[place].Is('(') &&
            (tokens[place + 1].Is('*') || tokens[place + 1].Is('^') || tokens[place + 1].Is('&')))
            return ReadFunctionPointer(declared);
        if (IsAtEnd() || !tokens[place].IsWord() || IsKeyword(tokens[place].text))
            return false;
        declared.name = place++;
        if (tokens[place].IsMark("::"))
            return false;
        return ReadRest(declared);
    }

    void SkipPointers(Declared& declared)
    {
        for (; !IsAtEnd(); ++place) {
            const Token& token = tokens[place];
            if (token.Is('*') || token.Is('^'))
                ++declared.pointers;
            else if (!token.Is('&') && !IsSpecifierAt(place) && !IsMacroBeforeName())
                return;
        }
    }

    // "char __user *p", "char * __user p"
    bool IsMacroBeforeName() const
    {
        const Token& next = tokens[place + 1];
        return tokens[place].IsWord() && place + 1 < end && !IsKeyword(tokens[place].text) &&
               (next.Is('*') || (next.IsWord() && !IsKeyword(next.text) && next.text != "in"));
    }

    bool ReadFunctionPointer(Declared& declared)
    {
        const size_t open = place;
        if (!SkipBracket())
            return false;
        const size_t close = place - 1;
        for (size_t i = open + 1; i < close; ++i) {
            if (tokens[i].IsWord() && !IsSpecifierAt(i)) {
                declared.name = i;
                break;
            }
        }
        if (declared.name == kNone || !(tokens[place].Is('(') || tokens[place].Is('[')))
            return false;
        declared.isFunction = tokens[place].Is('(');
        declared.pointers += declared.isFunction ? 0 : 2;
        return ReadRest(declared);
    }

    // What may follow a declared name. "f(x)" without a type has not come here.
    bool ReadRest(Declared& declared)
    {
        while (!IsAtEnd() && tokens[place].Is('[')) {
            ++declared.pointers;
            if (!SkipBracket())
                return false;
        }
        SkipMacros();
        ReadInitializer(declared);
        const bool ends = IsAtEnd() || tokens[place].Is(',') || tokens[place].Is(';');
        if (!ends)
            return false;
        found.push_back(declared);
        return true;
    }

    void SkipMacros()
    {
        while (!IsAtEnd() && tokens[place].IsWord() && tokens[place].text != "in") {
            ++place;
            if (tokens[place].Is('('))
                SkipBracket();
        }
        SkipAttributes();
    }

    void ReadInitializer(Declared& declared)
    {
        if (IsAtEnd())
            return;
        const Token& token = tokens[place];
        if (token.Is(':') || token.text == "in") {
            const Tokens::Range rest = {place + 1, end};
            declared.isRange = true;
            declared.initializer = rest;
            place = end;
        } else if (token.Is('=') || token.Is('(') || token.Is('{')) {
            const size_t begin = token.Is('=') ? place + 1 : place;
            const auto parts = tokens.Parts(begin, end);
            place = parts.empty() ? end : parts.front().end;
            declared.initializer = {begin, place};
        }
    }

    const Tokens& tokens;
    size_t place;
    const size_t end;
    const bool isParameter;
    Tokens::Range type;
    std::vector<Declared> found;
};

std::vector<Declared> AsTypes(std::vector<Declared> declared)
{
    for (Declared& each : declared)
        if (each.kind == SymbolKind::Local)
            each.kind = SymbolKind::Typedef;
    return declared;
}

} // namespace

std::vector<Declared> ReadStatement(const Tokens& tokens, Tokens::Range statement)
{
    const Token& first = tokens[statement.begin];
    if (first.text == "typedef")
        return AsTypes(DeclarationReader(tokens, {statement.begin + 1, statement.end}, false).Read());
    if (first.text == "using" && tokens[statement.begin + 2].Is('='))
        return {{.name = statement.begin + 1,
                 .type = {statement.begin + 3, statement.end},
                 .initializer = {},
                 .kind = SymbolKind::Typedef}};
    return DeclarationReader(tokens, statement, false).Read();
}

std::vector<Declared> ReadParameters(const Tokens& tokens, size_t open)
{
    std::vector<Declared> found;
    const size_t close = tokens[open].match == kNone ? tokens.Count() : tokens[open].match;
    const std::vector<Tokens::Range> parts = tokens.Parts(open + 1, close);
    for (const Tokens::Range& part : parts) {
        std::vector<Declared> declared = DeclarationReader(tokens, part, true).Read();
        // "SYSCALL_DEFINE2(name, type, fd, type, buffer)": a macro that makes a function gets types and names in pairs.
        const size_t number = static_cast<size_t>(&part - parts.data());
        const bool mayBeName = number >= 2 && number % 2 == 0 && parts.size() % 2 == 1;
        if (declared.empty() && mayBeName && part.end == part.begin + 1 && tokens[part.begin].IsWord() &&
            !IsKeyword(tokens[part.begin].text)) {
            Declared weak;
            weak.name = part.begin;
            weak.isWeak = true;
            weak.kind = SymbolKind::Parameter;
            weak.type = parts[number - 1];
            declared.push_back(weak);
        }
        found.insert(found.end(), declared.begin(), declared.end());
    }
    return found;
}

std::vector<Declared> ReadMethodParameters(const Tokens& tokens, Tokens::Range head)
{
    std::vector<Declared> found;
    for (size_t i = head.begin; i < head.end; ++i) {
        if (!tokens[i].Is(':')) {
            if (tokens[i].match != kNone && tokens[i].match > i)
                i = tokens[i].match;
            continue;
        }
        Declared parameter;
        parameter.kind = SymbolKind::Parameter;
        size_t name = i + 1;
        if (tokens[name].Is('(') && tokens[name].match != kNone) {
            parameter.type = {name + 1, tokens[name].match};
            name = tokens[name].match + 1;
        }
        while (tokens[name].IsWord() && tokens[name + 1].Is('('))
            name = tokens[name + 1].match == kNone ? name + 1 : tokens[name + 1].match + 1;
        if (tokens[name].IsWord() && (IsSpecifier(tokens[name].text) || tokens[name].text.starts_with("__")) &&
            tokens[name + 1].IsWord())
            ++name;
        parameter.name = name;
        if (tokens[name].IsWord())
            found.push_back(parameter);
        i = name - 1;
    }
    return found;
}

std::vector<Declared> ReadTemplateParameters(const Tokens& tokens, size_t open)
{
    std::vector<Declared> found;
    const size_t close = tokens.AngleEnd(open);
    if (close == kNone)
        return found;
    for (const Tokens::Range& part : tokens.Parts(open + 1, close)) {
        Declared parameter;
        parameter.kind = SymbolKind::TemplateParameter;
        for (size_t i = part.begin; i < part.end && !tokens[i].Is('='); ++i) {
            if (tokens[i].Is('<') && tokens.AngleEnd(i) < part.end)
                i = tokens.AngleEnd(i);
            else if (tokens[i].IsWord() && !IsKeyword(tokens[i].text))
                parameter.name = i;
        }
        if (parameter.name != kNone)
            found.push_back(parameter);
    }
    return found;
}

} // namespace resolve
