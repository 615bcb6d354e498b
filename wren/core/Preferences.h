// The user's choices for the editor's look and behaviour.
#pragma once

#include "wren/core/KeyLines.h"
#include "wren/core/OwnSettings.h"

#include <map>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace wren {

// Plain values, independent of a screen. Each is stored as a line "name value", and only when it is not the default:
//
//     WrenFont DejaVu Sans Mono
//     WrenFontSize 12
//     WrenTabWidth 8
//     WrenIndentWithTabs on
//     WrenWrapLines on
//     WrenShowBlanks on
//     WrenShowGuides on
//     WrenShowScopes off
//     WrenEditorConfig off
//     WrenColours dark
//     WrenRestoreSession off
//     WrenModifiers command=alt control=control option=super
//     WrenLookupClick control
//     WrenJumpByMeaning off
//     WrenCompletion editor
//     WrenKeepTags never
//     WrenKeys DeclarationLookup=F3 DefinitionLookup= GoBack=Alt+Left,Ctrl+%2C
//     WrenMenuKeys Edit.Undo= File.Close=F8,Ctrl+W
//
// A name missing from WrenModifiers or WrenKeys keeps its default. A command in WrenKeys has only the listed keys; an
// empty list removes all. WrenMenuKeys is the same for menu items. Within the words of both, a blank, a comma,
// "=" and "%" are "%20", "%2C", "%3D" and "%25".
struct PreferenceValues {
    enum class Colours { Desktop, Light, Dark };
    enum class Modifier { Control, Alt, Super };
    enum class LookupClick {
        Alt,
        Control
    }; // Alt-click and Control-Alt-click; or Control-click and Control-Shift-click

    static constexpr int kSmallestFont = 6, kLargestFont = 72;
    static constexpr int kNarrowestTab = 1, kWidestTab = 16;

    std::string font;  // "" for the desktop's fixed-width font
    int fontSize = 11; // points
    int tabWidth = 4;  // columns
    bool indentsWithTabs = false;
    bool wrapsLines = false;
    bool showsBlanks = false;
    bool showsGuides = false;  // lines at the levels of indentation
    bool showsScopes = true;   // above the text, where names are understood
    bool followsConfig = true; // the .editorconfig files of a tree
    Colours colours = Colours::Desktop;
    bool restoresSession = true;
    Modifier command = Modifier::Super; // of the three, no two are the same
    Modifier control = Modifier::Control;
    Modifier option = Modifier::Alt;
    LookupClick lookupClick = LookupClick::Alt;

    // Whose list of completions comes while the user types, where names are understood. Both: the editor's for members,
    // scopes, files to include and locals, else the plug-in's.
    enum class Completion { Both, Plugin, Editor, None };
    Completion completion = Completion::Both;

    // Whether the tags file of a project is kept current, where names are understood. Present: when there is one.
    enum class KeepTags { Never, Present, Always };
    KeepTags keepsTags = KeepTags::Present;

    // Where names are understood, F12 and Control-F12 go to what a name means; else they are the plug-in's.
    bool jumpsByMeaning = true;
    bool understandsNames = false; // in this session; not stored
    bool HasMeaningKeys() const { return understandsNames && jumpsByMeaning; }

    // A command and one of its keys, in the notation of menus ("Ctrl+.", "F12"). A command may have several keys: menus
    // and the plug-in get the first. A command without keys is not listed. A key of two commands runs the one listed
    // first.
    CommandKeys keys = DefaultKeys();

    // Of the menus' own items, which lose a key that a command has as well.
    ItemKeys menuKeys;

    bool operator==(const PreferenceValues&) const = default;
};

// Document thread.
class Preferences : public OwnSettings {
public:
    explicit Preferences(bool understandsNames = false);

    const PreferenceValues& Values() const { return values; }
    void Set(const PreferenceValues& chosen); // sorts the keys in the order of a later read

    std::vector<std::string> Names() const override;
    bool Take(const std::string& line,
              std::string* error) override; // the first valid line of a name counts
    std::vector<std::string> Lines() const override;

private:
    PreferenceValues values;
    std::set<std::string> taken;                             // the names of the valid lines
    std::map<std::string, std::vector<std::string>> damaged; // the invalid lines, by name
};

} // namespace wren
