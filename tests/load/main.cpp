// One editor, with the plug-in's bundle and no display, that does what many users do in weeks: what it holds when it
// has come to rest must not grow, and no descriptor and no thread stay.
//
//     load_run [KEYS [SEED]]
//
// A lookup comes with every ten keys. No command is run. The seed is printed, and plays the same run again but for what
// threads do.
#include "tests/load/LoadUser.h"
#include "tests/load/ResourceUse.h"

#include "vetch/support/ShellCommand.h"
#include "wren/core/PluginBundle.h"

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <random>

namespace {

constexpr long kAllKeys = 1'000'000;
constexpr long kRests = 10;

// Half a byte a key: blocks that threads keep for themselves come and go, and one window that stays at each lookup is
// more.
constexpr size_t kGrowth = 512 * 1024;

// A thread that nobody joins is counted until the system has taken it away, shortly after its work.
constexpr std::chrono::seconds kThreadsEnd{20};

std::unique_ptr<wren::PluginBundle> LoadBundle()
{
    std::string error;
    std::unique_ptr<wren::PluginBundle> bundle =
        wren::PluginBundle::Load(wren::PluginBundle::DefaultDirectory(), &error);
    if (bundle == nullptr) {
        std::fprintf(stderr, "load_run: %s\n", error.c_str());
        std::exit(2);
    }
    return bundle;
}

ResourceUse Work(LoadUser& user, long keys)
{
    static const long threads = ResourceUse::Now().threads; // before any work
    while (user.Keys() < keys)
        user.Step();
    user.Rest();
    const ResourceUse use = ResourceUse::WithThreads(threads, kThreadsEnd);
    std::printf("%ld keys, %ld lookups: %s\n", user.Keys(), user.Lookups(), use.Text().c_str());
    std::fflush(stdout);
    return use;
}

// Whether the plug-in had something to do: it shows lists, opens what was looked up, completes, and beeps for what it
// does not know.
bool WasAtWork(const LoadUser& user)
{
    bool wasAtWork = true;
    for (const char* deed : {"show", "open", "InsertText", "beep", "close"}) {
        const auto found = user.Deeds().find(deed);
        wasAtWork = wasAtWork && found != user.Deeds().end() && found->second >= user.Keys() / 1000;
    }
    for (const auto& [deed, count] : user.Deeds())
        std::printf("%s %ld  ", deed.c_str(), count);
    return wasAtWork;
}

bool HasGrown(const ResourceUse& before, const ResourceUse& after)
{
    return after.bytes > before.bytes + kGrowth || after.descriptors > before.descriptors ||
           after.threads > before.threads;
}

} // namespace

int main(int count, char** words)
{
    const long keys = count > 1 ? std::atol(words[1]) : kAllKeys;
    const unsigned long seed = count > 2 ? std::strtoul(words[2], nullptr, 10) : std::random_device()();
    if (keys <= 0) {
        std::fputs("usage: load_run [KEYS [SEED]]\n", stderr);
        return 2;
    }
    std::printf("seed %lu\n", seed);
    Random random(seed);
    Workspace workspace(random);
    ::setenv("HOME", workspace.Home().c_str(), 1);
    ::setenv("XDG_CACHE_HOME", (workspace.Home() + "/cache").c_str(), 1);
    vetch::SetShellRunner([](const char*, const vetch::ShellRequest&) { return 0; });
    const std::unique_ptr<wren::PluginBundle> bundle = LoadBundle();
    wren::HeadlessStage stage(*bundle, "");
    LoadUser user(stage, workspace, random);

    const auto start = std::chrono::steady_clock::now();
    const ResourceUse warm = Work(user, keys / kRests);
    ResourceUse last = warm;
    for (long rest = 2; rest <= kRests; ++rest)
        last = Work(user, keys / kRests * rest);
    const std::chrono::duration<double> taken = std::chrono::steady_clock::now() - start;
    const bool wasAtWork = WasAtWork(user);
    std::printf("\n%.1f seconds\n", taken.count());
    if (!wasAtWork)
        std::fputs("load_run: there was too little to do\n", stderr);
    if (HasGrown(warm, last))
        std::fputs("load_run: it holds more than when it was warm\n", stderr);
    return !wasAtWork || HasGrown(warm, last) ? 1 : 0;
}
