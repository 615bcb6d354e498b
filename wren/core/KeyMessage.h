// A key stroke, and its message to windows and the plug-in.
#pragma once

#include "vetch/app/BMessage.h"

#include <string>

namespace wren {

// A key and the modifiers held with it.
//
// 'bytes' is the character without control, and without shift while control is held: '.', not '>'. Keys that type
// nothing have the codes below.
struct KeyStroke {
    std::string bytes; // UTF-8
    uint32 modifiers = 0;
};

namespace KeyCode {

constexpr char kBackspace = 0x08;
constexpr char kTab = 0x09;
constexpr char kEnter = 0x0a;
constexpr char kEscape = 0x1b;
constexpr char kLeft = 0x1c;
constexpr char kRight = 0x1d;
constexpr char kUp = 0x1e;
constexpr char kDown = 0x1f;
constexpr char kDelete = 0x7f;

// A function key has no character. A binding holds it as a byte that starts no UTF-8 character, so that menus can name
// it; F1 to F12 are 1 to 12.
constexpr int kFunctionKeys = 12;
constexpr char OfFunctionKey(int number)
{
    return static_cast<char>(0x80 + number);
}
constexpr int FunctionKeyOf(char key) // 0: not a function key
{
    const int number = static_cast<unsigned char>(key) - 0x80;
    return number >= 1 && number <= kFunctionKeys ? number : 0;
}

} // namespace KeyCode

BMessage KeyMessage(const KeyStroke& key); // B_KEY_DOWN, with a "byte" for each byte and the "modifiers"

} // namespace wren
