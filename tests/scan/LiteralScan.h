// The rules of the pattern scanner written down as one flat list of steps, with no regard for structure: what the
// scanner in scan/ is compared with on random documents. Shares no code with it.
#pragma once

#include "tests/support/FakeHost.h"

#include <cctype>
#include <string>

class LiteralScan {
public:
    explicit LiteralScan(FakeHost& host) : host(host) {}

    long start = -99;
    long end = -98;
    std::string pattern;

    bool Run(long selStart, long selEnd, bool forCompletion);

private:
    static bool Id(char c) { return std::isalnum(static_cast<unsigned char>(c)) || c == '_'; }
    static bool Opens(char c, char closer)
    {
        return (closer == ')' && c == '(') || (closer == ']' && c == '[') || (closer == '>' && c == '<');
    }

    void Context(long selEnd);
    bool Selector(long selEnd, bool forCompletion);
    bool Name(long wordEnd, long selStart);

    FakeHost& host;
    bool qualifier = false, message = false, found = false;
    long scanStart = -1;
};

inline bool LiteralScan::Run(long selStart, long selEnd, bool forCompletion)
{
    const long length = host.TextLength();
    if (host.LineAt(selStart) != host.LineAt(selEnd) || selEnd - selStart > 1024)
        return false;
    Context(selEnd);
    if (!forCompletion && !qualifier && !found) {
        long at = selEnd;
        while (at < length && Id(host.CharAt(at)))
            ++at;
        if (at < length && host.CharAt(at) == ':' && host.CharAt(at + 1) != ':')
            return Selector(selEnd, false);
        if (at < length)
            message = false;
    }
    if (message)
        return Selector(selEnd, forCompletion);
    if (forCompletion)
        return Name(selEnd, selStart);

    long at = selEnd, depth = 0, open = 0;
    while (at < length) {
        const char c = host.CharAt(at);
        if (depth > 0) {
            if (c == '<')
                ++depth;
            if (c == '>')
                --depth;
        } else if (c == ':') {
            ++at;
            if (host.CharAt(at) != ':')
                break;
        } else if (c == '<') {
            depth = 1;
            open = at;
        } else if (!Id(c)) {
            break;
        }
        ++at;
    }
    return Name(depth > 0 ? open - 1 : at, selStart);
}

inline void LiteralScan::Context(long selEnd)
{
    bool inQuote = false, pending = false, afterScope = false, piece = false, mayBeCpp = true, leftFirst = false;
    char quote = 0, closer = 0;
    long depth = 0, firstWord = -1;
    for (long steps = 0;; ++steps) {
        if (steps == selEnd) {
            found = false;
            if (message) {
                scanStart = firstWord;
                message = false;
            }
            return;
        }
        const long at = selEnd - 1 - steps;
        const char c = host.CharAt(at);
        if (qualifier) {
            if (depth >= 1) {
                if (Opens(c, closer))
                    --depth;
                else if (c == closer)
                    ++depth;
            } else if (!pending) {
                if (c == ':') {
                    pending = true;
                } else if (c == '>') {
                    if (!afterScope)
                        return;
                    ++depth;
                    closer = '>';
                    afterScope = false;
                } else if (Id(c)) {
                    scanStart = at;
                    afterScope = false;
                } else {
                    return;
                }
            } else if (c == ':') {
                afterScope = true;
                pending = false;
            } else {
                return;
            }
        } else if (message) {
            if (inQuote) {
                if (c == quote)
                    inQuote = false;
            } else if (depth >= 1) {
                if (Opens(c, closer))
                    --depth;
                else if (c == closer)
                    ++depth;
            } else if (Id(c)) {
                if (piece) {
                    scanStart = at;
                    pending = false;
                } else if (pending) {
                    piece = true;
                    pending = false;
                } else {
                    piece = false;
                }
            } else if (c == '"' || c == '\'') {
                quote = c;
                inQuote = true;
                piece = pending = false;
            } else if (c == ':') {
                if (piece) {
                    scanStart = firstWord;
                    message = false;
                    found = true;
                    return;
                }
                pending = true;
                piece = false;
            } else if (c == ')' || c == ']') {
                ++depth;
                closer = c;
                piece = pending = false;
            } else if (c == ';' || c == ',' || c == '}' || c == '{' || c == '(') {
                scanStart = firstWord;
                message = false;
                found = true;
                return;
            } else if (c == '[') {
                return;
            } else {
                pending = piece = false;
            }
        } else if (inQuote) {
            if (c == quote)
                inQuote = false;
        } else if (depth >= 1) {
            if (Opens(c, closer))
                --depth;
            else if (c == closer)
                ++depth;
        } else if (pending && c == ':') {
            afterScope = true;
            pending = false;
            if (mayBeCpp)
                qualifier = true;
        } else if (pending && c == '>') {
            pending = false;
            if (mayBeCpp) {
                ++depth;
                closer = '>';
                qualifier = true;
            }
        } else if (pending && Id(c)) {
            scanStart = at;
            message = piece = true;
            pending = false;
        } else if (c == ':') {
            leftFirst = pending = true;
        } else if (c == ';' || c == ',' || c == '}' || c == '{' || c == '(' || c == '[' || c == '<') {
            return;
        } else if (c == ')' || c == ']') {
            leftFirst = true;
            ++depth;
            closer = c;
            pending = false;
        } else if (c == '"' || c == '\'') {
            leftFirst = inQuote = true;
            quote = c;
            pending = false;
        } else if (!Id(c)) {
            leftFirst = true;
            mayBeCpp = pending = false;
        } else {
            if (!leftFirst)
                firstWord = at;
            scanStart = at;
            pending = false;
        }
    }
}

