// Looks and behaviours of windows, by number.
#pragma once

#include "vetch/support/Types.h"

constexpr long B_TITLED_WINDOW_LOOK = 1;
constexpr long B_BORDERED_WINDOW_LOOK = 3;
constexpr long B_FLOATING_WINDOW_LOOK = 6;
constexpr long B_NORMAL_WINDOW_FEEL = 1;
constexpr uint32 B_AVOID_FOCUS = 0x200; // never activates: the keyboard focus stays where it was
