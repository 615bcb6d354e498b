// An editor without a screen, with the plug-in of this build and a system tags file of its own.
#pragma once

#include "vetch/display/HeadlessDisplay.h"
#include "wren/cli/HeadlessFace.h"
#include "wren/core/Host.h"
#include "wren/core/HostObserver.h"
#include "wren/core/PluginBundle.h"

#include <memory>
#include <optional>
#include <string>

// Looks at nothing that the plug-in does.
class BenchFace : public wren::HeadlessFace, public vetch::DisplayObserver, public wren::HostObserver {
public:
    void Changed(const wren::HostChange&) override {}
};

// HOME is a temporary directory while it lives, in which the system tags file is a link to the given one: the plug-in
// looks for it there and nowhere else. Makes the application, so once in a process. Document thread.
class HeadlessEditor {
public:
    // Borrows both; the face is the display's observer.
    HeadlessEditor(BenchFace& face, vetch::HeadlessDisplay& display) : face(face), display(display) {}
    ~HeadlessEditor();

    // Ends the program, with the reason on standard error, when something cannot be used.
    void Start(const std::string& systemTags);

    wren::Host& TheHost() { return *host; } // once it has started

private:
    BenchFace& face;
    vetch::HeadlessDisplay& display;
    std::string home;
    std::unique_ptr<wren::PluginBundle> bundle;
    std::optional<wren::Host> host;
};

// Ends the program.
[[noreturn]] void Fail(const std::string& error);
