// A plug-in whose behaviour a test gives it: what the host does with it, it does with any plug-in.
#pragma once

#include <functional>

class BLooper;
class PluginInterface;

struct RecordingPlugin {
    std::function<long(long event, PluginInterface* record)> main; // empty answers 0 to everything

    // A looper of a class of the plug-in's own, which tells when the document thread destroys it.
    BLooper* (*makeLooper)(std::function<void()> whenDestroyed);
};

// The library exports it beside its two entry points; there is one in a process.
extern "C" RecordingPlugin* TheRecordingPlugin();
