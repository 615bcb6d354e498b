#include "wren/core/KeyLines.h"

#include "base/Utf8.h"
#include "wren/core/SettingsStore.h"

#include <algorithm>
#include <cctype>
#include <cstdio>
#include <iterator>
#include <string_view>
#include <utility>

namespace wren {

namespace {

using Texts = std::vector<std::string>;

constexpr std::string_view kModifierNames[] = {"Ctrl+", "Shift+", "Alt+", "Meta+"};

constexpr std::string_view kNamedKeys[] = {
    "Space", "Tab",   "Backtab", "Backspace", "Return", "Enter", "Esc",  "Ins",   "Del",   "Home",   "End",  "Left",
    "Up",    "Right", "Down",    "PgUp",      "PgDown", "Menu",  "Help", "Pause", "Print", "SysReq", "Back", "Forward"};

// Keys without an effect on a text.
constexpr std::string_view kFreeKeys[] = {"Ins", "Menu", "Help", "Pause", "Print", "SysReq", "Back", "Forward"};

struct Stroke {
    std::string_view key;    // empty for modifiers alone
    bool asShortcut = false; // with a modifier that text input does not use
};

Stroke StrokeOf(std::string_view text)
{
    Stroke stroke{text};
    std::vector<std::string_view> left(std::begin(kModifierNames), std::end(kModifierNames));
    const auto leads = [&](std::string_view modifier) {
        return stroke.key.starts_with(modifier) && stroke.key.size() > modifier.size();
    };
    for (auto next = left.begin(); (next = std::find_if(left.begin(), left.end(), leads)) != left.end();) {
        stroke.key.remove_prefix(next->size());
        stroke.asShortcut = stroke.asShortcut || *next != "Shift+";
        left.erase(next);
    }
    return stroke;
}

template <size_t N>
bool IsAmong(const std::string_view (&names)[N], std::string_view name)
{
    return std::find(std::begin(names), std::end(names), name) != std::end(names);
}

bool IsFunctionKey(std::string_view name)
{
    if (name.size() < 2 || name.size() > 3 || name.front() != 'F' || name[1] == '0')
        return false;
    const std::string_view digits = name.substr(1);
    return std::all_of(digits.begin(), digits.end(), [](unsigned char c) { return std::isdigit(c); }) &&
           std::stoi(std::string(digits)) <= 35;
}

// Whether it is one visible character in UTF-8.
bool IsOneCharacter(std::string_view name)
{
    const auto first = static_cast<unsigned char>(name.front());
    if (first < 0x80)
        return name.size() == 1 && first > ' ' && first < 0x7f;
    const size_t length = first >= 0xf0 ? 4 : first >= 0xe0 ? 3 : first >= 0xc2 ? 2 : 0;
    return name.size() == length && std::all_of(name.begin() + 1, name.end(), base::ContinuesCharacter);
}

bool IsReserved(char c)
{
    return c == ' ' || c == ',' || c == '=' || c == '%';
}

std::string Encoded(const std::string& text)
{
    std::string encoded;
    for (const char c : text) {
        char code[4];
        std::snprintf(code, sizeof code, "%%%02X", static_cast<unsigned char>(c));
        encoded += IsReserved(c) ? code : std::string(1, c);
    }
    return encoded;
}

// A "%" without a known code behind it stands for itself, since the line may be written by hand.
std::string Decoded(const std::string& text)
{
    std::string decoded;
    for (size_t i = 0; i < text.size(); ++i) {
        const std::string digits = text.substr(i + 1, 2);
        const bool isCode = text[i] == '%' && digits.find_first_not_of("0123456789ABCDEF") == std::string::npos &&
                            digits.size() == 2 && IsReserved(static_cast<char>(std::stoi(digits, nullptr, 16)));
        decoded += isCode ? static_cast<char>(std::stoi(digits, nullptr, 16)) : text[i];
        i += isCode ? 2 : 0;
    }
    return decoded;
}

Texts KeysOf(const CommandKeys& keys, const std::string& command)
{
    Texts found;
    for (const auto& [name, key] : keys)
        if (name == command && std::find(found.begin(), found.end(), key) == found.end())
            found.push_back(key);
    return found;
}

Texts CommandsOf(const CommandKeys& keys)
{
    Texts commands;
    for (const auto& [name, key] : keys)
        if (std::find(commands.begin(), commands.end(), name) == commands.end())
            commands.push_back(name);
    return commands;
}

// The commands with default keys first, with and without keys; then the others.
Texts AllCommands(const CommandKeys& keys)
{
    CommandKeys all = DefaultKeys();
    all.insert(all.end(), keys.begin(), keys.end());
    return CommandsOf(all);
}

using Allows = bool (*)(const std::string& key);

bool MayRunCommand(const std::string& key)
{
    return IsKey(key) && !IsForTexts(key);
}

std::string SplitAtCommas(const std::string& list, Allows allows, Texts* keys)
{
    for (size_t start = 0; start < list.size();) {
        const size_t comma = std::min(list.find(',', start), list.size());
        const std::string key = Decoded(list.substr(start, comma - start));
        if (!IsKey(key))
            return "\"" + key + "\" is no key";
        if (!allows(key))
            return "\"" + key + "\" is for editing, and needs \"Ctrl+\", \"Alt+\" or \"Meta+\" before it";
        if (std::find(keys->begin(), keys->end(), key) == keys->end())
            keys->push_back(key);
        start = comma + 1;
    }
    return "";
}

// "GoBack=Alt+Left,F9"
std::string SplitWord(const std::string& word, Allows allows, std::string* name, Texts* keys)
{
    const size_t equals = word.find('=');
    *name = Decoded(word.substr(0, equals));
    if (equals == std::string::npos || name->empty())
        return "\"" + word + "\" is not a command, \"=\" and its keys";
    return SplitAtCommas(word.substr(equals + 1), allows, keys);
}

std::string ReadCommand(const std::string& word, CommandKeys* keys)
{
    std::string command;
    Texts own;
    if (std::string problem = SplitWord(word, MayRunCommand, &command, &own); !problem.empty())
        return problem;
    std::erase_if(*keys, [&](const auto& each) { return each.first == command; });
    for (const std::string& key : own)
        keys->emplace_back(command, key);
    return "";
}

std::string WrittenWord(const std::string& name, const Texts& keys)
{
    std::string word = Encoded(name) + "=";
    for (size_t i = 0; i < keys.size(); ++i)
        word += (i == 0 ? "" : ",") + Encoded(keys[i]);
    return word;
}

} // namespace

CommandKeys DefaultKeys(bool byMeaning)
{
    return {{"SymbolCompletion", "Ctrl+."},
            {"SymbolCompletion", "Ctrl+Space"},
            {"DeclarationLookup", byMeaning ? "Alt+F12" : "F12"},
            {"DefinitionLookup", byMeaning ? "Alt+Shift+F12" : "Ctrl+F12"},
            {"GoBack", "Alt+Left"},
            {"GoForward", "Alt+Right"}};
}

CommandKeys WithDefaults(const CommandKeys& keys, bool fromByMeaning, bool toByMeaning)
{
    CommandKeys changed;
    for (const std::string& command : AllCommands(keys)) {
        const bool hasDefault = KeysOf(keys, command) == KeysOf(DefaultKeys(fromByMeaning), command);
        for (const std::string& key : KeysOf(hasDefault ? DefaultKeys(toByMeaning) : keys, command))
            changed.emplace_back(command, key);
    }
    return changed;
}

bool IsKey(const std::string& text)
{
    const std::string_view key = StrokeOf(text).key;
    return !key.empty() && (IsOneCharacter(key) || IsFunctionKey(key) || IsAmong(kNamedKeys, key));
}

bool IsForTexts(const std::string& key)
{
    const Stroke stroke = StrokeOf(key);
    return IsKey(key) && !stroke.asShortcut && !IsFunctionKey(stroke.key) && !IsAmong(kFreeKeys, stroke.key);
}

std::string ReadKeys(const std::string& text, CommandKeys* keys, bool byMeaning)
{
    CommandKeys read = DefaultKeys(byMeaning);
    for (const std::string& word : SplitAtBlanks(text))
        if (std::string problem = ReadCommand(word, &read); !problem.empty())
            return problem;
    *keys = InOrder(read);
    return "";
}

std::string WrittenKeys(const CommandKeys& keys, bool byMeaning)
{
    std::string text;
    for (const std::string& command : AllCommands(keys)) {
        const Texts own = KeysOf(keys, command);
        if (own == KeysOf(DefaultKeys(byMeaning), command))
            continue;
        text += (text.empty() ? "" : " ") + WrittenWord(command, own);
    }
    return text;
}

bool MayChooseItem(const std::string& key)
{
    return MayRunCommand(key) || key == "Shift+Del";
}

std::string ReadItemKeys(const std::string& text, ItemKeys* keys)
{
    ItemKeys read;
    for (const std::string& word : SplitAtBlanks(text)) {
        std::string item;
        Texts own;
        if (std::string problem = SplitWord(word, MayChooseItem, &item, &own); !problem.empty())
            return problem;
        read[item] = own;
    }
    *keys = std::move(read);
    return "";
}

std::string WrittenItemKeys(const ItemKeys& keys)
{
    std::string text;
    for (const auto& [item, own] : keys)
        text += (text.empty() ? "" : " ") + WrittenWord(item, own);
    return text;
}

CommandKeys InOrder(const CommandKeys& keys)
{
    CommandKeys ordered;
    for (const std::string& command : AllCommands(keys))
        for (const std::string& key : KeysOf(keys, command))
            ordered.emplace_back(command, key);
    return ordered;
}

} // namespace wren
