// What is shown of a name's meaning where the user points at it.
#pragma once

#include "resolve/Resolver.h"
#include "wren/symbols/SourceText.h"

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace wren {

struct MeaningCard {
    std::string declaration; // without a body, as it is written; "" of a file
    std::string scope;       // "Outer::Inner"; "" for none
    std::string comment;     // without its signs
    std::string value;       // of a macro or an enumerator, when a reader could work it out; "" when it is written so
    std::string place;       // "shape.h:12", or the path of a file, as in the index
    size_t others = 0;       // other things that the name may mean
    bool isFoundByName = false;
};

// The text of a file, by its path in the index; it must stay valid as long as the card is being made.
using SourceReader = std::function<std::optional<SourceText>(const std::string& path)>;

// Of Resolver::Meanings(): the first declaration of the likeliest thing that has a comment, else its first one. Nullopt
// when the name means nothing.
std::optional<MeaningCard> CardOf(const std::vector<resolve::Answer>& answers, const symbols::Snapshot& snapshot,
                                  const SourceReader& read);

} // namespace wren
