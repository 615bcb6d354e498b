#include "tagging/SymbolOutput.h"

#include <algorithm>
#include <cctype>
#include <charconv>
#include <cstring>
#include <optional>

namespace tagging {

namespace {

constexpr std::string_view kAnonymous = "__anon";
constexpr size_t kChecksum = 8; // digits after it

bool IsHexDigit(char c)
{
    return (c >= '0' && c <= '9') || (c >= 'a' && c <= 'f');
}

// A text in memory of its own, being read and simplified in place.
struct Cut {
    char* begin;
    char* end;

    size_t Size() const { return static_cast<size_t>(end - begin); }
    std::string_view Text() const { return {begin, Size()}; }
};

// Cuts what precedes the delimiter off the front; the rest is empty if there is none.
Cut CutAt(Cut& rest, char delimiter)
{
    char* const found = static_cast<char*>(std::memchr(rest.begin, delimiter, rest.Size()));
    const Cut front{rest.begin, found == nullptr ? rest.end : found};
    rest.begin = found == nullptr ? rest.end : found + 1;
    return front;
}

char HexValue(const char* digits)
{
    unsigned char code = 0;
    std::from_chars(digits, digits + 2, code, 16);
    return static_cast<char>(code);
}

// Undoes ctags' escapes in place.
void Unescape(Cut& text)
{
    constexpr std::string_view kLetters = "abtnvfr";
    constexpr std::string_view kMeanings = "\a\b\t\n\v\f\r";
    char* const first = static_cast<char*>(std::memchr(text.begin, '\\', text.Size()));
    if (first == nullptr)
        return;
    char* to = first;
    for (const char* from = first; from < text.end; ++from) {
        if (*from != '\\' || from + 1 == text.end) {
            *to++ = *from;
            continue;
        }
        ++from;
        if (*from == 'x' && text.end - from >= 3 && std::isxdigit(static_cast<unsigned char>(from[1])) != 0 &&
            std::isxdigit(static_cast<unsigned char>(from[2])) != 0) {
            *to++ = HexValue(from + 1);
            from += 2;
        } else {
            const size_t letter = kLetters.find(*from);
            *to++ = letter == std::string_view::npos ? *from : kMeanings[letter];
        }
    }
    text.end = to;
}

// The name contains "__anon", the checksum and four digits or more.
void ClearChecksums(const Cut& text)
{
    for (char* at = text.begin; (at = static_cast<char*>(std::memchr(at, '_', text.end - at))) != nullptr;) {
        const size_t left = static_cast<size_t>(text.end - at);
        if (left <= kAnonymous.size() + kChecksum)
            return;
        char* const digits = at + kAnonymous.size();
        if (std::string_view(at, left).starts_with(kAnonymous) &&
            std::all_of(digits, digits + kChecksum + 1, IsHexDigit))
            std::fill(digits, digits + kChecksum, '0');
        ++at;
    }
}

// By the long name that ctags writes.
SymbolKind KindNamed(std::string_view name)
{
    static constexpr SymbolKind kKinds[] = {
        SymbolKind::Macro,
        SymbolKind::Enumerator,
        SymbolKind::Function,
        SymbolKind::Enum,
        SymbolKind::Member,
        SymbolKind::Prototype,
        SymbolKind::Struct,
        SymbolKind::Typedef,
        SymbolKind::Union,
        SymbolKind::Variable,
        SymbolKind::Class,
        SymbolKind::Namespace,
        SymbolKind::ExternVariable,
        SymbolKind::Local,
        SymbolKind::Parameter,
        SymbolKind::MacroParameter,
        SymbolKind::Label,
        SymbolKind::UsingName,
        SymbolKind::TemplateParameter,
        SymbolKind::UsingNamespace,
        SymbolKind::Slot,
        SymbolKind::Signal,
        SymbolKind::QtProperty,
        SymbolKind::NamespaceAlias,
        SymbolKind::Interface,
        SymbolKind::Implementation,
        SymbolKind::Protocol,
        SymbolKind::Category,
        SymbolKind::InstanceMethod,
        SymbolKind::ClassMethod,
        SymbolKind::InstanceMethodDeclaration,
        SymbolKind::ClassMethodDeclaration,
        SymbolKind::Property,
        SymbolKind::InstanceVariable,
    };
    for (const SymbolKind kind : kKinds)
        if (LongName(kind) == name)
            return kind;
    return SymbolKind::None;
}

// Kinds that can be scopes, by the names that fields have.
SymbolKind KindOfScope(std::string_view word)
{
    static constexpr SymbolKind kScopes[] = {
        SymbolKind::Class,    SymbolKind::Struct,   SymbolKind::Namespace, SymbolKind::Enum,
        SymbolKind::Union,    SymbolKind::Function, SymbolKind::Prototype, SymbolKind::Macro,
        SymbolKind::Variable, SymbolKind::Typedef,  SymbolKind::Member,
    };
    for (const SymbolKind kind : kScopes)
        if (LongName(kind) == word)
            return kind;
    return SymbolKind::None;
}

bool HasProperty(std::string_view list, std::string_view word)
{
    for (size_t at = 0; (at = list.find(word, at)) != std::string_view::npos; at += word.size()) {
        const size_t after = at + word.size();
        if ((at == 0 || list[at - 1] == ',') && (after == list.size() || list[after] == ','))
            return true;
    }
    return false;
}

bool IsDefinition(SymbolKind kind)
{
    return kind != SymbolKind::Prototype && kind != SymbolKind::ExternVariable && kind != SymbolKind::Slot &&
           kind != SymbolKind::Signal && kind != SymbolKind::Interface && kind != SymbolKind::Category &&
           kind != SymbolKind::InstanceMethodDeclaration && kind != SymbolKind::ClassMethodDeclaration;
}

// Reads the lines of one output.
class SymbolReader {
public:
    std::optional<Symbol> Read(Cut line)
    {
        symbol = {};
        Cut name = CutAt(line, '\t');
        CutAt(line, '\t'); // the file
        const Cut address = CutAt(line, '\t');
        const Cut kind = CutAt(line, '\t');
        if (!ReadLine(address.Text()))
            return std::nullopt;
        symbol.kind = KindNamed(kind.Text());
        symbol.name = Plain(name);
        if (symbol.kind == SymbolKind::None || symbol.name.empty())
            return std::nullopt;
        symbol.isDefinition = IsDefinition(symbol.kind);
        while (line.begin < line.end)
            ReadField(CutAt(line, '\t'));
        Conclude();
        return symbol;
    }

private:
    bool ReadLine(std::string_view address)
    {
        const char* const end = address.data() + address.size();
        const auto [rest, problem] = std::from_chars(address.data(), end, symbol.line);
        return problem == std::errc() && std::string_view(rest, end) == ";\"";
    }

