// Modifier keys, and the codes of keys and user input.
#pragma once

#include "vetch/support/Types.h"

enum : uint32 {
    B_SHIFT_KEY = 0x01,
    B_COMMAND_KEY = 0x02,
    B_CONTROL_KEY = 0x04,
    B_CAPS_LOCK = 0x08,
    B_OPTION_KEY = 0x40,
};

enum : int8 { B_ENTER = 0x0a, B_UP_ARROW = 0x1e, B_DOWN_ARROW = 0x1f, B_SPACE = 0x20 };

constexpr uint32 B_KEY_DOWN = FourCC("_KYD");      // "byte" int8 (one or more), "modifiers" int32
constexpr uint32 B_MOUSE_DOWN = FourCC("_MDN");    // in a list: "index" int32, "clicks" int32 (2: a double click)
constexpr uint32 B_REFS_RECEIVED = FourCC("_RRC"); // "refs" refs, "be:line" int32 from 1

// The modifier keys that are held now. Any thread.
uint32 modifiers();

namespace vetch {

void SetModifiers(uint32 bits); // called by the display

} // namespace vetch
