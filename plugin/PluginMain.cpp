#include "plugin/PluginMain.h"

#include "plugin/EventTable.h"

long PluginMain(long event, PluginInterface* host)
{
    // The host knows nothing of this library's exceptions (no memory is the only likely one): to it the event was not
    // handled.
    try {
        return HandleEvent(event, host);
    } catch (...) {
        return 0;
    }
}

const char* PluginHelp()
{
    // Users know the text exactly like this, "it's" included.
    return "Symbol lookup plugin.\n"
           "Click to look up the selection's declaration or definition.\n"
           "Option-click a word to look up it's declaration.\n"
           "Control-Option-click a word to look up it's definition.\n"
           "Control-'.' to complete a symbol.";
}
