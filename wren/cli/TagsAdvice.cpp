#include "wren/cli/TagsAdvice.h"

#include "vetch/storage/Home.h"
#include "vetch/support/Strings.h"
#include "wren/core/SystemTags.h"

#include <cctype>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <optional>

namespace wren {

namespace {

namespace fs = std::filesystem;

std::string CommandForLocal(const std::string& directory)
{
    return "wren tags " + EscapedPath(directory);
}

constexpr const char* kCommandForSystem = "wren tags --system";

std::optional<fs::path> NearestTags(fs::path directory)
{
    std::error_code ignored;
    while (true) {
        if (fs::exists(fs::symlink_status(directory / "tags", ignored)))
            return directory / "tags";
        if (directory == directory.parent_path())
            return std::nullopt;
        directory = directory.parent_path();
    }
}

// What the first tags of a file look like: ctags writes all of them with the same options.
struct Habits {
    bool lineNumbers = true;
    bool fieldsBehindScopes = false;
};

// Whether a further field follows the scope of a class, namespace, struct or union.
bool HasFieldBehindScope(const std::string& line)
{
    for (const char* scope : {"\tclass:", "\tnamespace:", "\tstruct:", "\tunion:"})
        if (const size_t start = line.find(scope); start != std::string::npos)
            return line.find('\t', start + 1) != std::string::npos;
    return false;
}

bool HasLineNumber(const std::string& line)
{
    const size_t name = line.find('\t');
    const size_t command = name == std::string::npos ? name : line.find('\t', name + 1);
    return command != std::string::npos && std::isdigit(static_cast<unsigned char>(line[command + 1]));
}

Habits LookAt(std::ifstream& file)
{
    constexpr int kLinesLookedAt = 1000;
    Habits habits;
    int numbered = 0;
    int lines = 0;
    for (std::string line; lines < kLinesLookedAt && std::getline(file, line);) {
        if (line.empty() || line[0] == '!')
            continue;
        ++lines;
        numbered += HasLineNumber(line);
        habits.fieldsBehindScopes = habits.fieldsBehindScopes || HasFieldBehindScope(line);
    }
    habits.lineNumbers = lines == 0 || numbered > 0;
    return habits;
}

// 'command' makes the file anew.
std::optional<std::string> ProblemWith(const fs::path& path, const std::string& command)
{
    std::error_code problem;
    const fs::file_status status = fs::status(path, problem);
    if (fs::exists(status) && !fs::is_regular_file(status))
        return path.string() + (fs::is_directory(status) ? " is a directory" : " is no plain file") +
               ", and stands where a tags file is looked for; move it away";
    std::ifstream file(path, std::ios::binary);
    if (!file)
        return path.string() + " cannot be read: " + std::strerror(errno);
    if (file.peek() == std::ifstream::traits_type::eof())
        return path.string() + " is empty; make it anew with: " + command;
    const Habits habits = LookAt(file);
    if (!habits.lineNumbers)
        return path.string() + " has no line numbers; make it anew with: " + command;
    if (habits.fieldsBehindScopes)
        return path.string() +
               " has fields behind its scopes, so that qualified names match nothing; make it anew with: " + command;
    return std::nullopt;
}

} // namespace

std::vector<std::string> ProblemsWithTags(const std::string& directory)
{
    std::vector<std::string> problems;
    if (const std::optional<fs::path> local = NearestTags(directory))
        if (const std::optional<std::string> problem = ProblemWith(*local, CommandForLocal(local->parent_path())))
            problems.push_back(*problem);
    const fs::path system = SystemTagsFile(Home());
    std::error_code ignored;
    if (!system.empty() && fs::exists(system, ignored))
        if (const std::optional<std::string> problem = ProblemWith(system, kCommandForSystem))
            problems.push_back(*problem);
    return problems;
}

std::string RemedyForNoTags(const std::string& directory)
{
    return "no tags file serves " + directory + "\n" +
           "  There is no file \"tags\" in it or above it, and no system tags file " +
           (Home().empty() ? std::string("(HOME is not set)") : SystemTagsFile(Home())) + ".\n" +
           "  Make one with:  " + CommandForLocal(directory) + "\n" + "  The system's:   " + kCommandForSystem;
}

} // namespace wren
