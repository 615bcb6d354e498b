// The words of the languages.
#pragma once

#include "tagging/ParsedSource.h"

#include <string_view>
#include <vector>

namespace wren {

// Those that fit outside of member operators, sorted.
const std::vector<std::string_view>& KeywordsOf(tagging::Language language);

} // namespace wren
