#include "wren/desktop/PreferenceActions.h"

#include "wren/core/Host.h"
#include "wren/desktop/EditorTabs.h"
#include "wren/desktop/GuiLoop.h"
#include "wren/desktop/KeyRouter.h"
#include "wren/desktop/Look.h"
#include "wren/desktop/MainWindow.h"
#include "wren/desktop/PreferencesDialog.h"
#include "wren/desktop/SettingsKeeper.h"
#include "wren/desktop/display/QtDisplay.h"

#include <algorithm>

namespace wren {

namespace {

constexpr int kMostZoom = 20; // points more or less

} // namespace

PreferenceActions::PreferenceActions(const Parts& parts)
    : preferences(parts.preferences), look(parts.look), host(parts.host), window(parts.window), display(parts.display),
      loop(parts.loop), router(parts.router), settings(parts.settings)
{
}

std::unique_ptr<PreferencesDialog> PreferenceActions::MakeDialog() const
{
    return std::make_unique<PreferencesDialog>(host, display, loop, preferences.Values(), &window);
}

void PreferenceActions::Open()
{
    const std::unique_ptr<PreferencesDialog> dialog = MakeDialog();
    if (menuItems)
        dialog->SetMenuItems(menuItems());
    connect(dialog.get(), &PreferencesDialog::Changed, this,
            [this, dialog = dialog.get()](const PreferenceValues& values) {
                preferences.Set(values);
                Apply();
                settings.Changed();
                if (menuItems)
                    dialog->SetMenuItems(menuItems());
            });
    // The plug-in's panels send what the user sets as messages, and the loop lets those through.
    connect(&loop, &GuiLoop::Woke, dialog.get(), [this] { settings.Changed(); });
    dialog->exec();
    std::string error;
    if (!settings.Store(&error))
        emit Failed(QString::fromStdString(error));
}

void PreferenceActions::UseZoom(int steps)
{
    zoom = steps == 0 ? 0 : std::clamp(zoom + steps, -kMostZoom, kMostZoom);
    Apply();
}

void PreferenceActions::Change(const std::function<void(PreferenceValues&)>& change)
{
    PreferenceValues values = preferences.Values();
    change(values);
    preferences.Set(values);
    Apply();
    settings.Changed();
}

void PreferenceActions::Apply()
{
    const PreferenceValues& values = preferences.Values();
    ApplyColours(values.colours);
    look = LookFor(values, zoom);
    window.Tabs().SetLook(look);
    display.SetListFont(look.font);
    router.keys = KeysFor(values);
    router.controlClicks = values.lookupClick == PreferenceValues::LookupClick::Control;
    display.SetModifierKeys(router.keys);
    BindKeys();
}

// The desktop may turn dark in the evening, while texts are open.
void PreferenceActions::FollowColours()
{
    const EditorLook now = LookFor(preferences.Values(), zoom);
    if (now.dark == look.dark)
        return;
    look = now;
    window.Tabs().SetLook(look);
}

// The plug-in knows one key of each command: the first that it has a code for. The plug-in shows that key, and the key
// also chooses from the list of completions. The command's other keys act as that one does.
void PreferenceActions::BindKeys()
{
    for (const CommandTable::Command& command : host.Commands().Registered())
        host.Commands().Bind(command.name, {});
    for (const auto& [command, key] : preferences.Values().keys)
        if (host.Commands().BindingOf(command).key == 0)
            if (const std::optional<KeyBinding> binding = BindingFrom(key, router.keys))
                host.Commands().Bind(command, *binding);
    emit KeysChosen();
}

} // namespace wren
