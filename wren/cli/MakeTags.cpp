#include "wren/cli/MakeTags.h"

#include "vetch/app/BMessage.h"
#include "vetch/app/Loop.h"
#include "vetch/storage/EntryRef.h"
#include "vetch/storage/Home.h"
#include "wren/cli/HeadlessFace.h"
#include "wren/cli/IndexedTags.h"
#include "wren/cli/RecordedCommands.h"
#include "wren/core/FirstSettings.h"
#include "wren/core/GuardedRunner.h"
#include "wren/core/Host.h"
#include "wren/core/HostObservers.h"
#include "wren/core/Interruption.h"
#include "wren/core/SystemTags.h"
#include "wren/core/TerminalText.h"
#include "wren/headless/MenuChoosingDisplay.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <optional>
#include <unistd.h>
#include <utility>

namespace wren {

namespace {

namespace fs = std::filesystem;

constexpr const char* kMakeSystemTags = "Create or update system tags"; // in the menu of the plug-in's button
constexpr const char* kIndexSuffixes = "DeclIndexSuffixes";
constexpr const char* kSystemDirectories = "DeclScanSystemDirectories";
constexpr std::chrono::hours kNoLimit(24 * 365);

void SayWaits(const std::string& directory)
{
    std::fprintf(stderr, "wren: another program is making tags in %s; waiting\n",
                 ShownOn(STDERR_FILENO, directory).c_str());
}

// Whether the word is an absolute path without any character that is special to the shell or find.
bool IsPlainDirectory(const std::string& word)
{
    return word.starts_with('/') && std::all_of(word.begin(), word.end(), [](unsigned char c) {
               return std::isalnum(c) || std::strchr("_./-+,:@%=", c) != nullptr;
           });
}

} // namespace

class TagsMaker::Session {
public:
    Session(PluginBundle& bundle, Interruption* interruption, const std::string& settings,
            std::function<void(const std::string&)> runs)
        : interruption(interruption), runs(std::move(runs)),
          host((vetch::SetDisplay(&display), bundle), face, nobody, settings)
    {
        host.SetFirstSettings(FirstSettings());
        host.Start(interruption != nullptr ? Host::CacheDirectory::Make : Host::CacheDirectory::LeaveAlone);
    }

    MadeTags MakeLocal(const std::string& directory)
    {
        const std::string file = fs::path(directory) / "tags";
        if (const std::optional<MadeTags> made = MakeFromIndex(directory))
            return *made;
        return Make(file, [&] { AskForLocal(directory); });
    }

    MadeTags MakeLocalFromIndex(const std::string& directory)
    {
        if (const std::optional<MadeTags> made = MakeFromIndex(directory))
            return *made;
        MadeTags result;
        result.run.file = fs::path(directory) / "tags";
        result.run.problem = "the index is not enough for it, or something is in its way; \"wren tags\" without "
                             "--from-index makes it, or says what";
        return result;
    }

    MadeTags MakeSystem()
    {
        const std::string file = SystemTagsFile(Home());
        if (const std::string problem = LeaveOutMissingDirectories(); !problem.empty()) {
            MadeTags result;
            result.run.file = file;
            result.run.problem = problem;
            return result;
        }
        return Make(file, [&] { AskForSystem(); });
    }

private:
    // Another tags program may make other tags.
    std::optional<MadeTags> MakeFromIndex(const std::string& directory)
    {
        if (interruption == nullptr || std::getenv("WREN_CTAGS") != nullptr)
            return std::nullopt;
        MadeTags result;
        const auto start = std::chrono::steady_clock::now();
        const std::string patterns = host.Events().Setting(kIndexSuffixes).value_or("");
        std::optional<TagsOutcome> run =
            MakeTagsFromIndex({directory, SplitAtBlanks(patterns)}, *interruption, SayWaits);
        if (!run)
            return std::nullopt;
        result.run = *std::move(run);
        result.signal = interruption->Signal();
        Complete(result, start);
        return result;
    }

