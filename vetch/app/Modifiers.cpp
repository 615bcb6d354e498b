#include "vetch/app/Modifiers.h"

#include <atomic>

namespace {

std::atomic<uint32> heldModifiers = 0;

} // namespace

uint32 modifiers()
{
    return heldModifiers;
}

namespace vetch {

void SetModifiers(uint32 bits)
{
    heldModifiers = bits;
}

} // namespace vetch
