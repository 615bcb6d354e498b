#include "tagging/tokens/SourceTokens.h"

#include <algorithm>
#include <array>
#include <cstring>

namespace tagging {

namespace {

enum CharacterClass : unsigned char { kOther, kBlank, kLetter, kDigit };

constexpr std::array<CharacterClass, 256> Classes()
{
    std::array<CharacterClass, 256> classes{};
    for (unsigned c = 0; c < 256; ++c) {
        if (c == ' ' || (c >= '\t' && c <= '\r') || c == '\0')
            classes[c] = kBlank;
        else if ((c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_' || c == '$' || c >= 0x80)
            classes[c] = kLetter;
        else if (c >= '0' && c <= '9')
            classes[c] = kDigit;
    }
    return classes;
}
constexpr std::array<CharacterClass, 256> kClasses = Classes();

CharacterClass ClassOf(char c)
{
    return kClasses[static_cast<unsigned char>(c)];
}

bool BelongsToWord(char c)
{
    return ClassOf(c) >= kLetter;
}

bool BeginsRawString(std::string_view prefix)
{
    return prefix == "R" || prefix == "LR" || prefix == "uR" || prefix == "UR" || prefix == "u8R";
}

} // namespace

// The length of the line splice at 'at'; 0 if there is none.
size_t SourceTokens::SpliceAt(size_t at) const
{
    if (At(at) != '\\')
        return 0;
    if (At(at + 1) == '\n')
        return 2;
    return At(at + 1) == '\r' && At(at + 2) == '\n' ? 3 : 0;
}

// The next line break that is not a splice, or the end of the text.
size_t SourceTokens::LineEndOf(size_t at) const
{
    while (true) {
        const size_t end = std::min(text.find('\n', at), text.size());
        const size_t last = end > at && text[end - 1] == '\r' ? end - 1 : end;
        if (end == text.size() || last == at || text[last - 1] != '\\')
            return end;
        at = end + 1;
    }
}

// 'at' is at the slash. Returns the end of the comment, or 'at' if it is not a comment.
size_t SourceTokens::CommentEnd(size_t at) const
{
    if (At(at + 1) == '/')
        return LineEndOf(at + 2);
    if (At(at + 1) != '*')
        return at;
    const size_t end = text.find("*/", at + 2);
    return end == std::string_view::npos ? text.size() : end + 2;
}

// A comment may extend a directive over several lines; quotes hide apparent comments.
size_t SourceTokens::DirectiveEnd() const
{
    size_t at = place;
    while (at < text.size() && text[at] != '\n') {
        if (const size_t splice = SpliceAt(at))
            at += splice;
        else if (text[at] == '/')
            at = std::max(CommentEnd(at), at + 1);
        else if (text[at] == '"' || text[at] == '\'')
            at = LiteralEnd(at);
        else
            ++at;
    }
    return std::min(at, text.size());
}

size_t SourceTokens::WordEnd() const
{
    size_t at = place;
    while (at < text.size()) {
        if (BelongsToWord(text[at])) {
            ++at;
            continue;
        }
        const size_t splice = SpliceAt(at);
        if (splice == 0 || !BelongsToWord(At(at + splice)))
            break;
        at += splice;
    }
    return at;
}

size_t SourceTokens::NumberEnd() const
{
    size_t at = place + 1;
    for (; at < text.size(); ++at) {
        const char c = text[at];
        const char before = static_cast<char>(text[at - 1] | 0x20);
        const bool sign = (c == '+' || c == '-') && (before == 'e' || before == 'p');
        const bool separator = c == '\'' && BelongsToWord(At(at + 1));
        if (!BelongsToWord(c) && c != '.' && !sign && !separator)
            break;
    }
    return at;
}

// 'at' is at the quote. A literal that is not closed ends before its line break.
size_t SourceTokens::LiteralEnd(size_t at) const
{
    const char quote = text[at++];
    while (at < text.size() && text[at] != '\n') {
        if (const size_t splice = SpliceAt(at))
            at += splice;
        else if (text[at] == '\\' && At(at + 1) != '\n')
            at += 2;
        else if (text[at++] == quote)
            return at;
    }
    return std::min(at, text.size());
}

// 'quote' is at the quote after the prefix. Returns 'quote' if it is not a raw string.
size_t SourceTokens::RawStringEnd(size_t quote) const
{
    constexpr size_t kLongestDelimiter = 16;
    const std::string_view start = text.substr(quote + 1, kLongestDelimiter + 1);
    const size_t length = start.find_first_of("( )\\\t\v\f\n\"");
    if (length == std::string_view::npos || start[length] != '(')
        return quote;
    const std::string ending = ")" + std::string(start.substr(0, length)) + "\"";
    const size_t end = text.find(ending, quote + length + 2);
    return end == std::string_view::npos ? text.size() : end + ending.size();
}

size_t SourceTokens::TokenEnd(Token::Kind& kind) const
{
    const char c = text[place];
    if (ClassOf(c) == kLetter) {
        const size_t end = WordEnd();
        if (At(end) == '"' && BeginsRawString(text.substr(place, end - place))) {
            kind = Token::kLiteral;
            const size_t rawEnd = RawStringEnd(end);
            return rawEnd == end ? LiteralEnd(end) : rawEnd;
        }
        kind = Token::kWord;
        return end;
    }
    if (ClassOf(c) == kDigit || (c == '.' && ClassOf(At(place + 1)) == kDigit)) {
        kind = Token::kNumber;
        return NumberEnd();
    }
    if (c == '"' || c == '\'') {
        kind = Token::kLiteral;
        return LiteralEnd(place);
    }
    if (c == '#' && atLineStart) {
        kind = Token::kDirective;
        return DirectiveEnd();
    }
    kind = Token::kMark;
    return c == '-' && At(place + 1) == '>' ? place + 2 : place + 1;
}

void SourceTokens::SkipTo(size_t end)
{
    line += static_cast<unsigned>(std::count(text.begin() + place, text.begin() + end, '\n'));
    place = end;
}

void SourceTokens::SkipBlanksAndComments()
{
    while (place < text.size()) {
        const char c = text[place];
        if (c == '\n') {
            ++line;
            ++place;
            atLineStart = true;
        } else if (ClassOf(c) == kBlank) {
            ++place;
        } else if (const size_t splice = SpliceAt(place)) {
            SkipTo(place + splice);
        } else if (c == '/') {
            const size_t end = CommentEnd(place);
            if (end == place)
                return;
            SkipTo(end);
        } else {
            return;
        }
    }
}

bool SourceTokens::Next(Token& token)
{
    SkipBlanksAndComments();
    if (place == text.size())
        return false;
    const size_t end = TokenEnd(token.kind);
    token.text = text.substr(place, end - place);
    token.line = line;
    atLineStart = false;
    if (token.kind == Token::kMark)
        place = end;
    else
        SkipTo(end);
    return true;
}

std::string WithoutSplices(std::string_view word)
{
    std::string plain(word);
    std::erase_if(plain, [](char c) { return !BelongsToWord(c); });
    return plain;
}

Directive::Directive(std::string_view text)
{
    const auto isBlank = [](char c) { return c == ' ' || c == '\t'; };
    auto begin = std::find_if_not(text.begin() + 1, text.end(), isBlank);
    auto end = std::find_if_not(begin, text.end(), BelongsToWord);
    name = std::string_view(begin, end);
    rest = std::string_view(end, text.end());
}

bool Directive::ContinuesBranches() const
{
    return name == "else" || name == "elif" || name == "elifdef" || name == "elifndef";
}

bool Directive::IsNever() const
{
    if (name != "if" && name != "elif")
        return false;
    SourceTokens tokens(rest);
    Token token;
    Token next;
    return tokens.Next(token) && token.text == "0" && !tokens.Next(next);
}

} // namespace tagging
