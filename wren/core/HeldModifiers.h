// The modifier keys that the user holds during another action.
#pragma once

#include "vetch/app/Modifiers.h"

namespace wren {

class HeldModifiers {
public:
    explicit HeldModifiers(uint32 bits) { vetch::SetModifiers(bits); }
    ~HeldModifiers() { vetch::SetModifiers(0); }
    HeldModifiers(const HeldModifiers&) = delete;
    HeldModifiers& operator=(const HeldModifiers&) = delete;
};

} // namespace wren
