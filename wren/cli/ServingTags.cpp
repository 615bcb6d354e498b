#include "wren/cli/ServingTags.h"

#include "tags/TagDiscovery.h"
#include "tags/TagFile.h"
#include "vetch/storage/Home.h"
#include "wren/cli/CommandSupport.h"
#include "wren/core/PluginBundle.h"
#include "wren/core/SystemTags.h"

#include <CLI/CLI.hpp>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <optional>
#include <unistd.h>

namespace wren {

namespace fs = std::filesystem;

namespace {

// The canonical path: relative paths of sources start from the file's own directory, not from that of a link to it.
std::optional<std::string> ReadableFile(const std::string& name, std::string* error)
{
    std::error_code problem;
    const fs::path file = fs::canonical(name, problem);
    if (!problem && ::access(file.c_str(), R_OK) == 0)
        return file;
    *error = name + " cannot be read: " + (problem ? problem.message() : std::strerror(errno));
    return std::nullopt;
}

} // namespace

void AddTagsOptions(CLI::App& command, TagsOptions& options)
{
    command.add_option("--system-tags", options.systemTags, "Use this file as the system's tags");
    command.add_option("--home", options.home, "The home directory (default: $HOME)");
    command.add_option("--bundle", options.bundle, "The plug-in's bundle (default: the one beside this program)");
}

ServingTags::ServingTags()
{
    SetUnreadReporter([](const std::string& path, const std::string& why) { Complain(UnreadNotice(path, why)); });
}

ServingTags::~ServingTags()
{
    SetUnreadReporter(nullptr);
}

bool ServingTags::Prepare(const TagsOptions& options, std::string* error)
{
    if (!options.home.empty())
        ::setenv("HOME", fs::absolute(options.home).c_str(), 1);
    if (!options.systemTags.empty()) {
        const std::optional<std::string> file = ReadableFile(options.systemTags, error);
        if (!file)
            return false;
        systemFile = *file;
    }
    // The search needs no plug-in, but a wrong name is still an error.
    if (!options.bundle.empty() && PluginBundle::Load(options.bundle, error) == nullptr)
        return false;
    if (!systemFile.empty())
        return true;
    if (const std::string problem = MakeSystemTagsDirectory(Home()); !problem.empty())
        Complain(problem);
    return true;
}

bool ServingTags::FindFrom(const BEntry& directory)
{
    const bool hasSystem = systemFile.empty() ? FindSystemTags(&system) : FindSystemTags(&system, systemFile.c_str());
    local = directory;
    const bool hasLocal = FindTags(&local);
    return hasLocal || hasSystem;
}

std::string ServingTags::ShownHome() const
{
    return systemFile.empty() ? Home() : "";
}

} // namespace wren
