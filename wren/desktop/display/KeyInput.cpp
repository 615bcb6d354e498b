#include "wren/desktop/display/KeyInput.h"

#include "vetch/app/Modifiers.h"

#include <QKeyEvent>
#include <QKeySequence>
#include <QString>

#include <algorithm>
#include <cctype>
#include <iterator>
#include <string_view>

namespace wren {

namespace {

struct CodedKey {
    int key; // Qt's
    char code;
};

const CodedKey kCodedKeys[] = {
    {Qt::Key_Backspace, KeyCode::kBackspace}, {Qt::Key_Tab, KeyCode::kTab},
    {Qt::Key_Backtab, KeyCode::kTab}, // with shift, which is told beside it
    {Qt::Key_Return, KeyCode::kEnter},        {Qt::Key_Enter, KeyCode::kEnter},
    {Qt::Key_Escape, KeyCode::kEscape},       {Qt::Key_Left, KeyCode::kLeft},
    {Qt::Key_Right, KeyCode::kRight},         {Qt::Key_Up, KeyCode::kUp},
    {Qt::Key_Down, KeyCode::kDown},           {Qt::Key_Delete, KeyCode::kDelete},
};

// Qt tells the character that shift makes of a key, and not whose key it is. These are the keys of the layout that most
// shortcuts are written for; on others the character stays as it is told.
constexpr std::string_view kWithShift = "~!@#$%^&*()_+{}|:\"<>?";
constexpr std::string_view kKeys = "`1234567890-=[]\\;',./";
static_assert(kWithShift.size() == kKeys.size());

char WithoutShift(char character)
{
    const size_t place = kWithShift.find(character);
    return place == std::string_view::npos ? character : kKeys[place];
}

bool IsAscii(int key)
{
    return key >= Qt::Key_Space && key <= Qt::Key_AsciiTilde;
}

// The key's own character: Qt names letters by their capitals.
char CharacterOf(const QKeyEvent& event, bool control)
{
    const char character = static_cast<char>(event.key());
    const bool shift = event.modifiers().testFlag(Qt::ShiftModifier) && !control;
    if (std::isupper(static_cast<unsigned char>(character)))
        return shift ? character : static_cast<char>(std::tolower(static_cast<unsigned char>(character)));
    return control ? WithoutShift(character) : character;
}

bool IsPrintable(const QString& text)
{
    return !text.isEmpty() && std::ranges::all_of(text, [](QChar unit) {
        return unit.isPrint() || unit.isSurrogate() || unit.category() == QChar::Other_PrivateUse ||
               unit.category() == QChar::Other_Format;
    });
}

// On keyboards without Latin letters Qt tells the control code of the Latin letter in the key's place.
std::string LetterOf(const QString& text)
{
    const int code = text.size() == 1 ? text[0].unicode() : 0;
    return code >= 1 && code <= 26 ? std::string(1, static_cast<char>('a' + code - 1)) : "";
}

std::string BytesOf(const QKeyEvent& event, bool control)
{
    const auto coded = std::ranges::find(kCodedKeys, event.key(), &CodedKey::key);
    if (coded != std::end(kCodedKeys))
        return {coded->code};
    if (IsAscii(event.key()) && (control || !IsPrintable(event.text())))
        return {CharacterOf(event, control)};
    if (IsPrintable(event.text()))
        return event.text().toStdString();
    return control ? LetterOf(event.text()) : "";
}

} // namespace

uint32 ModifierBits(Qt::KeyboardModifiers held, const ModifierKeys& keys)
{
    uint32 bits = 0;
    bits |= held.testFlag(Qt::ShiftModifier) ? uint32{B_SHIFT_KEY} : 0;
    bits |= held.testFlag(keys.command) ? uint32{B_COMMAND_KEY} : 0;
    bits |= held.testFlag(keys.control) ? uint32{B_CONTROL_KEY} : 0;
    bits |= held.testFlag(keys.option) ? uint32{B_OPTION_KEY} : 0;
    return bits;
}

std::optional<KeyStroke> StrokeOf(const QKeyEvent& event, const ModifierKeys& keys)
{
    const uint32 bits = ModifierBits(event.modifiers(), keys);
    const std::string bytes = BytesOf(event, (bits & B_CONTROL_KEY) != 0);
    if (bytes.empty())
        return std::nullopt;
    return KeyStroke{bytes, bits};
}

QKeySequence SequenceOf(char key, uint32 modifiers, const ModifierKeys& keys)
{
    if (key == 0)
        return {};
    const auto coded = std::ranges::find(kCodedKeys, key, &CodedKey::code);
    int code = coded == std::end(kCodedKeys) ? std::toupper(static_cast<unsigned char>(key)) : coded->key;
    if (const int function = KeyCode::FunctionKeyOf(key); function != 0)
        code = Qt::Key_F1 + function - 1;
    Qt::KeyboardModifiers held;
    held.setFlag(Qt::ShiftModifier, (modifiers & B_SHIFT_KEY) != 0);
    held.setFlag(keys.command, (modifiers & B_COMMAND_KEY) != 0 || held.testFlag(keys.command));
    held.setFlag(keys.control, (modifiers & B_CONTROL_KEY) != 0 || held.testFlag(keys.control));
    held.setFlag(keys.option, (modifiers & B_OPTION_KEY) != 0 || held.testFlag(keys.option));
    return QKeySequence(QKeyCombination(held, static_cast<Qt::Key>(code)));
}

} // namespace wren
