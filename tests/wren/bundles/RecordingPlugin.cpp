#include "tests/wren/bundles/RecordingPlugin.h"

RecordingPlugin* TheRecordingPlugin()
{
    static RecordingPlugin plugin;
    return &plugin;
}

extern "C" long PluginMain(long event, PluginInterface* record)
{
    const auto& main = TheRecordingPlugin()->main;
    return main ? main(event, record) : 0;
}

extern "C" const char* PluginHelp()
{
    return "Records what it is told.";
}
