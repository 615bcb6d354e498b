#include "resolve/Messages.h"

namespace resolve {

std::string SelectorAt(const Tokens& tokens, size_t word)
{
    const size_t open = tokens[word].parent;
    const size_t close = open == kNone || tokens[open].match == kNone ? tokens.Count() : tokens[open].match;
    std::string selector;
    int conditions = 0;
    for (size_t i = open == kNone ? 0 : open + 1; i < close; ++i) {
        if (tokens[i].Is('?')) {
            ++conditions;
        } else if (tokens[i].Is(':')) {
            if (conditions > 0) {
                --conditions;
                continue;
            }
            if (tokens[i - 1].IsWord() && (i - 1 > open + 1 || tokens[open - 1].text == "selector"))
                selector += tokens[i - 1].text;
            selector += ':';
        }
        if (tokens[i].match != kNone && tokens[i].match > i)
            i = tokens[i].match;
    }
    return selector.empty() ? std::string(tokens[word].text) : selector;
}

std::optional<Tokens::Range> ReceiverOf(const Tokens& tokens, size_t word)
{
    const size_t open = tokens[word].parent;
    if (open == kNone)
        return std::nullopt;
    // The receiver ends before the first word of the selector.
    size_t end = word;
    for (size_t i = open + 1; i < word; ++i) {
        if (tokens[i].Is(':') && tokens[i - 1].IsWord() && i - 1 > open + 1) {
            end = i - 1;
            break;
        }
        if (tokens[i].Is('?'))
            break;
        if (tokens[i].match != kNone && tokens[i].match > i)
            i = tokens[i].match;
    }
    return Tokens::Range{open + 1, end};
}

} // namespace resolve
