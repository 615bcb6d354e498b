#include "scan/ContextScan.h"

#include "scan/Text.h"

#include <string_view>

namespace scan {

namespace {

bool IsOneOf(char ch, std::string_view characters)
{
    return characters.find(ch) != std::string_view::npos;
}

} // namespace

Context ContextScan::Run(const Text& text, long caret)
{
    for (offset = caret - 1; offset >= 0; --offset)
        if (!Step(text.At(offset)))
            return result;
    // The supposed selector has no '[' before it; the text right of the caret may still show one.
    if (result.kind == Context::Kind::Message)
        FindsNoMessage(Context::Kind::Unknown);
    return result;
}

bool ContextScan::Step(char ch)
{
    if (skipped.Takes(ch))
        return true;
    return result.kind == Context::Kind::Message ? StepMessage(ch) : StepOutside(ch);
}

bool ContextScan::StepOutside(char ch)
{
    // "::" is a scope only if nothing between it and the caret ends a C++ name. Behind a blank or an operator it
    // belongs to another expression, and a message may still follow. ">:" becomes a scope with the next key.
    if (colonPending && mayBeCpp && (ch == ':' || ch == '>'))
        return FindsNoMessage(Context::Kind::Name);
    if (IsOneOf(ch, ";,}{([<"))
        return false;
    if (IsIDChar(ch))
        TakeIdentifier();
    else
        TakeSeparator(ch);
    return true;
}

void ContextScan::TakeIdentifier()
{
    result.start = offset;
    if (!leftFirstWord)
        firstWordStart = offset;
    if (colonPending) {
        result.kind = Context::Kind::Message;
        pieceSeen = true;
        colonPending = false;
    }
}

void ContextScan::TakeSeparator(char ch)
{
    leftFirstWord = true;
    colonPending = ch == ':' && !colonPending;
    if (IsOneOf(ch, ")]\"'"))
        skipped.Enter(ch, offset);
    else if (ch != ':')
        mayBeCpp = false;
}

bool ContextScan::StepMessage(char ch)
{
    if (IsOneOf(ch, ";,}{(") || (ch == ':' && pieceSeen)) // "a:b:" too: pieces have arguments
        return FindsNoMessage(Context::Kind::Name);
    if (ch == '[')
        return false;
    if (IsIDChar(ch)) {
        TakeMessageIdentifier();
        return true;
    }
    pieceSeen = false;
    colonPending = ch == ':';
    if (IsOneOf(ch, ")]\"'"))
        skipped.Enter(ch, offset);
    return true;
}

// The selector starts with its leftmost piece, but the last character of a piece does not move the start. A piece of
// one character is thus skipped: the selector of "[x a:1 bc:2 d:" starts at "bc:". A single letter before a colon is
// more often the middle of a '?:' than a piece.
void ContextScan::TakeMessageIdentifier()
{
    if (pieceSeen)
        result.start = offset;
    pieceSeen = pieceSeen || colonPending;
    colonPending = false;
}

bool ContextScan::FindsNoMessage(Context::Kind kind)
{
    result = {kind, firstWordStart};
    return false;
}

} // namespace scan
