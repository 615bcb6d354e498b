// A library that lacks the first of the two symbols.
extern "C" const char* PluginHelp()
{
    return "";
}
