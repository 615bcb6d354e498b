// One question about one place.
#pragma once

#include "resolve/Classes.h"
#include "resolve/Expressions.h"
#include "resolve/Meaning.h"
#include "resolve/Names.h"
#include "resolve/ParsedText.h"
#include "resolve/World.h"

#include <memory>
#include <optional>
#include <string>

namespace resolve {

class Question {
public:
    Question(const symbols::Snapshot& snapshot, const Sources& sources, ParsedTextPointer text, size_t offset,
             symbols::Limits limits, KnownFiles* known);

    // Everything that the name may mean, best first.
    MeaningList Meanings();

    const std::string& Name() const { return name; } // what is asked: the name, a selector, or an include's path
    const std::optional<LocalName>& Local() const { return local; }
    const Symbol* Self() const { return self ? &*self : nullptr; } // the declaration that the place is in the name of

    World& GetWorld() { return world; }
    Classes& GetClasses() { return classes; }
    Names& GetNames() { return names; }
    Expressions& GetExpressions() { return expressions; }
    const Tokens& GetTokens() const { return *tokens; } // of the text, or of the directive at the place
    size_t Word() const { return word; }
    size_t Offset() const { return offset; }
    bool IsInDirective() const { return directive != nullptr; }

    // The members that fit behind the place's member operator, for completion; also where the operand ends.
    Type ReceiverBefore(size_t operatorToken);

private:
    static std::unique_ptr<Tokens> TokensOf(const PlacedDirective& directive);

    MeaningList Included();
    MeaningList InDirective();
    MeaningList OfWord();
    MeaningList LocalMeaning(const LocalName& found);
    MeaningList SelfMeaning();
    MeaningList MeaningsOfSelf();
    MeaningList OfMethodHead();
    MeaningList OfCategory();
    MeaningList Member(const Usage& usage);
    MeaningList Scope(const Usage& usage);
    MeaningList Message(const Usage& usage);
    MeaningList MembersOf(const Type& type, std::string_view wanted, const Usage& how);
    bool IsSelf(const Symbol& symbol, const Usage& usage);
    bool IsCodeOutsideOfFunctions();
    bool IsMacroCall(const Symbol& symbol);

    const ParsedTextPointer text;
    const size_t offset;
    const PlacedDirective* directive;
    const std::unique_ptr<const Tokens> ownTokens; // of a directive
    const Tokens* tokens;
    World world;
    Classes classes;
    Names names;
    Expressions expressions;
    size_t word = kNone;
    std::string name;
    std::optional<LocalName> local;
    std::optional<Symbol> self;
};

} // namespace resolve
