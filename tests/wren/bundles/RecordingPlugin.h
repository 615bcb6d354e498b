// A plug-in whose behaviour a test gives it: what the host does with it, it does with any plug-in.
#pragma once

#include <functional>

class PluginInterface;

struct RecordingPlugin {
    std::function<long(long event, PluginInterface* record)> main; // empty answers 0 to everything
};

// The library exports it beside its two entry points; there is one in a process.
extern "C" RecordingPlugin* TheRecordingPlugin();
