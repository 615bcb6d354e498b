// A library that lacks the second of the two symbols.
class PluginInterface;

extern "C" long PluginMain(long, PluginInterface*)
{
    return 0;
}
