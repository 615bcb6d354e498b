// The preference panels that the plug-in offers, and the windows in which they are open.
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

// Any number may be open at once, each with controls of its own. Document thread.
class PreferencePanels {
public:
    PreferencePanels() = default;
    ~PreferencePanels(); // closes the windows

    void Register(const PreferencePanel& panel); // a later one of the same identifier replaces the earlier
    const std::vector<PreferencePanel>& Registered() const { return panels; }

    struct PanelWindow {
        BWindow* window;
        BView* container;
    };

    // A window, not shown yet, around a fresh container made from the part of the bundle's interface file that has the
    // bundle's identifier for its name. The user, or CloseAll(), closes it.
    PanelWindow MakeWindow(__CFBundle* bundle, const std::string& bundleIdentifier, const std::string& panelIdentifier);
    void CloseAll();

private:
    std::string TitleOf(const std::string& identifier) const;

    std::vector<PreferencePanel> panels;
    std::vector<vetch::LooperToken> windows; // some may be closed already
};

// A container of the plug-in's own controls, in no window. The caller owns it.
BView* MakePanelView(__CFBundle* bundle, const std::string& bundleIdentifier);

} // namespace wren
