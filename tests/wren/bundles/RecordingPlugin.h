// A plug-in with a behaviour that the test sets. The host treats it like any plug-in.
#pragma once

#include <functional>

class BLooper;
class PluginInterface;

struct RecordingPlugin {
    std::function<long(long event, PluginInterface* record)> main; // empty answers 0 to everything

    // Makes a looper of the plug-in's own class, which calls 'whenDestroyed' when the document thread destroys it.
    BLooper* (*makeLooper)(std::function<void()> whenDestroyed);
};

// The library exports it in addition to its two entry points; there is one in a process.
extern "C" RecordingPlugin* TheRecordingPlugin();
