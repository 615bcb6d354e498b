#include "vetch/support/ShellEscape.h"

#include <cstring>

namespace {

bool NeedsNoEscape(char character)
{
    const auto byte = static_cast<unsigned char>(character);
    if (byte >= 0x80 || (byte >= '0' && byte <= '9'))
        return true;
    if ((byte >= 'A' && byte <= 'Z') || (byte >= 'a' && byte <= 'z'))
        return true;
    return byte != '\0' && std::strchr("_./-+,:@%=", byte) != nullptr;
}

// A backslash before a line break joins two lines in a shell, so quotes are needed.
constexpr const char kEscapedLineBreak[] = "'\n'";

// A shell reader's position in a command text: in quotes, in a comment, behind a backslash, or plain.
class ShellReader {
public:
    // Steps past 'character'; true when it is a bare parenthesis.
    bool StepsOverBareParenthesis(char character)
    {
        switch (state) {
        case State::Plain:
            return StepInPlainText(character);
        case State::Escaped:
            state = State::Plain;
            if (character != '\n') // a joined line may continue a word or begin one
                atWordStart = false;
            return false;
        case State::Comment:
            if (character == '\n')
                state = State::Plain;
            return false;
        case State::SingleQuotes:
            if (character == '\'')
                state = State::Plain;
            return false;
        case State::DoubleQuotes:
            if (character == '\\')
                state = State::EscapedInDoubleQuotes;
            else if (character == '"')
                state = State::Plain;
            return false;
        case State::EscapedInDoubleQuotes:
            state = State::DoubleQuotes;
            return false;
        }
        return false;
    }

private:
    enum class State { Plain, Escaped, Comment, SingleQuotes, DoubleQuotes, EscapedInDoubleQuotes };

    bool StepInPlainText(char character)
    {
        state = StateAfter(character);
        // After a backslash the next character decides. A parenthesis does not start a word: it gets a backslash and so
        // belongs to one.
        if (state != State::Escaped && state != State::Comment)
            atWordStart = character != '\0' && std::strchr(" \t\n;&|<>", character) != nullptr;
        return character == '(' || character == ')';
    }

    State StateAfter(char character) const
    {
        switch (character) {
        case '\\':
            return State::Escaped;
        case '\'':
            return State::SingleQuotes;
        case '"':
            return State::DoubleQuotes;
        case '#':
            return atWordStart ? State::Comment : State::Plain;
        default:
            return State::Plain;
        }
    }

    State state = State::Plain;
    bool atWordStart = true; // stays true through a comment: the line after it begins with a word
};

} // namespace

void ReplaceAll(std::string& text, const char* pattern, const char* with)
{
    const size_t length = std::strlen(pattern);
    if (length == 0)
        return;
    std::string result;
    size_t copied = 0;
    for (size_t found = text.find(pattern); found != std::string::npos; found = text.find(pattern, copied)) {
        result.append(text, copied, found - copied).append(with);
        copied = found + length;
    }
    text = result.append(text, copied);
}

void ReplaceFirst(std::string& text, const char* pattern, const char* with)
{
    const size_t length = std::strlen(pattern);
    const size_t found = text.find(pattern);
    if (length != 0 && found != std::string::npos)
        text.replace(found, length, with);
}

std::string EscapedPath(const std::string& path)
{
    const bool inHome = path.starts_with("~/");
    std::string escaped = inHome ? "~/" : "";
    for (const char character : path.substr(inHome ? 2 : 0)) {
        if (character == '\n') {
            escaped += kEscapedLineBreak;
            continue;
        }
        if (!NeedsNoEscape(character))
            escaped += '\\';
        escaped += character;
    }
    return escaped;
}

std::string DeEscaped(const std::string& text)
{
    if (text.find('\\') == std::string::npos && text.find(kEscapedLineBreak) == std::string::npos)
        return text;
    std::string plain;
    for (size_t i = 0; i < text.size(); ++i) {
        if (text.compare(i, 3, kEscapedLineBreak) == 0) {
            plain += '\n';
            i += 2;
        } else if (text[i] == '\\' && i + 1 < text.size()) {
            plain += text[++i];
        } else {
            plain += text[i];
        }
    }
    return plain;
}

void ShellEscapeString(std::string& commands)
{
    ShellReader reader;
    std::string escaped;
    for (const char character : commands) {
        if (reader.StepsOverBareParenthesis(character))
            escaped += '\\';
        escaped += character;
    }
    commands = escaped;
}
