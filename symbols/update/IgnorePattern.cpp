#include "symbols/update/IgnorePattern.h"

#include <algorithm>
#include <cctype>
#include <cstddef>
#include <iterator>

namespace symbols {

namespace {

// Blanks at the end do not count, unless a backslash is before them.
std::string_view WithoutBlanksAtEnd(std::string_view line)
{
    size_t end = 0;
    for (size_t at = 0; at < line.size(); ++at) {
        if (line[at] == '\\' && at + 1 < line.size())
            end = ++at + 1;
        else if (line[at] != ' ')
            end = at + 1;
    }
    return line.substr(0, end);
}

using IsInClass = int (*)(int);

// The functions of the "C" locale, whatever the program's: all of ASCII only.
template <IsInClass function>
int InAscii(int character)
{
    return character < 0x80 && function(character) != 0;
}

IsInClass ClassNamed(std::string_view name)
{
    static constexpr struct {
        std::string_view name;
        IsInClass function;
    } kClasses[] = {
        {"alnum", InAscii<std::isalnum>}, {"alpha", InAscii<std::isalpha>}, {"blank", InAscii<std::isblank>},
        {"cntrl", InAscii<std::iscntrl>}, {"digit", InAscii<std::isdigit>}, {"graph", InAscii<std::isgraph>},
        {"lower", InAscii<std::islower>}, {"print", InAscii<std::isprint>}, {"punct", InAscii<std::ispunct>},
        {"space", InAscii<std::isspace>}, {"upper", InAscii<std::isupper>}, {"xdigit", InAscii<std::isxdigit>},
    };
    for (const auto& [known, function] : kClasses)
        if (known == name)
            return function;
    return nullptr;
}

unsigned char Byte(char character)
{
    return static_cast<unsigned char>(character);
}

bool IsSpecial(char character)
{
    return character == '*' || character == '?' || character == '[' || character == '\\';
}

// Reads the inside of a set, "a-z]" and the like.
class SetReader {
public:
    SetReader(std::string_view text, size_t at) : text(text), at(at) {}

    // False when there is no end.
    bool Read(std::bitset<256>& set)
    {
        const bool isNegative = at < text.size() && (text[at] == '!' || text[at] == '^');
        at += isNegative;
        for (bool isFirst = true; isFirst || at >= text.size() || text[at] != ']'; isFirst = false)
            if (at >= text.size() || !ReadOne(set))
                return false;
        ++at;
        if (isNegative)
            set.flip();
        set.reset('/');
        return true;
    }
    size_t End() const { return at; }

private:
    bool ReadOne(std::bitset<256>& set)
    {
        if (text[at] == '[' && at + 1 < text.size() && text[at + 1] == ':')
            return ReadClass(set);
        if (text[at] == '-' && previous >= 0 && at + 1 < text.size() && text[at + 1] != ']') {
            ++at;
            return ReadRange(set);
        }
        int character;
        if (!ReadCharacter(character))
            return false;
        set.set(static_cast<size_t>(character));
        previous = character;
        return true;
    }

    bool ReadCharacter(int& character)
    {
        at += text[at] == '\\';
        if (at >= text.size())
            return false;
        character = Byte(text[at++]);
        return true;
    }

    bool ReadRange(std::bitset<256>& set)
    {
        int last;
        if (!ReadCharacter(last))
            return false;
        for (int each = previous; each <= last; ++each)
            set.set(static_cast<size_t>(each));
        previous = -1;
        return true;
    }

    // "[:" without ":]" is a "[" and a ":".
    bool ReadClass(std::bitset<256>& set)
    {
        const size_t end = text.find(']', at + 2);
        if (end == std::string_view::npos)
            return false;
        previous = -1;
        if (text[end - 1] != ':' || end - 1 < at + 2) {
            set.set('[');
            previous = '[';
            ++at;
            return true;
        }
        const IsInClass isIn = ClassNamed(text.substr(at + 2, end - 1 - (at + 2)));
        if (isIn == nullptr)
            return false;
        for (int each = 0; each < 256; ++each)
            if (isIn(each))
                set.set(static_cast<size_t>(each));
        at = end + 1;
        return true;
    }

