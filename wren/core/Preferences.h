// What the user has chosen of how the editor looks and behaves.
#pragma once

#include "wren/core/OwnSettings.h"

#include <map>
#include <string>
#include <utility>
#include <vector>

namespace wren {

// Plain values, with no screen in them. Each is stored as a line "name value", and only when it is not the default.
struct PreferenceValues {
    enum class Colours { Desktop, Light, Dark };
    enum class Modifier { Control, Alt, Super };
    enum class LookupClick { Alt, Control }; // Alt-click and Control-Alt-click; or Control-click and Control-Shift-click

    std::string font;  // "" for the desktop's fixed-width font
    int fontSize = 11; // points, 6 to 72
    int tabWidth = 4;  // columns, 1 to 16
    bool indentsWithTabs = false;
    bool wrapsLines = false;
    bool showsBlanks = false;
    Colours colours = Colours::Desktop;
    bool restoresSession = true;
    Modifier command = Modifier::Super;
    Modifier control = Modifier::Control;
    Modifier option = Modifier::Alt;
    LookupClick lookupClick = LookupClick::Alt;

    // A command and one of its keys, in the notation of menus ("Ctrl+.", "F12"). A command may have several; the first
    // is the one that menus show and that the plug-in is told of.
    std::vector<std::pair<std::string, std::string>> keys = DefaultKeys();
    static std::vector<std::pair<std::string, std::string>> DefaultKeys();

    bool operator==(const PreferenceValues&) const = default;
};

class Preferences : public OwnSettings {
public:
    const PreferenceValues& Values() const { return values; }
    void Set(const PreferenceValues& chosen);

    std::vector<std::string> Names() const override;
    bool Take(const std::string& line, std::string* error) override;
    std::vector<std::string> Lines() const override;

private:
    PreferenceValues values;
    std::map<std::string, std::string> damaged; // the lines that made no sense, by name
};

} // namespace wren
