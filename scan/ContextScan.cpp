#include "scan/ContextScan.h"

#include "plugin/PluginInterface.h"

#include <string_view>

namespace scan {

namespace {

bool IsOneOf(char ch, std::string_view characters)
{
    return characters.find(ch) != std::string_view::npos;
}

} // namespace

Context ContextScan::Run(PluginInterface* pi, long caret)
{
    for (offset = caret - 1; offset >= 0; --offset)
        if (!Step(pi->CharAt(offset)))
            return result;
    // What looked like a selector has no '[' before it; the text right of the caret may still show one.
    if (mode == Mode::Message)
        FindsNoMessage(Context::Kind::Unknown);
    return result;
}

bool ContextScan::Step(char ch)
{
    if (skipped.Takes(ch))
        return true;
    switch (mode) {
    case Mode::Qualifier:
        return StepQualifier(ch);
    case Mode::Message:
        return StepMessage(ch);
    case Mode::Start:
        break;
    }
    return StepStart(ch);
}

bool ContextScan::StepStart(char ch)
{
    if (colonPending && TakeBehindColon(ch))
        return true;
    if (IsOneOf(ch, ";,}{([<"))
        return false;
    if (IsIDChar(ch))
        TakeIdentifier();
    else
        TakeOther(ch);
    return true;
}

// "::" is a scope only while nothing lies between it and the caret that ends a C++ name. Behind a blank or an operator it
// belongs to another expression, and a selector may still be found.
bool ContextScan::TakeBehindColon(char ch)
{
    if (ch != ':' && ch != '>' && !IsIDChar(ch))
        return false;
    colonPending = false;
    if (IsIDChar(ch)) {
        mode = Mode::Message;
        result = {Context::Kind::Message, offset};
        pieceSeen = true;
    } else if (mayBeCpp) {
        mode = Mode::Qualifier;
        result.kind = Context::Kind::Name;
        afterScope = ch == ':';
        if (ch == '>')
            skipped.Enter(ch, offset);
    }
    return true;
}

void ContextScan::TakeIdentifier()
{
    result.start = offset;
    if (!leftFirstWord)
        firstWordStart = offset;
}

void ContextScan::TakeOther(char ch)
{
    leftFirstWord = true;
    colonPending = ch == ':';
    if (IsOneOf(ch, ")]\"'"))
        skipped.Enter(ch, offset);
    else if (ch != ':')
        mayBeCpp = false;
}

bool ContextScan::StepQualifier(char ch)
{
    if (ch == ':') {
        afterScope = colonPending;
        colonPending = !colonPending;
        return true;
    }
    // A single ':' ends the chain, and so do template arguments with no scope behind them: "a > b::c".
    const bool closesArguments = ch == '>' && afterScope;
    if (colonPending || !(IsIDChar(ch) || closesArguments))
        return false;
    afterScope = false;
    if (closesArguments)
        skipped.Enter(ch, offset);
    return true;
}

bool ContextScan::StepMessage(char ch)
{
    if (IsOneOf(ch, ";,}{(") || (ch == ':' && pieceSeen)) // "a:b:" too: the pieces of a message have arguments
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

// The selector starts with the leftmost piece, but the last character of a piece does not move the start: a piece of one
// character is passed over, and the selector of "[x a:1 bc:2 d:" is looked up from "bc:" on. A single letter before a colon
// is more often the middle of a '?:' than a piece.
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
