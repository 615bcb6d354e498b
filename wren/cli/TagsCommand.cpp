#include "wren/cli/CommandSupport.h"
#include "wren/cli/Commands.h"
#include "wren/cli/MakeTags.h"
#include "wren/cli/TagsReport.h"
#include "wren/core/Interruption.h"
#include "wren/core/PluginBundle.h"
#include "wren/core/ProgramOutput.h"
#include "wren/core/TerminalText.h"

#include "base/ExitStatus.h"
#include "vetch/storage/Home.h"
#include "vetch/support/ShellEscape.h"

#include <CLI/CLI.hpp>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <memory>
#include <optional>
#include <unistd.h>

namespace wren {

namespace {

namespace fs = std::filesystem;

constexpr unsigned kMostJobs = 1024;

constexpr const char* kTagsHelp =
    R"(Without --system, the tags of DIR go into the file "tags" in it, and are used for every
source file in DIR and below. The tags of the system's headers go into
~/Library/Caches/SystemHeaderTags, and are used everywhere. DIR and --system together
make both. The settings select the files (by default all usual suffixes of C, C++ and
Objective-C, and /usr/include); missing system directories are left out.

The last line gives the number of files and tags, the time, and the file. The new file
replaces the old one at the end: a run that fails or is interrupted leaves the old one
unchanged. Nothing is written through a link or over a file that is not a tags file; a
message names the obstacle.

Where "wren index" has made an index that covers the sources, only changed ones are parsed.
Otherwise all are; with --from-index, nothing is made then.

Parsing is done by Universal Ctags. WREN_CTAGS names another tags program to run instead
of the one in the plug-in's bundle.

Exit status: 0 every new file is in place, 1 one could not be made, 2 wrong usage, or a
directory that cannot be used. An interrupted run ends by the signal.

Examples:
    wren tags                   tags of the current directory
    wren tags ~/src/project
    wren tags --system
    wren tags . --system --jobs 2
    wren tags . --dry-run       the commands, to paste into a shell)";

struct TagsWords {
    std::optional<std::string> directory;
    bool system = false;
    std::optional<unsigned> jobs;
    bool dryRun = false;
    bool fromIndex = false;
    bool verbose = false;
    std::string bundle;
    std::string home;
    std::string settings;
};

// The directory as an absolute path without links; nullopt, after a message, when it cannot be used.
std::optional<std::string> UsableDirectory(const std::string& directory)
{
    std::error_code problem;
    const fs::path path = fs::canonical(directory, problem);
    if (directory.empty() || problem == std::errc::not_a_directory || (!problem && !fs::is_directory(path, problem))) {
        Complain("\"" + directory + "\" is not a directory");
        return std::nullopt;
    }
    if (problem) {
        Complain(directory + " cannot be used: " + problem.message());
        return std::nullopt;
    }
    if (::access(path.c_str(), R_OK | W_OK | X_OK) != 0) {
        Complain(path.string() + " cannot be read and written: " + std::strerror(errno));
        return std::nullopt;
    }
    return path.string();
}

// Completes and checks the words; false, after a message, when they cannot be used.
bool UnderstandTags(TagsWords& words)
{
    if (!words.home.empty())
        words.home = fs::absolute(words.home);
    if (words.system && words.home.empty() && Home().empty()) {
        Complain("HOME is not set, so the system's tags have no place; use --home DIR");
        return false;
    }
    if (!words.directory && words.system)
        return true;
    words.directory = UsableDirectory(words.directory.value_or("."));
    return words.directory.has_value();
}

// Sets it for this process and the commands.
void SetEnvironment(const TagsWords& words)
{
    if (!words.home.empty())
        ::setenv("HOME", words.home.c_str(), 1);
    if (words.jobs)
        ::setenv("CPLUSTAGS_JOBS", std::to_string(*words.jobs).c_str(), 1);
}

// The environment that the commands of a dry run need.
std::string EnvironmentLines(const TagsWords& words)
{
    std::string lines;
    if (!words.home.empty())
        lines += "export HOME=" + EscapedPath(words.home) + "\n";
    if (words.jobs)
        lines += "export CPLUSTAGS_JOBS=" + std::to_string(*words.jobs) + "\n";
    return lines;
}

// A command that prints the commands to run.
std::string DryRun(const TagsWords& words, const std::string& what)
{
    std::string command = "wren tags " + what + " --dry-run";
    if (!words.home.empty())
        command += " --home " + EscapedPath(words.home);
    if (!words.settings.empty())
        command += " --settings " + EscapedPath(words.settings);
    return command;
}

void SayWhatRuns(const std::string& line)
{
    std::fprintf(stderr, "executing %s\n", ShownOn(STDERR_FILENO, line).c_str());
}

// Makes the requested files, in the order in which an editor starts both. Returns the exit status. Stops after an
// interrupted run, with the signal in '*signal'.
int MakeAll(PluginBundle& bundle, const TagsWords& words, ProgramOutput& output, int* signal)
{
    Interruption interruption;
    TagsMaker maker(bundle, words.dryRun ? nullptr : &interruption, words.settings,
                    words.verbose ? SayWhatRuns : nullptr);
    bool allWell = !words.dryRun || WriteOrComplain(output, EnvironmentLines(words), "what would be run");
    if (words.system) {
        const MadeTags made = maker.MakeSystem();
        allWell = ReportTags(output, made, DryRun(words, "--system")) && allWell;
        *signal = made.signal;
    }
    if (words.directory && *signal == 0) {
        const MadeTags made =
            words.fromIndex ? maker.MakeLocalFromIndex(*words.directory) : maker.MakeLocal(*words.directory);
        allWell = ReportTags(output, made, DryRun(words, EscapedPath(*words.directory))) && allWell;
        *signal = made.signal;
    }
    return allWell ? base::exit_status::kDone : base::exit_status::kNothing;
}

int RunTags(TagsWords& words)
{
    if (!UnderstandTags(words))
        return base::exit_status::kUnusable;
    SetEnvironment(words);
    ProgramOutput output;
    output.DropTheRest(); // the plug-in prints its commands, which may not be valid text
    std::string error;
    const std::unique_ptr<PluginBundle> bundle =
        PluginBundle::Load(words.bundle.empty() ? PluginBundle::DefaultDirectory() : words.bundle, &error);
    if (bundle == nullptr) {
        Complain(error);
        return base::exit_status::kUnusable;
    }
    int signal = 0;
    const int status = MakeAll(*bundle, words, output, &signal);
    if (signal != 0)
        DieBySignal(signal);
    return status;
}

} // namespace

