#include "wren/core/KeyMessage.h"

#include "vetch/app/Modifiers.h"

namespace wren {

BMessage KeyMessage(const KeyStroke& key)
{
    BMessage message(B_KEY_DOWN);
    for (const char byte : key.bytes)
        message.AddInt8("byte", byte);
    message.AddInt32("modifiers", static_cast<int32>(key.modifiers));
    return message;
}

} // namespace wren
