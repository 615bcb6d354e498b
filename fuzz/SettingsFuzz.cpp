// Reads any lines as stored settings of the editor and of the plug-in. Valid settings are stored in a form that reads
// back as the same. Invalid lines and unknown lines stay unchanged.
#include "fuzz/Lines.h"
#include "fuzz/Require.h"
#include "settings/DirectoriesText.h"
#include "settings/PluginSettings.h"
#include "tests/support/FakeHost.h"
#include "tests/support/TempDirectory.h"
#include "wren/core/KeyLines.h"
#include "wren/core/Preferences.h"
#include "wren/core/SettingsStore.h"

#include <algorithm>
#include <cstdint>

namespace {

using Lines = std::vector<std::string>;

std::string FirstWord(const std::string& line)
{
    const Lines words = wren::SplitAtBlanks(line);
    return words.empty() ? "" : words.front();
}

void TryPreferences(const Lines& lines)
{
    std::string error;
    wren::Preferences first;
    for (const std::string& line : lines)
        if (!first.Take(line, &error))
            Require(!error.empty(), "a line that is refused has its reason");
    wren::Preferences second;
    for (const std::string& line : first.Lines())
        second.Take(line, &error);
    Require(second.Values() == first.Values(), "the editor's settings are read as they were written");

    wren::Preferences third;
    for (const std::string& line : second.Lines())
        third.Take(line, &error);
    Require(third.Lines() == second.Lines(), "damaged lines stay as they are");
}

void TryKeys(const std::string& text)
{
    wren::CommandKeys keys = {{"untouched", "F1"}};
    if (!wren::ReadKeys(text, &keys).empty()) {
        Require(keys == wren::CommandKeys{{"untouched", "F1"}}, "keys that make no sense change nothing");
        return;
    }
    Require(wren::InOrder(keys) == keys, "keys are read in their order");
    for (const auto& [command, key] : keys)
        Require(wren::IsKey(key) && !wren::IsForTexts(key), "what is read as a key is one that a command can have");
    wren::CommandKeys again;
    Require(wren::ReadKeys(wren::WrittenKeys(keys), &again).empty() && again == keys, "keys are read as written");
}

// Settings like the plug-in's, a few of each type.
class Some : public PluginSettings {
public:
    Some() { settings = {&on, &off, &text, &path}; }

    PluginSetting<bool> on{"On", true};
    PluginSetting<bool> off{"Off", false};
    PluginSetting<const char*> text{"Text", "a default"};
    PluginSetting<const char*> path{"Path", "/a /b"};
};

class SavingHost : public FakeHost {
public:
    void WriteSettings(const char* format, ...) override __attribute__((format(printf, 2, 3)))
    {
        va_list arguments, again;
        va_start(arguments, format);
        va_copy(again, arguments);
        std::string text(std::vsnprintf(nullptr, 0, format, arguments) + 1, '\0');
        std::vsnprintf(text.data(), text.size(), format, again);
        va_end(again);
        va_end(arguments);
        text.pop_back();
        written += text;
    }
    std::string written;
};

Lines Saved(Some& settings)
{
    SavingHost host;
    settings.Save(&host);
    return Split(reinterpret_cast<const std::uint8_t*>(host.written.data()), host.written.size(), '\n');
}

void Take(Some& settings, const std::string& line)
{
    const Lines words = wren::SplitAtBlanks(line);
    std::vector<const char*> args;
    for (const std::string& word : words)
        args.push_back(word.c_str());
    args.push_back(nullptr);
    const char** all = args.data();
    if (!words.empty())
        settings.HandleSettingsCommand(nullptr, &all);
}

void TryPluginSettings(const Lines& lines)
{
    Some first, second;
    for (const std::string& line : lines)
        Take(first, line.c_str()); // words are handed to the plug-in as C strings, which a NUL ends
    for (const std::string& line : Saved(first))
        Take(second, line);
    for (const char* name : {"On", "Off", "Text", "Path"}) {
        std::string before, after;
        first.ReturnSettingValue(nullptr, name, before);
        second.ReturnSettingValue(nullptr, name, after);
        Require(before == after, "the plug-in's settings are read as they were written");
    }
}

// Saves as a host in which "On" and "WrenFont" are registered.
void TryStore(const std::string& content)
{
    static const TempDirectory files;
    const std::string path = files.Write("settings", content);
    wren::SettingsStore store(path);
    std::vector<wren::StoredLine> before, after;
    std::string error;
    Require(store.Load(&before, &error), "a settings file can be read");
    store.Register("On");
    store.Register("WrenFont");
    store.BeginSave();
    store.Write("On off\n");
    Require(store.EndSave(&error) && store.Load(&after, &error), "a settings file can be written");
    Require(!after.empty() && after.back().text == "On off", "what is written is there");
    after.pop_back();
    std::erase_if(before, [&](const wren::StoredLine& line) { return store.IsRegistered(FirstWord(line.text)); });
    Require(std::ranges::equal(before, after, {}, &wren::StoredLine::text, &wren::StoredLine::text),
            "lines of others stay");
}

void TryDirectories(const std::string& written)
{
    const std::string stored = SystemDirectoriesStringForStore(written);
    Require(stored.size() == written.size(), "separators take each other's places");
    Require(SystemDirectoriesStringForStore(SystemDirectoriesStringForControl(stored)) == stored,
            "directories that were shown are stored as they were");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string content(reinterpret_cast<const char*>(data), size);
    const Lines lines = Split(data, size, '\n');
    TryStore(content);
    TryPreferences(lines);
    TryPluginSettings(lines);
    for (const std::string& line : lines) {
        TryKeys(line);
        TryDirectories(line);
    }
    TryDirectories(content);
    return 0;
}
