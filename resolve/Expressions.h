// The types of expressions.
#pragma once

#include "resolve/Classes.h"
#include "resolve/Locals.h"
#include "resolve/Names.h"

#include <optional>
#include <string>
#include <string_view>

namespace resolve {

class Expressions {
public:
    // 'tokens' are those of the text, or of one directive in it.
    Expressions(World& world, Classes& classes, Names& names, const Tokens& tokens)
        : world(world), classes(classes), names(names), tokens(tokens)
    {
    }

    // Of the tokens [begin, end); unknown when nothing is found out. 'depth' limits chains of declarations. Defined
    // with the reader, which needs the rest of this class.
    Type TypeOf(size_t begin, size_t end, int depth = 0);

    // Of a name that a function declares.
    Type TypeOfLocal(const LocalName& local, int depth = 0);

    // What "->" refers to: of a pointer, a smart pointer or an iterator.
    Type BehindArrow(const Type& type);

    // The value's type of a member that is used, with the call's result for a function. 'written' are arguments of its
    // template.
    Type TypeOfMember(const Type& of, std::string_view name, std::optional<size_t> arguments,
                      const std::vector<Type>& written = {});

    // Of the receiver of the message around a word of its selector.
    Type Receiver(size_t word, int depth = 0);

    // Of the arguments of a call.
    std::vector<Type> Passed(size_t open);

    bool IsInConstantMethod(size_t place);

    // The class around the place, as "this" and "self" see it.
    Type Self(size_t place);

    // The type that a designated initialiser's names belong to: "struct ops x = { .open| = f }".
    Type Initialized(size_t brace, int depth = 0);

private:
    class Reader;
    static constexpr int kDeepest = 12; // of expressions, declarations and initialisers within each other

    Type TypeFromTokens(Tokens::Range range);
    Type TypeOfMessage(const Type& receiver, const std::string& selector);
    bool IsTypeName(std::string_view name);

    World& world;
    Classes& classes;
    Names& names;
    const Tokens& tokens;
};

} // namespace resolve
