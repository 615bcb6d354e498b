// Tracks preprocessor conditions around a place in a source. Their values are unknown.
#pragma once

#include "tagging/tokens/SourceTokens.h"

#include <optional>
#include <vector>

namespace tagging {

// All branches are read, each from the 'State' before the first. After #endif, reading continues with the state at the
// end of the first branch: "#if NEW", "@protocol P", "#else", "@interface NSObject (P)", "#endif" and methods.
//
// There are two exceptions. Code in "#if 0" is skipped. Inside a declaration only the first branch is read: the
// branches together would not be a valid declaration.
template <class State>
class Conditions {
public:
    enum class Skip : char { No, PutAway, OtherBranch };

    // Whether the following code is skipped, and why.
    Skip Skipping() const { return skip; }

    // Whether the directive ends a branch, whose open declarations must be finished first.
    bool EndsBranch(const Directive& directive) const
    {
        if (skip != Skip::No || branches.empty() || branches.back().isInDeclaration)
            return false;
        return directive.ContinuesBranches() || (directive.EndsBranches() && branches.back().afterFirst);
    }

    // Processes the directive; 'state' becomes that of the following code.
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
        std::optional<State> afterFirst; // set by the second branch
        Skip skipAround = Skip::No;
        bool isInDeclaration = false;
        bool hadOneToRead = false;
    };

    void Begin(const Directive& directive, const State& state, bool isInDeclaration)
    {
        const Skip around = skip;
        if (skip == Skip::No && directive.IsNever())
            skip = Skip::PutAway;
        branches.push_back({state, std::nullopt, around, isInDeclaration, skip == Skip::No});
    }

    void Continue(const Directive& directive, State& state)
    {
        Branches& all = branches.back();
        if (all.skipAround != Skip::No)
            return;
        if (EndsBranch(directive)) {
            if (!all.afterFirst)
                all.afterFirst = state;
            state = all.before;
        }
        if (all.isInDeclaration && all.hadOneToRead)
            skip = Skip::OtherBranch;
        else
            skip = directive.IsNever() ? Skip::PutAway : Skip::No;
        all.hadOneToRead |= skip == Skip::No;
    }

    void End(State& state)
    {
        if (branches.back().afterFirst)
            state = *branches.back().afterFirst;
        skip = branches.back().skipAround;
        branches.pop_back();
    }

    std::vector<Branches> branches;
    Skip skip = Skip::No;
};

} // namespace tagging
