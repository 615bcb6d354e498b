// The conditions of the preprocessor around a place in a source, when nothing is known about what they say.
#pragma once

#include "tagging/tokens/SourceTokens.h"

#include <optional>
#include <vector>

namespace tagging {

// All branches are read, each as if the ones before it were not there: each begins with the same 'State' of the reader.
// What follows them goes on from the end of the first: "#if NEW", "@protocol P", "#else", "@interface NSObject (P)",
// "#endif" and methods.
//
// There are two exceptions. Code put away with "#if 0" is not read; and inside of a declaration only the first branch
// is: two together would be none that anybody wrote.
template <class State>
class Conditions {
public:
    enum class Skip : char { kNo, kPutAway, kOtherBranch };

    // Whether what follows is to be passed over, and why.
    Skip Skipping() const { return skip; }

    // Whether a branch ends here, and what it began is to be ended before the directive is followed.
    bool EndsBranch(const Directive& directive) const
    {
        if (skip != Skip::kNo || branches.empty() || branches.back().isInDeclaration)
            return false;
        return directive.ContinuesBranches() || (directive.EndsBranches() && branches.back().afterFirst);
    }

    // Goes on behind the directive. 'state' becomes that of what follows.
    void Follow(const Directive& directive, State& state, bool isInDeclaration)
    {
        if (directive.BeginsBranches())
            Begin(directive, state, isInDeclaration);
        else if (!branches.empty() && directive.ContinuesBranches())
            Continue(directive, state);
        else if (!branches.empty() && directive.EndsBranches())
            End(state);
    }

private:
    struct Branches {
        State before;
        std::optional<State> afterFirst; // once there is a second
        Skip skipAround = Skip::kNo;
        bool isInDeclaration = false;
        bool hadOneToRead = false;
    };

    void Begin(const Directive& directive, const State& state, bool isInDeclaration)
    {
        const Skip around = skip;
        if (skip == Skip::kNo && directive.IsNever())
            skip = Skip::kPutAway;
        branches.push_back({state, std::nullopt, around, isInDeclaration, skip == Skip::kNo});
    }

    void Continue(const Directive& directive, State& state)
    {
        Branches& all = branches.back();
        if (all.skipAround != Skip::kNo)
            return;
        if (EndsBranch(directive)) {
            if (!all.afterFirst)
                all.afterFirst = state;
            state = all.before;
        }
        if (all.isInDeclaration && all.hadOneToRead)
            skip = Skip::kOtherBranch;
        else
            skip = directive.IsNever() ? Skip::kPutAway : Skip::kNo;
        all.hadOneToRead |= skip == Skip::kNo;
    }

    void End(State& state)
    {
        if (branches.back().afterFirst)
            state = *branches.back().afterFirst;
        skip = branches.back().skipAround;
        branches.pop_back();
    }

    std::vector<Branches> branches;
    Skip skip = Skip::kNo;
};

} // namespace tagging
