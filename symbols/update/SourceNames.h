// Which files are sources, by their names.
#pragma once

#include <string_view>

namespace symbols {

// C, C++ and Objective-C. 'leaf' is the last part of a path. Upper case counts where ctags has it: "X.C" is C++.
bool IsSourceName(std::string_view leaf);

// A name without a suffix, as many C++ headers of a system have.
bool CanBeHeaderWithoutSuffix(std::string_view leaf);

// Whether the beginning of a file without a suffix is that of a C++ header.
bool LooksLikeHeader(std::string_view text);

// All suffixes, for the description of an index.
std::string_view SourceSuffixes();

} // namespace symbols
