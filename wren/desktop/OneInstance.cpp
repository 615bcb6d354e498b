#include "wren/desktop/OneInstance.h"

#include "base/ExitStatus.h"
#include "wren/desktop/DocumentActions.h"

#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <unistd.h>
#include <utility>

namespace wren {

namespace {

namespace fs = std::filesystem;

constexpr std::chrono::seconds kPatience(10);      // with an editor that runs already
constexpr std::chrono::seconds kWhileStarting(60); // with one that starts, and may be asked something first

std::string ActivationToken()
{
    for (const char* variable : {"XDG_ACTIVATION_TOKEN", "DESKTOP_STARTUP_ID"})
        if (const char* value = std::getenv(variable); value != nullptr && *value != '\0')
            return value;
    return "";
}

OpenRequest RequestOf(const DesktopArguments& arguments)
{
    OpenRequest request{arguments.places, arguments.waits, ActivationToken()};
    for (Place& place : request.places)
        place.file = AbsolutePath(place.file);
    return request;
}

int StatusOf(Answer answer)
{
    switch (answer) {
    case Answer::Taken:
    case Answer::Closed:
        return base::exit_status::kDone;
    case Answer::Failed:
        std::fputs("wren: the editor could not open that.\n", stderr);
        return base::exit_status::kUnusable;
    case Answer::Ended:
        std::fputs("wren: the editor ended before the text was closed.\n", stderr);
        return base::exit_status::kNothing;
    case Answer::Nobody:
        break;
    }
    std::fputs("wren: the editor could not be started.\n", stderr);
    return base::exit_status::kUnavailable;
}

// Whoever reads the output of the program that waits must not wait for the editor too.
void LeaveTerminal()
{
    ::setsid();
    const base::Descriptor nowhere(::open("/dev/null", O_RDWR | O_CLOEXEC));
    if (!nowhere.IsOpen())
        return;
    for (const int standard : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO})
        ::dup2(nowhere.Number(), standard);
}

Meeting StartAndWait(const std::string& place, Claim claim, DesktopArguments* arguments)
{
    const pid_t child = ::fork();
    if (child < 0)
        return {std::nullopt, std::move(claim)};
    if (child == 0) {
        LeaveTerminal();
        arguments->places.clear(); // the parent brings them
        arguments->options.restoresSession = false;
        return {std::nullopt, std::move(claim)};
    }
    claim = Claim(); // the child's alone, so that its end is noticed
    return {StatusOf(AskRunning(place, RequestOf(*arguments), kWhileStarting)), std::nullopt};
}

// The editor of a folder that the first file is in opens the files, if it runs.
std::optional<int> AskFolderAround(const DesktopArguments& arguments)
{
    if (!arguments.options.folder.empty() || arguments.places.empty())
        return std::nullopt;
    std::error_code unknown;
    const fs::path file = fs::weakly_canonical(arguments.places.front().file, unknown);
    for (fs::path folder = file.parent_path(); folder.has_relative_path(); folder = folder.parent_path()) {
        const base::Result<std::string> place = MeetingPlace(folder);
        if (!place || !fs::exists(*place, unknown))
            continue;
        if (const base::Result<std::optional<Claim>> claim = ClaimPlace(*place); !claim || *claim)
            continue; // a socket that was left behind
        const Answer answer = AskRunning(*place, RequestOf(arguments), kPatience);
        if (answer != Answer::Nobody)
            return StatusOf(answer);
    }
    return std::nullopt;
}

} // namespace

Meeting MeetRunning(DesktopArguments* arguments)
{
    if (arguments->isOnItsOwn)
        return {};
    if (std::optional<int> status = AskFolderAround(*arguments))
        return {status, std::nullopt};
    const base::Result<std::string> place = MeetingPlace(arguments->options.folder);
    if (!place)
        return {};
    for (const bool isLast : {false, true}) { // the editor may end just now: then this one takes its place
        base::Result<std::optional<Claim>> claim = ClaimPlace(*place);
        if (!claim)
            return {};
        if (*claim && arguments->waits && !arguments->places.empty())
            return StartAndWait(*place, std::move(**claim), arguments);
        if (*claim)
            return {std::nullopt, std::move(*claim)};
        const Answer answer = isLast ? Answer::Nobody : AskRunning(*place, RequestOf(*arguments), kPatience);
        if (answer != Answer::Nobody)
            return {StatusOf(answer), std::nullopt};
    }
    return {};
}

} // namespace wren
