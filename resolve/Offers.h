// The names that completion offers at a place, as they are collected.
#pragma once

#include "resolve/How.h"
#include "resolve/Kinds.h"

#include <cstddef>
#include <string_view>
#include <unordered_set>
#include <vector>

namespace resolve {

struct Offer {
    Symbol symbol;
    How how = How::Name;
    int group = 0;    // 0 is the nearest; of members, steps of bases
    size_t order = 0; // in which they were found
};

// On one thread.
class Offers {
public:
    explicit Offers(std::string_view typed) : typed(typed) {} // must outlive this

    // Without capitals, what is typed also stands for them.
    bool IsTyped(std::string_view name) const;

    // The first symbol of a name is offered, when it begins as what is typed.
    void Add(const Symbol& symbol, How how, int group);

    bool Has(std::string_view name) const { return names.contains(name); }
    const std::vector<Offer>& All() const { return offers; }

private:
    const std::string_view typed;
    std::vector<Offer> offers;
    std::unordered_set<std::string_view> names; // texts of the snapshot, or of the question's text
};

} // namespace resolve
