// Describes which sources an index wants, and what parses them.
#pragma once

#include "tagging/Settings.h"

#include <string>

namespace symbols {

// For StoreHeader::patterns. Runs ctags once for its version, and again only after its file has changed. Two machines
// with the same version of ctags have the same text, so that an index can be carried from one to the other.
std::string DescribeParsers(const tagging::Settings& settings, bool isSystem);

} // namespace symbols
