// Messages in the script's form: {"what": "ksel", "strings": {..}, "ints": {..}, "refs": [path, ..]}.
#pragma once

#include "vetch/app/BMessage.h"
#include "wren/script/Line.h"

namespace wren {

// Throws LineError. Only "what" is required. A number called "byte" becomes an int8, as in key messages.
BMessage MessageFromJson(const Line& object);

// The references of 'message' and the fields named in 'object', from which it was made; 'object' may be empty.
Json MessageToJson(const BMessage& message, const Json& object);

} // namespace wren
