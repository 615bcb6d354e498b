// An editor without a face that is asked one question, and then goes away.
#pragma once

#include "vetch/display/HeadlessDisplay.h"
#include "wren/cli/HeadlessFace.h"
#include "wren/cli/SystemTagsHome.h"
#include "wren/core/Host.h"
#include "wren/core/HostObserver.h"
#include "wren/core/PluginBundle.h"
#include "wren/text/Place.h"

#include <memory>
#include <optional>
#include <string>

namespace wren {

// What the editor works with.
struct EditorOptions {
    std::string bundle;     // "" for the default one
    std::string home;       // "" for the environment's
    std::string systemTags; // "" for the one in the home directory
};

// Keeps what the plug-in has done in answer. Document thread.
class AskedFace : public HeadlessFace, public vetch::DisplayObserver, public HostObserver {
public:
    bool WasAsked() const { return asked; }   // an alert was shown: there are no tags
    bool WasEdited() const { return edited; } // something was to be undoable, even if it changed nothing

    void AlertAnswered(const vetch::AlertDescription&, long) override { asked = true; }
    void Changed(const HostChange& change) override { edited = edited || std::holds_alternative<UndoBegun>(change); }

private:
    bool asked = false;
    bool edited = false;
};

// Makes the application, so once in a process. Document thread.
class AskedEditor {
public:
    // Borrows both; the face is the display's observer.
    AskedEditor(AskedFace& face, vetch::HeadlessDisplay& display) : face(face), display(display) {}

    // False, with the reason in '*error', when something cannot be used. Standard output is not written to, and neither
    // are tags files.
    bool Start(const EditorOptions& options, std::string* error);

    // Opens a document with the caret there: at the place's column, or 'withoutColumn'. Null, with the reason in
    // '*error', when the file cannot be read or ends before the place.
    Document* OpenAt(const Place& place, WithoutColumn withoutColumn, std::string* error);

    Host& TheHost() { return *host; } // once it has started

private:
    AskedFace& face;
    vetch::HeadlessDisplay& display;
    std::optional<SystemTagsHome> home;
    std::unique_ptr<PluginBundle> bundle;
    std::optional<Host> host;
};

} // namespace wren
