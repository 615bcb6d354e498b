// Describes which sources an index wants, and what parses them.
#pragma once

#include "base/CancelToken.h"
#include "base/Result.h"
#include "tagging/Settings.h"

#include <string>

namespace symbols {

// For StoreHeader::patterns. Runs ctags once for its version, and again only after its file has changed. Two machines
// with the same version of ctags have the same text, so that an index can be carried from one to the other. Fails when
// ctags does not answer within the time for a file, and when it is cancelled. Any thread.
base::Result<std::string> DescribeParsers(const tagging::Settings& settings, bool isSystem,
                                          const base::CancelToken& cancel);

} // namespace symbols