    static std::string_view Plain(Cut text)
    {
        Unescape(text);
        ClearChecksums(text);
        return text.Text();
    }

    void ReadField(Cut value)
    {
        const std::string_view key = CutAt(value, ':').Text();
        if (key == "typeref")
            symbol.type = TypeOf(value);
        else if (key == "access")
            symbol.access = AccessOf(value.Text());
        else if (key == "end")
            std::from_chars(value.begin, value.end, symbol.endLine);
        else if (key == "file")
            symbol.isFileLocal = true;
        else if (key == "signature")
            symbol.signature = Plain(value);
        else if (key == "properties")
            ReadProperties(value.Text());
        else if (key == "inherits")
            symbol.bases = Plain(value);
        else if (key == "template")
            symbol.templateParameters = Plain(value);
        else if (key == "specialization")
            symbol.isSpecialization = true;
        else if (key == "name")
            symbol.target = Plain(value);
        else if (symbol.scopeKind == SymbolKind::None)
            ReadScope(key, value);
    }

    void ReadScope(std::string_view key, Cut value)
    {
        symbol.scopeKind = KindOfScope(key);
        if (symbol.scopeKind != SymbolKind::None)
            symbol.scope = Plain(value);
    }

    // "typename:int", "struct:S *", "meta:class".
    static std::string_view TypeOf(Cut value)
    {
        Cut type = value;
        const std::string_view word = CutAt(type, ':').Text();
        if (word == "typename" || word == "meta")
            return Plain(type);
        if (KindOfScope(word) != SymbolKind::None && type.begin > value.begin)
            type.begin[-1] = ' ';
        return Plain(value);
    }

    static Symbol::Access AccessOf(std::string_view word)
    {
        if (word == "public")
            return Symbol::Access::Public;
        if (word == "protected")
            return Symbol::Access::Protected;
        return word == "private" ? Symbol::Access::Private : Symbol::Access::None;
    }

    void ReadProperties(std::string_view list)
    {
        symbol.isStatic = HasProperty(list, "static");
        symbol.isScopedEnum = HasProperty(list, "scopedenum");
        symbol.isInline = HasProperty(list, "inline");
        symbol.isVirtual = HasProperty(list, "virtual");
        symbol.isSpecialization |= HasProperty(list, "specialization");
    }

    void Conclude()
    {
        // A class only declares its static members. Those that need no definition elsewhere look the same to ctags.
        if (symbol.kind == SymbolKind::Member && symbol.isStatic && symbol.access != Symbol::Access::None)
            symbol.isDefinition = false;
        if (symbol.kind == SymbolKind::UsingNamespace) {
            symbol.target = symbol.name;
            symbol.name = symbol.name.substr(symbol.name.rfind(':') + 1);
        }
    }

    Symbol symbol;
};

} // namespace

std::vector<Symbol> ReadSymbols(std::string_view output, base::TextPool& texts)
{
    std::vector<Symbol> symbols;
    if (output.empty())
        return symbols;
    char* const copy = texts.Room(output.size());
    std::copy(output.begin(), output.end(), copy);
    Cut rest{copy, copy + output.size()};
    SymbolReader reader;
    symbols.reserve(static_cast<size_t>(std::count(output.begin(), output.end(), '\n')));
    while (rest.begin < rest.end)
        if (const std::optional<Symbol> symbol = reader.Read(CutAt(rest, '\n')))
            symbols.push_back(*symbol);
    return symbols;
}

} // namespace tagging