inline bool LiteralScan::Selector(long selEnd, bool forCompletion)
{
    std::string selector, piece;
    char quote = 0, opener = 0;
    long depth = 0, at = scanStart, place = scanStart;
    for (; at < host.TextLength(); ++at) {
        if (forCompletion && at == selEnd)
            break;
        const char c = host.CharAt(at);
        if (quote != 0) {
            if (c == quote)
                quote = 0;
        } else if (depth > 0) {
            if ((opener == '(' && c == ')') || (opener == '[' && c == ']'))
                --depth;
            else if (c == opener)
                ++depth;
        } else if (c == '"' || c == '\'') {
            piece = "";
            quote = c;
        } else if (c == '(' || c == '[') {
            piece = "";
            depth = 1;
            opener = c;
        } else if (c == ':') {
            selector += piece + ":";
            piece = "";
            place = at + 1;
        } else if (c == ']' || c == ')' || c == '}' || c == ';') {
            break;
        } else if (!Id(c)) {
            piece = "";
        } else {
            piece += c;
        }
    }
    if (forCompletion)
        selector += piece;
    if (selector.size() > 1024)
        return false;
    pattern = selector;
    end = place;
    start = end - static_cast<long>(pattern.size());
    return true;
}

inline bool LiteralScan::Name(long wordEnd, long selStart)
{
    long at = wordEnd - 1, depth = 0, open = 0, wordStart = 0;
    for (;;) {
        const char c = host.CharAt(at);
        if (depth > 0) {
            if (c == '>')
                ++depth;
            else if (c == '<')
                --depth;
        } else if (c == '>') {
            depth = 1;
            open = at;
        } else if (c == ':') {
            if (host.CharAt(at - 1) == ':') {
                --at;
            } else if (at != wordEnd - 1 || !Id(host.CharAt(at - 1))) {
                wordStart = at + 1;
                break;
            }
        } else if (!Id(c)) {
            wordStart = at + 1;
            break;
        }
        if (at <= 0) {
            wordStart = 0;
            break;
        }
        --at;
    }
    if (depth > 0)
        wordStart = open + 1;
    if (wordStart >= wordEnd || wordStart > selStart)
        return false;
    pattern = host.text.substr(wordStart, wordEnd - wordStart);
    if (pattern.size() > 5 && pattern.substr(0, 5) == "std::")
        pattern = pattern.substr(5);
    end = wordEnd;
    start = end - static_cast<long>(pattern.size());
    return true;
}
