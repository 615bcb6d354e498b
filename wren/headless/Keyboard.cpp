#include "wren/headless/Keyboard.h"

#include "base/Utf8.h"
#include "vetch/app/Modifiers.h"
#include "wren/core/Document.h"

#include <cstring>
#include <map>
#include <string_view>

namespace wren {

namespace {

const std::map<std::string, char> kNamedKeys = {
    {"enter", KeyCode::kEnter},         {"tab", KeyCode::kTab},       {"escape", KeyCode::kEscape},
    {"backspace", KeyCode::kBackspace}, {"delete", KeyCode::kDelete}, {"left", KeyCode::kLeft},
    {"right", KeyCode::kRight},         {"up", KeyCode::kUp},         {"down", KeyCode::kDown},
};

// The characters of a US keyboard with shift, and at the same index without.
constexpr const char* kWithShift = "~!@#$%^&*()_+{}|:\"<>?ABCDEFGHIJKLMNOPQRSTUVWXYZ";
constexpr const char* kWithoutShift = "`1234567890-=[]\\;',./abcdefghijklmnopqrstuvwxyz";

char WithoutShift(char key)
{
    const char* found = key == '\0' ? nullptr : std::strchr(kWithShift, key);
    return found == nullptr ? key : kWithoutShift[found - kWithShift];
}

// The bytes of a key: its one character, or its code; "" when it has neither.
std::string BytesOf(const std::string& key)
{
    const auto named = kNamedKeys.find(key);
    if (named != kNamedKeys.end())
        return std::string(1, named->second);
    return !key.empty() && base::CodePointLength(key) == key.size() ? key : "";
}

long CharacterBefore(const Document& document, long offset)
{
    for (long start = std::max(offset - 4, 0L); start < offset; ++start)
        if (start + static_cast<long>(base::CodePointLength(document.Text(start, offset))) == offset)
            return start;
    return offset;
}

long CharacterAfter(const Document& document, long offset)
{
    const std::string rest = document.Text(offset, std::min(offset + 4, document.Length()));
    return rest.empty() ? offset : offset + static_cast<long>(base::CodePointLength(rest));
}

void Replace(Document& document, Selection range, const std::string& text, const char* name)
{
    document.BeginUndo(document.Selected(), name);
    document.Delete(range.start, range.end - range.start);
    document.Insert(range.start, text);
    const long caret = range.start + static_cast<long>(text.size());
    document.Select(caret, caret);
    document.CloseUndo();
}

// The offset in 'line' that is as many characters from its start as 'offset' is from the start of its own line.
long SameColumn(const Document& document, long offset, long line)
{
    const long start = document.LineStart(document.LineAt(offset));
    long found = document.LineStart(line);
    const long end = document.LineEnd(line);
    for (size_t column = base::CountCodePoints(document.Text(start, offset)); column > 0 && found < end; --column)
        found = CharacterAfter(document, found);
    return found;
}

long Above(const Document& document, long offset)
{
    const long line = document.LineAt(offset);
    return line == 0 ? offset : SameColumn(document, offset, line - 1);
}

long Below(const Document& document, long offset)
{
    const long line = document.LineAt(offset);
    return document.LineEnd(line) == document.Length() ? offset : SameColumn(document, offset, line + 1);
}

void Erase(Document& document, char code)
{
    Selection range = document.Selected();
    if (range.start == range.end && code == KeyCode::kBackspace)
        range.start = CharacterBefore(document, range.start);
    else if (range.start == range.end)
        range.end = CharacterAfter(document, range.end);
    Replace(document, range, "", code == KeyCode::kBackspace ? "Backspace" : "Delete");
}

// A caret moves by one. A selection collapses to its end in the key's direction.
void Move(Document& document, char code)
{
    const Selection from = document.Selected();
    const bool caret = from.start == from.end;
    long to = from.start;
    if (code == KeyCode::kLeft)
        to = caret ? CharacterBefore(document, from.start) : from.start;
    else if (code == KeyCode::kRight)
        to = caret ? CharacterAfter(document, from.end) : from.end;
    else if (code == KeyCode::kUp)
        to = Above(document, from.start);
    else
        to = Below(document, from.end);
    document.Select(to, to);
}

} // namespace

std::optional<KeyStroke> StrokeOf(const std::string& key, uint32 modifiers)
{
    KeyStroke stroke{BytesOf(key), modifiers};
    if (stroke.bytes.empty())
        return std::nullopt;
    if ((modifiers & B_CONTROL_KEY) != 0 && (modifiers & B_SHIFT_KEY) != 0 && stroke.bytes.size() == 1)
        stroke.bytes[0] = WithoutShift(stroke.bytes[0]);
    return stroke;
}

std::optional<char> CodeOfKey(const std::string& key)
{
    const std::string bytes = BytesOf(key);
    return bytes.size() == 1 ? std::optional(bytes.front()) : std::nullopt;
}

KeyEffect ApplyKey(Document& document, const std::string& key, uint32 modifiers)
{
    const auto named = kNamedKeys.find(key);
    const char code = named == kNamedKeys.end() ? '\0' : named->second;
    switch (code) {
    case KeyCode::kEscape:
        return KeyEffect::Nothing;
    case KeyCode::kBackspace:
    case KeyCode::kDelete:
        Erase(document, code);
        return KeyEffect::Edited;
    case KeyCode::kLeft:
    case KeyCode::kRight:
    case KeyCode::kUp:
    case KeyCode::kDown:
        Move(document, code);
        return KeyEffect::Edited;
    default:
        break;
    }
    if ((modifiers & ~(B_SHIFT_KEY | B_CAPS_LOCK)) != 0)
        return KeyEffect::Nothing;
    Replace(document, document.Selected(), BytesOf(key), "Typing");
    return KeyEffect::Typed;
}

} // namespace wren
