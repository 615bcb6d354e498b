#include "wren/cli/MakeTags.h"

#include "vetch/app/BMessage.h"
#include "vetch/app/Loop.h"
#include "vetch/storage/EntryRef.h"
#include "vetch/storage/Home.h"
#include "wren/cli/DirectoryLock.h"
#include "wren/cli/Interruption.h"
#include "wren/cli/TagsTarget.h"
#include "wren/cli/UnseenFace.h"
#include "wren/core/Host.h"
#include "wren/core/HostWitness.h"
#include "wren/core/SystemTags.h"
#include "wren/script/ScriptDisplay.h"

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <cstring>
#include <filesystem>
#include <functional>
#include <unistd.h>

namespace wren {

namespace {

namespace fs = std::filesystem;

using Outcome = MadeTags::Outcome;

constexpr const char* kMakeSystemTags = "Create or update system tags"; // in the menu of the plug-in's button
constexpr const char* kSystemDirectories = "DeclScanSystemDirectories";
constexpr std::chrono::hours kNoLimit(24 * 365);

// Not a pattern, an option or anything else that the shell or find would make something of.
bool IsPlainDirectory(const std::string& word)
{
    return word.starts_with('/') && std::all_of(word.begin(), word.end(), [](unsigned char c) {
               return std::isalnum(c) || std::strchr("_./-+,:@%=", c) != nullptr;
           });
}

bool AllSucceeded(const std::vector<ShellCommands::Command>& commands)
{
    return !commands.empty() && std::all_of(commands.begin(), commands.end(),
                                            [](const ShellCommands::Command& each) { return each.status == 0; });
}

} // namespace

class TagsMaker::Session {
public:
    Session(PluginBundle& bundle, Interruption* interruption, const std::string& settings)
        : interruption(interruption), host((vetch::SetDisplay(&display), bundle), face, witness, settings)
    {
        host.Start(interruption != nullptr ? Host::CacheDirectory::Make : Host::CacheDirectory::LeaveAlone);
    }

    MadeTags MakeLocal(const std::string& directory)
    {
        const fs::path path = directory;
        return Make(directory, path / "tags", path / "tags.tmp", [&] { AskForLocal(directory); });
    }

    MadeTags MakeSystem()
    {
        const std::string home = Home();
        if (std::string problem = LeaveOutMissingDirectories(); !problem.empty()) {
            MadeTags result;
            result.file = SystemTagsFile(home);
            result.problem = problem;
            return result;
        }
        return Make(SystemTagsDirectory(home), SystemTagsFile(home), UnfinishedSystemTagsFile(home),
                    [&] { AskForSystem(); });
    }

private:
    MadeTags Make(const std::string& directory, const std::string& file, const std::string& unfinished,
                  const std::function<void()>& ask)
    {
        if (interruption == nullptr)
            return Keep(file, ask);
        const DirectoryLock lock(directory);
        const TagsTarget target(file, unfinished);
        MadeTags result;
        result.file = file;
        result.hadFile = target.HadFile();
        result.problem = target.Obstacle().value_or("");
        if (result.problem.empty() && ::access(directory.c_str(), W_OK | X_OK) != 0)
            result.problem = directory + " cannot be written: " + std::strerror(errno);
        if (!result.problem.empty())
            return result;
        target.RemoveUnfinished();
        Run(result, ask);
        result.isNew = target.IsNew();
        result.outcome = result.signal != 0                              ? Outcome::Interrupted
                         : AllSucceeded(result.commands) && result.isNew ? Outcome::Made
                                                                         : Outcome::Failed;
        if (result.outcome == Outcome::Made)
            result.count = CountTags(file);
        target.RemoveUnfinished();
        return result;
    }

    MadeTags Keep(const std::string& file, const std::function<void()>& ask)
    {
        MadeTags result;
        result.file = file;
        Run(result, ask);
        result.outcome = result.commands.empty() ? Outcome::Failed : Outcome::Kept;
        return result;
    }

    // All that the plug-in does of it is done on a thread that it tells nobody of.
    void Run(MadeTags& result, const std::function<void()>& ask)
    {
        const auto start = std::chrono::steady_clock::now();
        const ShellCommands commands(interruption);
        ask();
        host.WaitForBackground(kNoLimit);
        result.commands = commands.All();
        result.signal = interruption == nullptr ? 0 : interruption->Signal();
        result.seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
    }

    // As the panel does in which a user chooses the directory.
    void AskForLocal(const std::string& directory)
    {
        BMessage chosen(FourCC("gnlt"));
        const EntryRef ref(directory.c_str());
        chosen.AddRef("refs", &ref);
        host.Events().MessageFor(0, chosen);
    }

    // The menu is that of a document's button; which document makes no difference to the system's tags.
    void AskForSystem()
    {
        std::string error;
        host.Open(fs::path(SystemTagsDirectory(Home())) / "untitled", "", false, &error);
        display.ChooseNext(MenuChoice(std::string(kMakeSystemTags)));
        host.Events().ButtonPopUp();
    }

    // find would complain of each, and the default names one that only another system has. Answers a problem, or "".
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
    UnseenFace face;
    HostWitness witness;
    ScriptDisplay display;
    Host host;
};

TagsMaker::TagsMaker(PluginBundle& bundle, Interruption* interruption, const std::string& settings)
    : session(std::make_unique<Session>(bundle, interruption, settings))
{
}

TagsMaker::~TagsMaker() = default;

MadeTags TagsMaker::MakeLocal(const std::string& directory)
{
    return session->MakeLocal(directory);
}

MadeTags TagsMaker::MakeSystem()
{
    return session->MakeSystem();
}

} // namespace wren
