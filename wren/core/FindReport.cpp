#include "wren/core/FindReport.h"

#include "wren/core/TerminalText.h"

#include <algorithm>
#include <array>
#include <csignal>
#include <cstdint>
#include <cstdlib>
#include <sstream>
#include <string_view>
#include <sys/mman.h>
#include <unistd.h>

namespace wren {

namespace {

// The messages are parsed here, so the language is fixed.
constexpr const char* kFunction = "find() { LC_ALL=C command find \"$@\" 2>&4; set -- $?; echo $1 >&3; return $1; }\n";

constexpr int kSomeFailed = 1; // find's status when it skipped a file or directory
constexpr int kBySignal = 128; // a shell's status for a signal, plus its number
constexpr std::string_view kSelf = "find: ";
constexpr std::array<std::string_view, 2> kHarmless = {": Permission denied", ": No such file or directory"};

// The reader closed the list. The reader's own status reports that.
constexpr std::string_view kNotWanted = "find: 'standard output': Broken pipe\nfind: write error\n";

constexpr size_t kMostSaid = 64 * 1024; // bytes: a tree can cause millions of messages

// The file's first bytes, in whole reads until 'most' is reached.
std::string Content(int file, size_t most = SIZE_MAX)
{
    std::string text;
    char part[4096];
    for (ssize_t count = 0;
         text.size() < most && (count = ::pread(file, part, sizeof part, static_cast<off_t>(text.size()))) > 0;)
        text.append(part, static_cast<size_t>(count));
    return text;
}

bool IsHarmless(std::string_view complaint)
{
    return complaint.starts_with(kSelf) &&
           std::ranges::any_of(kHarmless, [&](std::string_view reason) { return complaint.ends_with(reason); });
}

std::string OfFiles(std::string complaints)
{
    if (complaints.ends_with(kNotWanted))
        complaints.erase(complaints.size() - kNotWanted.size());
    return complaints;
}

bool AreHarmless(const std::string& complaints)
{
    if (complaints == kNotWanted)
        return true;
    std::istringstream lines(OfFiles(complaints));
    for (std::string line; std::getline(lines, line);)
        if (!IsHarmless(line))
            return false;
    return !complaints.empty();
}

std::string ProblemWithStatus(const std::string& text, const std::string& complaints)
{
    const int status = std::atoi(text.c_str());
    if (text == "0" || status == kBySignal + SIGPIPE || (status == kSomeFailed && AreHarmless(complaints)))
        return "";
    if (status > kBySignal)
        return "find was ended by signal " + std::to_string(status - kBySignal);
    return "find ended with status " + text;
}

} // namespace

std::string ProblemWithList(const std::string& statuses, const std::string& complaints)
{
    std::istringstream lines(statuses);
    bool any = false;
    for (std::string line; std::getline(lines, line); any = true)
        if (const std::string problem = ProblemWithStatus(line, complaints); !problem.empty())
            return problem + ", so its list of files may not be complete";
    return any ? "" : "find was not run to its end, so its list of files may not be complete";
}

FindReport::FindReport()
    : statuses(::memfd_create("find-status", MFD_CLOEXEC)), complaints(::memfd_create("find-complaints", MFD_CLOEXEC))
{
}

std::string FindReport::Watched(const std::string& command)
{
    return kFunction + command;
}

std::string FindReport::Said() const
{
    std::string text = Content(complaints.Number(), kMostSaid);
    if (text.size() >= kMostSaid) {
        text.erase(text.rfind('\n') + 1);
        text += "find: and more complaints, which are left out here\n";
    }
    return ForTerminal(text);
}

bool FindReport::Complained() const
{
    return !OfFiles(Content(complaints.Number())).empty();
}

std::string FindReport::Problem() const
{
    return ProblemWithList(Content(statuses.Number()), Content(complaints.Number()));
}

} // namespace wren
