#include "tests/wren/bundles/RecordingPlugin.h"

#include "vetch/app/BLooper.h"

#include <utility>

namespace {

class TellingLooper : public BLooper {
public:
    explicit TellingLooper(std::function<void()> whenDestroyed) : whenDestroyed(std::move(whenDestroyed)) {}
    ~TellingLooper() override { whenDestroyed(); }

private:
    const std::function<void()> whenDestroyed;
};

BLooper* MakeLooper(std::function<void()> whenDestroyed)
{
    return new TellingLooper(std::move(whenDestroyed));
}

} // namespace

RecordingPlugin* TheRecordingPlugin()
{
    static RecordingPlugin plugin = {nullptr, MakeLooper};
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
