// Changing the preferences and the zoom, and putting them into effect.
#pragma once

#include "wren/core/Preferences.h"
#include "wren/desktop/state/MenuItem.h"

#include <QObject>

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace wren {

class GuiLoop;
class Host;
class KeyRouter;
class MainWindow;
class PreferencesDialog;
class QtDisplay;
class SettingsKeeper;
struct EditorLook;

// GUI thread.
class PreferenceActions : public QObject {
    Q_OBJECT
public:
    struct Parts { // all borrowed
        Preferences& preferences;
        EditorLook& look; // of views that are made later
        Host& host;
        MainWindow& window;
        QtDisplay& display;
        GuiLoop& loop;
        KeyRouter& router;
        SettingsKeeper& settings;
    };
    explicit PreferenceActions(const Parts& parts);

    // The menu items that are not commands: the dialog sets their keys, and warns before a command takes one.
    std::function<std::vector<MenuItem>()> menuItems;

    void Open();                                           // shows the dialog and stores the settings when it closes
    std::unique_ptr<PreferencesDialog> MakeDialog() const; // not connected to anything
    void UseZoom(int steps);                               // larger by so many points, or smaller; 0 for the usual size
    void Change(const std::function<void(PreferenceValues&)>& change); // applies and stores it
    void Apply();         // puts the preferences as they are now into effect
    void FollowColours(); // call it when the desktop has changed its colours

    const PreferenceValues& Values() const { return preferences.Values(); }

signals:
    void KeysChosen();                  // the keys of commands may have changed
    void Failed(const QString& reason); // to store the settings

private:
    void BindKeys();

    Preferences& preferences;
    EditorLook& look;
    Host& host;
    MainWindow& window;
    QtDisplay& display;
    GuiLoop& loop;
    KeyRouter& router;
    SettingsKeeper& settings;
    int zoom = 0; // points
};

} // namespace wren