    const std::string_view text;
    size_t at;
    int previous = -1; // the possible start of a range; -1 for none
};

} // namespace

std::optional<IgnorePattern> IgnorePattern::Parse(std::string_view line)
{
    if (line.ends_with('\r'))
        line.remove_suffix(1);
    if (line.starts_with('#'))
        return std::nullopt;
    line = WithoutBlanksAtEnd(line);
    if (line.empty())
        return std::nullopt;
    IgnorePattern pattern;
    pattern.isNegative = line.starts_with('!');
    line.remove_prefix(pattern.isNegative);
    pattern.directoriesOnly = line.ends_with('/');
    line.remove_suffix(pattern.directoriesOnly);
    pattern.comparesNames = line.find('/') == std::string_view::npos;
    if (line.starts_with('/'))
        line.remove_prefix(1);
    pattern.FindFastForm(line);
    if (pattern.form == Form::Parts && !pattern.ReadParts(line))
        pattern.form = Form::Never;
    return pattern;
}

void IgnorePattern::FindFastForm(std::string_view text)
{
    const auto isLiteral = [](std::string_view some) {
        for (const char each : some)
            if (IsSpecial(each))
                return false;
        return true;
    };
    if (isLiteral(text))
        form = Form::Literal;
    else if (comparesNames && text[0] == '*' && isLiteral(text.substr(1)))
        form = Form::Ending;
    if (form != Form::Parts)
        literal = text.substr(form == Form::Ending);
}

// False for a pattern that matches nothing.
bool IgnorePattern::ReadParts(std::string_view text)
{
    for (size_t at = 0; at < text.size();) {
        const char character = text[at];
        if (character == '*') {
            if (!ReadStars(text, at))
                return false;
        } else if (character == '[') {
            if (!ReadSet(text, ++at))
                return false;
        } else if (character == '?') {
            parts.push_back({Kind::AnyCharacter});
            ++at;
        } else {
            at += character == '\\';
            if (at == text.size())
                return false;
            parts.push_back({Kind::Character, Byte(text[at++])});
        }
    }
    return true;
}

// Several stars mean directories only when they are a whole part of the path. Git also takes them so when only ordinary
// characters are before them: "b**/c" is "b/c" and "bx/y/c".
bool IgnorePattern::ReadStars(std::string_view text, size_t& at)
{
    const size_t start = at;
    at = std::min(text.find_first_not_of('*', start), text.size());
    const bool isFirst = text.find_first_of("*?[\\") == start;
    const bool isWhole = at - start > 1 && (isFirst || text[start - 1] == '/') && !comparesNames;
    if (isWhole && at == text.size()) {
        parts.push_back({Kind::Everything});
    } else if (isWhole && text[at] == '/') {
        parts.push_back({Kind::AnyDirectories});
        ++at;
    } else {
        parts.push_back({Kind::Star});
    }
    return true;
}

bool IgnorePattern::ReadSet(std::string_view text, size_t& at)
{
    SetReader reader(text, at);
    Set set;
    if (sets.size() > 1000 || !reader.Read(set))
        return false;
    parts.push_back({Kind::OneOf, 0, static_cast<std::uint16_t>(sets.size())});
    sets.push_back(set);
    at = reader.End();
    return true;
}

bool IgnorePattern::TakesCharacter(const Part& part, char character) const
{
    if (part.kind == Kind::Character)
        return part.character == Byte(character);
    if (part.kind == Kind::OneOf)
        return sets[part.set][Byte(character)];
    return part.kind == Kind::AnyCharacter && character != '/';
}

// A star takes as little as possible at first, and more when the rest does not match. Only the last star of a directory
// and the last "**/" need more tries: what is before them has matched, and where it ends makes no difference.
bool IgnorePattern::MatchesParts(std::string_view path) const
{
    constexpr size_t kNone = std::string_view::npos;
    size_t part = 0;
    size_t at = 0;
    size_t starPart = kNone, starAt = 0;
    size_t directoriesPart = kNone, directoriesAt = 0;
    for (;;) {
        if (part < parts.size() && parts[part].kind == Kind::Everything)
            return true;
        if (part < parts.size() && parts[part].kind == Kind::Star) {
            starPart = ++part;
            starAt = at;
            continue;
        }
        if (part < parts.size() && parts[part].kind == Kind::AnyDirectories) {
            directoriesPart = ++part;
            directoriesAt = at;
            starPart = kNone;
            continue;
        }
        if (part == parts.size() && at == path.size())
            return true;
        if (part < parts.size() && at < path.size() && TakesCharacter(parts[part], path[at])) {
            if (path[at] == '/')
                starPart = kNone;
            ++part;
            ++at;
            continue;
        }
        if (starPart != kNone && starAt < path.size() && path[starAt] != '/') {
            part = starPart;
            at = ++starAt;
            continue;
        }
        const size_t slash = directoriesPart == kNone ? kNone : path.find('/', directoriesAt);
        if (slash == kNone)
            return false;
        part = directoriesPart;
        at = directoriesAt = slash + 1;
        starPart = kNone;
    }
}

bool IgnorePattern::Matches(std::string_view path, bool isDirectory) const
{
    if (directoriesOnly && !isDirectory)
        return false;
    if (comparesNames)
        path.remove_prefix(path.rfind('/') + 1);
    switch (form) {
    case Form::Literal:
        return path == literal;
    case Form::Ending:
        return path.ends_with(literal);
    case Form::Parts:
        return MatchesParts(path);
    case Form::Never:
        break;
    }
    return false;
}

} // namespace symbols
