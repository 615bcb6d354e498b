#include "wren/cli/TagsAdvice.h"

#include "base/Descriptor.h"
#include "base/Holes.h"
#include "base/PlainFile.h"
#include "tagsfile/Kinds.h"
#include "vetch/storage/Home.h"
#include "vetch/support/ShellEscape.h"
#include "wren/core/SystemTags.h"

#include <algorithm>
#include <cctype>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <optional>
#include <string_view>
#include <unistd.h>

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

// The style of a file's first tags: ctags writes all tags with the same options.
struct Habits {
    bool lineNumbers = true;
    bool fieldsBehindScopes = false;
};

// Whether a further field follows the scope of a class, namespace, struct or union.
bool HasFieldBehindScope(std::string_view line)
{
    for (const std::string_view word : tagsfile::kScopeWords)
        if (const size_t start = line.find("\t" + std::string(word)); start != line.npos)
            return line.find('\t', start + 1) != line.npos;
    return false;
}

bool HasLineNumber(std::string_view line)
{
    const size_t name = line.find('\t');
    const size_t command = name == line.npos ? name : line.find('\t', name + 1);
    return command < line.size() - 1 && std::isdigit(static_cast<unsigned char>(line[command + 1]));
}

// The start of the file, long enough to show how it was made; the last line may be cut.
std::string BeginningOf(int file)
{
    constexpr size_t kMost = 256 * 1024;
    std::string text(kMost, '\0');
    size_t length = 0;
    while (length < kMost) {
        const ssize_t count = ::read(file, text.data() + length, kMost - length);
        if (count == 0 || (count < 0 && errno != EINTR))
            break;
        length += count < 0 ? 0 : static_cast<size_t>(count);
    }
    text.resize(length);
    return text;
}

Habits HabitsIn(std::string_view text)
{
    constexpr int kLinesLookedAt = 1000;
    Habits habits;
    int numbered = 0;
    int lines = 0;
    while (lines < kLinesLookedAt && !text.empty()) {
        const std::string_view line = text.substr(0, text.find('\n'));
        text.remove_prefix(std::min(line.size() + 1, text.size()));
        if (line.empty() || line[0] == '!')
            continue;
        ++lines;
        numbered += HasLineNumber(line);
        habits.fieldsBehindScopes = habits.fieldsBehindScopes || HasFieldBehindScope(line);
    }
    habits.lineNumbers = lines == 0 || numbered > 0;
    return habits;
}

// The problem of the open file, as the rest of a sentence about it.
std::optional<std::string> ProblemWithContent(int file)
{
    if (base::IsMostlyHoles(file))
        return "is mostly holes";
    const std::string text = BeginningOf(file);
    if (text.empty())
        return "is empty";
    const Habits habits = HabitsIn(text);
    if (!habits.lineNumbers)
        return "has no line numbers";
    if (habits.fieldsBehindScopes)
        return "has fields behind its scopes, so that qualified names match nothing";
    return std::nullopt;
}

// 'command' rebuilds the file.
std::optional<std::string> ProblemWith(const std::string& path, const std::string& command)
{
    const base::Descriptor file(base::OpenPlainFile(path.c_str()));
    if (!file.IsOpen()) {
        const int reason = errno;
        if (reason == EISDIR || reason == ENXIO)
            return path + (reason == EISDIR ? " is a directory" : " is not a plain file") +
                   ", where a tags file belongs; move it away";
        return path + " cannot be read: " + std::strerror(reason);
    }
    const std::optional<std::string> problem = ProblemWithContent(file.Number());
    if (!problem)
        return std::nullopt;
    return path + " " + *problem + "; rebuild it with: " + command;
}

} // namespace

std::vector<std::string> ProblemsWithTags(const std::string& directory)
{
    std::vector<std::string> problems;
    if (const std::optional<fs::path> local = NearestTags(directory))
        if (const std::optional<std::string> problem =
                ProblemWith(local->string(), CommandForLocal(local->parent_path())))
            problems.push_back(*problem);
    const fs::path system = SystemTagsFile(Home());
    std::error_code ignored;
    if (!system.empty() && fs::exists(system, ignored))
        if (const std::optional<std::string> problem = ProblemWith(system.string(), kCommandForSystem))
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
