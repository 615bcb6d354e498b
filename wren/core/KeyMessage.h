// A key stroke as windows and the plug-in are told of it.
#pragma once

#include "vetch/app/BMessage.h"

namespace wren {

struct KeyStroke;

BMessage KeyMessage(const KeyStroke& key); // B_KEY_DOWN, with a "byte" for each byte and the "modifiers"

} // namespace wren
