// How a name is used: what its neighbours say about what it can mean.
#pragma once

#include "resolve/Tokens.h"
#include "resolve/Type.h"
#include "tagging/ParsedSource.h"

#include <optional>
#include <vector>

namespace resolve {

struct Usage {
    enum class Form {
        Value,     // "x + 1"
        Call,      // "x(1)", "x<T>(1)"
        Type,      // "X y", "X* y", "X<T>"
        Tag,       // "struct x"
        Scope,     // "x::"
        Macro,     // "#ifdef x"
        Label,     // "goto x"
        Namespace, // "using namespace x"
        Protocol,  // "@protocol(x)", "id<x>"
        Receiver,  // "[x message]"
    };
    enum class Access { None, Member, Scope, Message, Designator, Selector };

    Form form = Form::Value;
    Access access = Access::None;
    std::optional<size_t> arguments = {}; // of a call
    std::vector<Type> passed = {};        // their types, as far as they are known
    bool isNew = false;                   // "new X(...)"
    bool isConstant = false;              // the receiver is const: so are the members that fit
};

Usage UsageAt(const Tokens& tokens, size_t word, bool isObjectiveC);

// The '(' of a call's arguments.
size_t ArgumentsBegin(const Tokens& tokens, size_t word);

// 0 when the kind fits best; from kUnfit on only when nothing else is found.
int Misfit(const tagging::Symbol& symbol, const Usage& use);
inline constexpr int kUnfit = 5;

} // namespace resolve
