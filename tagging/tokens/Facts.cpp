#include "tagging/tokens/Facts.h"

#include "tagging/tokens/Keywords.h"

#include <array>
#include <cstring>

namespace tagging {

namespace {

enum class Char : unsigned char { Plain, Newline, Space, WordStart, Digit, Quote, Slash, Hash, At, Colon, Backslash };

constexpr std::array<Char, 256> Chars()
{
    std::array<Char, 256> classes{};
    for (unsigned c = 0; c < 256; ++c) {
        if ((c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_' || c == '$' || c >= 0x80)
            classes[c] = Char::WordStart;
        else if (c >= '0' && c <= '9')
            classes[c] = Char::Digit;
        else if (c == ' ' || (c >= '\t' && c <= '\r') || c == '\0')
            classes[c] = Char::Space;
    }
    classes['\n'] = Char::Newline;
    classes['"'] = Char::Quote;
    classes['\''] = Char::Quote;
    classes['/'] = Char::Slash;
    classes['#'] = Char::Hash;
    classes['@'] = Char::At;
    classes[':'] = Char::Colon;
    classes['\\'] = Char::Backslash;
    return classes;
}
constexpr std::array<Char, 256> kChars = Chars();

Char CharOf(char c)
{
    return kChars[static_cast<unsigned char>(c)];
}

bool IsInWord(char c)
{
    const Char kind = CharOf(c);
    return kind == Char::WordStart || kind == Char::Digit;
}

} // namespace

class FactFinder::Scan {
public:
    Scan(std::string_view text, NameSet& known) : at(text.data()), end(at + text.size()), known(known) {}

    Facts Run()
    {
        while (at < end)
            Step();
        return std::move(facts);
    }

private:
    void Step()
    {
        const char c = *at;
        switch (CharOf(c)) {
        case Char::Newline:
            ++line;
            ++at;
            atLineStart = true;
            return;
        case Char::Space:
            ++at;
            return;
        case Char::WordStart:
            OnWord();
            break;
        case Char::Digit:
            SkipNumber();
            break;
        case Char::Quote:
            SkipLiteral();
            break;
        case Char::Slash:
            OnSlash();
            return;
        case Char::Hash:
            ++at;
            if (atLineStart)
                OnDirective();
            break;
        case Char::At:
            ++at;
            OnAt();
            break;
        case Char::Colon:
            ++at;
            OnColon();
            break;
        case Char::Backslash:
            ++at;
            return;
        case Char::Plain:
            // ".5e3" is a number.
            if (c == '.' && at + 1 < end && CharOf(at[1]) == Char::Digit)
                SkipNumber();
            else
                ++at;
            break;
        }
        atLineStart = false;
    }

    char Peek(size_t distance) const { return distance < static_cast<size_t>(end - at) ? at[distance] : '\0'; }

    std::string_view TakeWord()
    {
        const char* const begin = at;
        while (at < end && IsInWord(*at))
            ++at;
        return {begin, static_cast<size_t>(at - begin)};
    }

    void OnWord()
    {
        const std::string_view word = TakeWord();
        if (at < end && *at == '"' && word.back() == 'R' && BeginsRawText(word) && SkipRawString())
            return;
        if (known.Add(word))
            Keep(word);
        if (word.size() == 5 && word[0] == 'u' && word == "using")
            OnUsing();
    }

    void Keep(std::string_view word)
    {
        const Keyword keyword = KindOfKeyword(word);
        if (keyword == Keyword::No)
            facts.names.push_back(word);
        else if (keyword != Keyword::OfBoth)
            facts.cplusplusKeywords.push_back(word);
        if (keyword == Keyword::OfCplusplusOutright)
            facts.mayBeCplusplus = true;
    }

    static bool BeginsRawText(std::string_view prefix)
    {
        return prefix == "R" || prefix == "LR" || prefix == "uR" || prefix == "UR" || prefix == "u8R";
    }

    // At the quote. False if it does not begin a raw string.
    bool SkipRawString()
    {
        constexpr size_t kLongestDelimiter = 16;
        const std::string_view rest(at, static_cast<size_t>(end - at));
        const std::string_view start = rest.substr(1, kLongestDelimiter + 1);
        const size_t length = start.find_first_of("( )\\\t\v\f\n\"");
        if (length == std::string_view::npos || start[length] != '(')
            return false;
        char ending[kLongestDelimiter + 2] = {')'};
        std::memcpy(ending + 1, start.data(), length);
        ending[length + 1] = '"';
        const size_t close = rest.find(std::string_view(ending, length + 2), length + 2);
        SkipTo(close == std::string_view::npos ? end : at + close + length + 2);
        return true;
    }

    void SkipNumber()
    {
        for (++at; at < end; ++at) {
            const char c = *at;
            const char before = static_cast<char>(at[-1] | 0x20);
            const bool isSign = (c == '+' || c == '-') && (before == 'e' || before == 'p');
            const bool isSeparator = c == '\'' && at + 1 < end && IsInWord(at[1]);
            if (!IsInWord(c) && c != '.' && !isSign && !isSeparator)
                return;
        }
    }

    // The length of a line splice at 'place'; 0 if there is none.
    size_t SpliceAt(const char* place) const
    {
        if (end - place >= 2 && place[1] == '\n')
            return 2;
        return end - place >= 3 && place[1] == '\r' && place[2] == '\n' ? 3 : 0;
    }

    void SkipLiteral()
    {
        const char quote = *at++;
        while (at < end && *at != '\n') {
            const char c = *at;
            if (c == quote) {
                ++at;
                return;
            }
            if (c != '\\') {
                ++at;
            } else if (const size_t splice = SpliceAt(at)) {
                at += splice;
                ++line;
            } else {
                at += at + 1 < end && at[1] != '\n' ? 2 : 1;
            }
        }
    }

    void OnSlash()
    {
        if (Peek(1) == '/') {
            SkipToLineEnd();
        } else if (Peek(1) == '*') {
            SkipComment();
        } else {
            ++at;
            atLineStart = false;
        }
    }

    // Before the next line break that is not a splice.
    void SkipToLineEnd()
    {
        while (true) {
            const void* const found = std::memchr(at, '\n', static_cast<size_t>(end - at));
            const char* const stop = found == nullptr ? end : static_cast<const char*>(found);
            const char* last = stop;
            if (last > at && last[-1] == '\r')
                --last;
            const bool isSplice = stop != end && last > at && last[-1] == '\\';
            at = stop;
            if (!isSplice)
                return;
            ++at;
            ++line;
        }
    }

    void SkipComment()
    {
        const char* place = at + 2;
        while (place < end) {
            const void* const found = std::memchr(place, '/', static_cast<size_t>(end - place));
            if (found == nullptr)
                break;
            place = static_cast<const char*>(found) + 1;
            if (place - 3 >= at + 1 && place[-2] == '*' && place - 2 >= at + 2) {
                SkipTo(place);
                return;
            }
        }
        SkipTo(end);
    }

    void SkipTo(const char* place)
    {
        for (const char* from = at; from < place;) {
            const void* const found = std::memchr(from, '\n', static_cast<size_t>(place - from));
            if (found == nullptr)
                break;
            ++line;
            from = static_cast<const char*>(found) + 1;
        }
        at = place;
    }

    void SkipBlanks()
    {
        while (at < end && (*at == ' ' || *at == '\t'))
            ++at;
    }

    // After the '#'. The words of directives are names like others, but not those of an #include.
    void OnDirective()
    {
        SkipBlanks();
        const std::string_view directive = TakeWord();
        if (directive == "define")
            OnDefine();
        if (directive != "include" && directive != "import" && directive != "include_next")
            return;
        SkipBlanks();
        const char opening = Peek(0);
        if (opening != '"' && opening != '<')
            return;
        const char* const begin = ++at;
        const char closing = opening == '<' ? '>' : '"';
        while (at < end && *at != closing && *at != '\n')
            ++at;
        if (at < end && *at == closing) {
            const std::string_view name(begin, static_cast<size_t>(at - begin));
            facts.includes.push_back(
                {name, line, opening == '<' ? Facts::Include::Form::Angled : Facts::Include::Form::Quoted});
            ++at;
        }
    }

    // After "define". What follows is read again as names.
    void OnDefine()
    {
        SkipBlanks();
        if (at >= end || CharOf(*at) != Char::WordStart)
            return;
        const char* place = at;
        while (place < end && IsInWord(*place))
            ++place;
        const std::string_view name(at, static_cast<size_t>(place - at));
        const char* const after = place;
        if (place < end && *place == '(') {
            while (place < end && *place != ')' && *place != '\n' && *place != '\\')
                ++place;
            place = place < end && *place == ')' ? place + 1 : after;
        }
        facts.defines.push_back({name, {after, static_cast<size_t>(place - after)}, line});
    }

    // After the '@'.
    void OnAt()
    {
        if (at >= end || CharOf(*at) != Char::WordStart)
            return;
        const std::string_view word = TakeWord();
        if (word == "interface" || word == "implementation" || word == "protocol" || word == "class") {
            facts.hasObjectiveC = true;
        } else if (word == "import") {
            SkipBlanks();
            const char* const begin = at;
            while (at < end && (IsInWord(*at) || *at == '.'))
                ++at;
            if (at > begin)
                facts.includes.push_back(
                    {{begin, static_cast<size_t>(at - begin)}, line, Facts::Include::Form::Module});
        }
    }

    // After a colon.
    void OnColon()
    {
        if (at < end && *at == ':') {
            ++at;
            facts.mayBeCplusplus = true;
        }
    }

    // After the word. What follows is read again as names.
    void OnUsing()
    {
        const char* place = at;
        while (place < end && (CharOf(*place) == Char::Space || IsInWord(*place) || *place == ':'))
            ++place;
        std::string_view what(at, static_cast<size_t>(place - at));
        if (place == end || (*place != ';' && *place != ','))
            return;
        const auto isBlank = [](char c) { return CharOf(c) == Char::Space; };
        while (!what.empty() && isBlank(what.front()))
            what.remove_prefix(1);
        while (!what.empty() && isBlank(what.back()))
            what.remove_suffix(1);
        facts.usings.push_back({what, line});
    }

    const char* at;
    const char* const end;
    NameSet& known;
    unsigned line = 1;
    bool atLineStart = true; // only blanks and comments so far: a '#' begins a directive
    Facts facts;
};

Facts FactFinder::Find(std::string_view text)
{
    known.Clear();
    return Scan(text, known).Run();
}

} // namespace tagging
