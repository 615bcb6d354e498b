// Which branches of #if a compiler reads, as far as a source tells.
#pragma once

#include "resolve/Tokens.h"

#include <functional>
#include <string_view>
#include <utility>
#include <vector>

namespace resolve {

enum class Branch {
    Taken,
    Unsure, // it depends on macros with unknown values
    Left,
};

class Conditions {
public:
    // Of all directives of a text. 'isDefinedElsewhere' says whether a file that counts defines a macro; its value is
    // unknown then. Macros of the compiler are those of GCC on Linux.
    Conditions(const Tokens& tokens, bool isCplusplus, const std::function<bool(std::string_view)>& isDefinedElsewhere);

    Branch At(unsigned line) const;

private:
    class Reader;

    std::vector<std::pair<unsigned, Branch>> changes; // by line: from there on
};

} // namespace resolve
