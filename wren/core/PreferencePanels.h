// The plug-in's preference panels, and their open windows.
#pragma once

#include "vetch/app/BLooper.h"

#include <string>
#include <vector>

class BView;
class BWindow;
struct __CFBundle;

namespace wren {

struct PreferencePanel {
    std::string identifier;
    std::string title;
    std::string icon; // a file in the bundle's resources
};

// Any number may be open at once, each with its own controls. Document thread.
class PreferencePanels {
public:
    PreferencePanels() = default;
    ~PreferencePanels(); // closes the windows

    void Register(const PreferencePanel& panel); // replaces an earlier one with the same identifier
    const std::vector<PreferencePanel>& Registered() const { return panels; }

    struct PanelWindow {
        BWindow* window;
        BView* container;
    };

    // A window, not shown yet, around a new container. The container comes from the part of the bundle's interface file
    // that is named after the bundle's identifier. The user, or CloseAll(), closes the window.
    PanelWindow MakeWindow(__CFBundle* bundle, const std::string& bundleIdentifier, const std::string& panelIdentifier);
    void CloseAll();

private:
    std::string TitleOf(const std::string& identifier) const;

    std::vector<PreferencePanel> panels;
    std::vector<vetch::LooperToken> windows; // some may be closed already
};

// A container of the plug-in's controls, without a window. The caller owns it.
BView* MakePanelView(__CFBundle* bundle, const std::string& bundleIdentifier);

} // namespace wren
