// A plug-in that prints, and whose children do.
#include <cstdio>
#include <cstdlib>

class PluginInterface;

extern "C" long PluginMain(long event, PluginInterface*)
{
    if (event != 103)
        return 0;
    std::puts("the plug-in prints");
    std::fflush(stdout);
    return std::system("echo a child prints; echo home $HOME") == 0 ? 1 : 0;
}

extern "C" const char* PluginHelp()
{
    return "";
}
