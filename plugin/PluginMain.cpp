#include "plugin/PluginMain.h"

#include "plugin/EventTable.h"

long PluginMain(long event, PluginInterface* host)
{
    // The host does not know this library's exceptions (likely only memory exhaustion): for it the event was not
    // handled.
    try {
        return HandleEvent(event, host);
    } catch (...) {
        return 0;
    }
}

const char* PluginHelp()
{
    // Users know exactly this text, with its "it's".
    return "Symbol lookup plugin.\n"
           "Click to look up the selection's declaration or definition.\n"
           "Option-click a word to look up it's declaration.\n"
           "Control-Option-click a word to look up it's definition.\n"
           "Control-'.' to complete a symbol.";
}
