// Messages as the script writes them: {"what": "ksel", "strings": {..}, "ints": {..}, "refs": [path, ..]}.
#pragma once

#include "vetch/app/BMessage.h"
#include "wren/script/Line.h"

namespace wren {

// Throws LineError. "what" alone is required. A number called "byte" becomes an int8, as in the messages of keys.
BMessage MessageFromJson(const Line& object);

// 'message', which was made from 'object' or from nothing: its references, and what 'object' names.
Json MessageToJson(const BMessage& message, const Json& object);

} // namespace wren