    MadeTags Make(const std::string& file, const std::function<void()>& ask)
    {
        MadeTags result;
        result.run.file = file;
        result.run.problem = "the plug-in started nothing";
        const auto start = std::chrono::steady_clock::now();
        if (interruption == nullptr)
            Keep(result, ask);
        else
            Run(result, ask);
        Complete(result, start);
        return result;
    }

    void Complete(MadeTags& result, std::chrono::steady_clock::time_point start) const
    {
        result.seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
        if (result.run.kind == TagsOutcome::Kind::Made)
            result.count = CountTags(result.run.file);
    }

    void Keep(MadeTags& result, const std::function<void()>& ask)
    {
        const RecordedCommands recorded;
        Ask(ask);
        for (const std::string& command : recorded.All())
            result.run.lines.push_back({command, std::nullopt});
        result.kept = !result.run.lines.empty();
    }

    void Run(MadeTags& result, const std::function<void()>& ask)
    {
        GuardedRunner::News news;
        news.waits = SayWaits;
        news.runs = runs;
        news.ended = [&](const TagsOutcome& outcome) { result.run = outcome; };
        GuardedRunner runner(STDERR_FILENO, std::move(news));
        interruption->Hold([&](int signal) { runner.Stop(signal); });
        Ask(ask);
        interruption->Release();
        result.signal = interruption->Signal();
    }

    // The plug-in does all the work on a thread that it does not expose.
    void Ask(const std::function<void()>& ask)
    {
        ask();
        host.WaitForBackground(kNoLimit);
    }

    // Sends the message of the panel in which a user chooses the directory.
    void AskForLocal(const std::string& directory)
    {
        BMessage chosen(FourCC("gnlt"));
        const EntryRef ref(directory.c_str());
        chosen.AddRef("refs", &ref);
        host.Events().MessageFor(0, chosen);
    }

    // Uses the menu of a document's button; any document makes the same system tags.
    void AskForSystem()
    {
        std::string error;
        host.Open(fs::path(SystemTagsDirectory(Home())) / "untitled", "", false, &error);
        display.ChooseNext(MenuChoice(std::string(kMakeSystemTags)));
        host.Events().ButtonPopUp();
    }

    // find would report each missing directory, and the default has one of another system. Returns a problem, or "".
    std::string LeaveOutMissingDirectories()
    {
        const std::string setting = host.Events().Setting(kSystemDirectories).value_or("");
        std::vector<std::string> words = SplitAtBlanks(setting);
        if (words.empty() || !std::all_of(words.begin(), words.end(), IsPlainDirectory))
            return "";
        std::erase_if(words, [](const std::string& word) {
            std::error_code unknown;
            return !fs::exists(word, unknown);
        });
        if (words.empty())
            return "none of the system directories exists: " + setting + "\n  The setting is " + kSystemDirectories +
                   "; store another in a file, and name it with --settings.";
        words.insert(words.begin(), kSystemDirectories);
        host.Events().SettingsCommand(words);
        return "";
    }

    Interruption* const interruption;
    const std::function<void(const std::string&)> runs;
    HeadlessFace face;
    HostObservers nobody;
    MenuChoosingDisplay display;
    Host host;
};

TagsMaker::TagsMaker(PluginBundle& bundle, Interruption* interruption, const std::string& settings,
                     std::function<void(const std::string&)> runs)
    : session(std::make_unique<Session>(bundle, interruption, settings, std::move(runs)))
{
}

TagsMaker::~TagsMaker() = default;

MadeTags TagsMaker::MakeLocal(const std::string& directory)
{
    return session->MakeLocal(directory);
}

MadeTags TagsMaker::MakeLocalFromIndex(const std::string& directory)
{
    return session->MakeLocalFromIndex(directory);
}

MadeTags TagsMaker::MakeSystem()
{
    return session->MakeSystem();
}

} // namespace wren
