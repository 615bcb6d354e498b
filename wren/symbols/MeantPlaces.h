// The places that a jump leads to.
#pragma once

#include "resolve/Resolver.h"

namespace wren {

// Only what the place means most likely (see resolve::Answer::isMeant), and no declarations beside definitions of the
// same name and scope, or the reverse. Of files that an #include may mean, the nearest. Of "typedef struct page page;",
// the definition is the body of the structure.
resolve::Answers MeantDefinition(const resolve::Resolver& resolver, const resolve::Place& place,
                                 symbols::Limits limits);
resolve::Answers MeantDeclaration(const resolve::Resolver& resolver, const resolve::Place& place,
                                  symbols::Limits limits);

} // namespace wren
