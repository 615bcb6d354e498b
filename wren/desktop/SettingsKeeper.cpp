#include "wren/desktop/SettingsKeeper.h"

#include "vetch/app/Loop.h"
#include "wren/core/Host.h"

#include <chrono>

namespace wren {

namespace {

constexpr std::chrono::seconds kUntilStored(1); // without a change before they are stored

} // namespace

SettingsKeeper::SettingsKeeper(Host& host) : host(host)
{
    quiet.setSingleShot(true);
    quiet.setInterval(kUntilStored);
    connect(&quiet, &QTimer::timeout, this, &SettingsKeeper::StoreChange);
}

void SettingsKeeper::Changed()
{
    quiet.start();
    if (vetch::PluginCall::Depth() == 0)
        host.NoteSettings();
}

bool SettingsKeeper::Store(std::string* error)
{
    quiet.stop();
    return host.SaveSettings(error);
}

void SettingsKeeper::StoreAtEnd()
{
    std::string nobodyReads;
    if (quiet.isActive() && vetch::PluginCall::Depth() == 0)
        Store(&nobodyReads);
}

// While the plug-in asks the user something, it writes its settings only after that call, too late for the file.
void SettingsKeeper::StoreChange()
{
    std::string error;
    if (vetch::PluginCall::Depth() > 0)
        quiet.start();
    else if (!Store(&error))
        emit Failed(QString::fromStdString(error));
}

} // namespace wren
