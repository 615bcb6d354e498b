// How well a member fits behind a ".", "->" or "::" before anything of its name is typed.
#pragma once

#include "resolve/Nearby.h"
#include "resolve/Question.h"

#include <cstdint>
#include <map>
#include <set>
#include <string>
#include <string_view>

namespace resolve {

// What the text asks of the name at a place.
struct Wanted {
    enum class Role {
        Any,
        Effect,   // a statement begins here: what is called for its effect
        Value,    // an operand
        Constant, // "case A::"
        Type,     // "const std::", "<std::"
    };
    Role role = Role::Any;
    Type type; // of the value, when the text says it: "Shape* s = x."
};

// 'sign' is the ".", "->" or "::" before the place.
Wanted WantedBehind(Question& question, size_t sign);

class Fitness {
public:
    // 'place' is the index of the first token from the place on. The question must outlive this.
    Fitness(Question& question, size_t place, size_t sign);

    // Which of the symbols the text has used last behind the same receiver: what is declared next is often used next.
    std::string_view LastUsed() const { return last; }
    static constexpr std::uint64_t kNextDeclared = (std::uint64_t{1} << 32) / 50;

    // Greater is better. Names that the text uses come before those that the project uses, and these before others.
    // 'depth' is how many steps of bases away the member is declared.
    std::uint64_t Of(const Symbol& symbol, size_t depth, bool isNextDeclared);

private:
    std::uint64_t InProject(const Symbol& symbol);
    std::uint64_t Weighed(const Symbol& symbol, std::uint64_t fitness) const; // by what is wanted
    bool IsElsewhere(const Symbol& symbol);
    bool IsAccessible(const Symbol& symbol) const;
    bool HasWantedType(const Symbol& symbol) const;

    Question& question;
    const Nearby nearby;
    const Wanted wanted;
    const std::map<std::string, int> around; // scopes
    const bool isScope;                      // behind a "::"
    const std::string_view last;
    std::set<std::string_view> cases; // other ones of the same switch
    size_t asked = 0;
};

} // namespace resolve
