// Which mentions of a name provably mean something else.
#pragma once

#include "resolve/Meaning.h"
#include "resolve/Question.h"

#include <optional>

namespace resolve {

// The one thing that the name at a place means. A mention counts unless it is impossible that it means this: with
// macros, templates and unknown types around, many stay possible. The question and its meanings must outlive it.
class MeantThing {
public:
    MeantThing() = default; // anything
    // Anything, too, when the meanings, best first, do not say for sure what it is.
    MeantThing(Question& question, const MeaningList& meanings);

    bool MayBeIn(symbols::FileNumber file);         // whether any mention in the file may be it
    bool MayBeBehindDot() const { return !isFree; } // or "->"
    bool MayBe(const Symbol& declared) const;       // a declaration of the name

private:
    bool IsOfProject() const;
    bool HasSystemBase() const;
    bool IsOfOneSource() const;
    bool IsIncludedAnywhere(symbols::FileNumber file) const;

    Question* question = nullptr; // null for anything
    const MeaningList* meanings = nullptr;
    Symbol thing;
    bool isFree = false;               // a function, a variable or an enumerator outside of classes
    std::optional<bool> isOfProject;   // headers of the system do not know it; unset until it is needed
    std::optional<bool> isOfOneSource; // other sources do not know it; the same
};

} // namespace resolve
