// Which list of arguments a place of a text is in.
#pragma once

#include "resolve/Tokens.h"

#include <cstddef>
#include <optional>

namespace wren {

// The innermost unfinished list of arguments around an offset.
struct CallAround {
    size_t name = 0;      // the token of what is called; of a message, of its selector's first part
    size_t active = 0;    // the argument at the offset, from 0
    size_t arguments = 0; // as far as they are written
    enum class Sort { Call, Template, Message } sort = Sort::Call;
};
std::optional<CallAround> FindCall(const resolve::Tokens& tokens, size_t offset);

} // namespace wren