void AddTagsCommand(CLI::App& app, int* status)
{
    CLI::App* command = app.add_subcommand("tags", "Make the tags files in which symbols are looked up");
    auto words = std::make_shared<TagsWords>();
    command->add_option("DIR", words->directory, "Make the tags of this directory (default: the current one)");
    CLI::Option* system = command->add_flag("--system", words->system, "Make the tags of the system's headers");
    command->add_option("--jobs", words->jobs, "Parse that many files at a time (default: one per core)")
        ->check(CLI::Range(1u, kMostJobs));
    CLI::Option* dryRun =
        command->add_flag("--dry-run", words->dryRun, "Print the command lines that would be run, and change nothing");
    command->add_flag("--from-index", words->fromIndex, "Make the tags of DIR from the index or not at all")
        ->excludes(system)
        ->excludes(dryRun);
    command->add_flag("--verbose", words->verbose, "Show on standard error which commands run");
    command->add_option("--settings", words->settings, "The file of stored settings (default: none)")
        ->check(CLI::ExistingFile);
    command->add_option("--home", words->home, "The home directory (default: $HOME)");
    command->add_option("--bundle", words->bundle, "The plug-in's bundle (default: the one beside this program)");
    command->footer(kTagsHelp);
    command->callback([words, status] { *status = RunTags(*words); });
}

} // namespace wren
