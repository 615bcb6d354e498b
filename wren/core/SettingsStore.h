// The file in which the plug-in's settings are kept between sessions, a line a setting.
#pragma once

#include <set>
#include <string>
#include <vector>

namespace wren {

// The words of a stored line. Blanks alone separate them, and runs of blanks count as one; backslashes, quotes and tabs
// are part of a word. A setting whose text is empty was stored as "name ", so it comes back as the name alone.
std::vector<std::string> SplitAtBlanks(const std::string& line);

// Document thread.
class SettingsStore {
public:
    explicit SettingsStore(std::string file); // "" keeps nothing on disk

    // The stored lines that hold anything but blanks. None when there is no file; false, with the reason in '*error',
    // when there is one that cannot be read.
    bool Load(std::vector<std::string>* lines, std::string* error);

    void Register(const std::string& name) { names.insert(name); }

    // Between the two, what is written replaces all stored lines of registered names. Lines of other names stay as they
    // are, since they belong to somebody else. False, with the reason in '*error', leaves the file as it was.
    void BeginSave();
    void Write(const std::string& text); // outside a save it goes nowhere
    bool EndSave(std::string* error);

private:
    std::string WithoutRegistered(const std::string& stored) const;

    const std::string file;
    std::set<std::string> names;
    bool saving = false;
    std::string written;
};

} // namespace wren
