#include "wren/core/PreferencePanels.h"

#include "vetch/app/Loop.h"
#include "vetch/interface/BView.h"
#include "vetch/interface/BWindow.h"
#include "vetch/interface/InterfaceFile.h"

#include <algorithm>

namespace wren {

namespace {

constexpr const char* kInterfaceFile = "DeclarationDialogs";
constexpr BPoint kWindowOrigin = {200, 120};

} // namespace

PreferencePanels::~PreferencePanels()
{
    CloseAll();
}

void PreferencePanels::Register(const PreferencePanel& panel)
{
    std::erase_if(panels, [&](const PreferencePanel& each) { return each.identifier == panel.identifier; });
    panels.push_back(panel);
}

PreferencePanels::PanelWindow PreferencePanels::MakeWindow(__CFBundle* bundle, const std::string& bundleIdentifier,
                                                           const std::string& panelIdentifier)
{
    BView* view = MakePanelView(bundle, bundleIdentifier);
    const BRect size = view->Bounds();
    const BRect frame = {kWindowOrigin.x, kWindowOrigin.y, kWindowOrigin.x + size.Width(),
                         kWindowOrigin.y + size.Height()};
    auto* window = new BWindow(frame, TitleOf(panelIdentifier).c_str(), B_TITLED_WINDOW_LOOK, B_NORMAL_WINDOW_FEEL, 0,
                               vetch::Service::Application);
    window->AddChild(view);
    windows.push_back(window->LooperToken());
    return {window, view};
}

void PreferencePanels::CloseAll()
{
    for (const vetch::LooperToken token : windows)
        if (BLooper* window = vetch::FindLooper(token))
            window->Quit();
    windows.clear();
}

std::string PreferencePanels::TitleOf(const std::string& identifier) const
{
    for (const PreferencePanel& panel : panels)
        if (panel.identifier == identifier)
            return panel.title;
    return "Preferences";
}

BView* MakePanelView(__CFBundle* bundle, const std::string& bundleIdentifier)
{
    return vetch::MakeViewFromNib(bundle, kInterfaceFile, bundleIdentifier.c_str());
}

} // namespace wren
