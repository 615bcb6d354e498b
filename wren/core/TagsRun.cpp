#include "wren/core/TagsRun.h"

#include "base/DirectoryLock.h"
#include "base/NewFile.h"
#include "base/Process.h"
#include "wren/core/FindReport.h"
#include "wren/core/TagsCount.h"
#include "wren/core/TagsTarget.h"

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <unistd.h>
#include <utility>

namespace wren {

namespace {

namespace fs = std::filesystem;

using Kind = TagsOutcome::Kind;

constexpr int kNotRun = -1; // the result of system() without a process

} // namespace

TagsRun::TagsRun(const TagsLine& first, int output, std::function<void(const std::string&)> waits)
    : file(first.file), unfinished(first.unfinished), output(output), waits(std::move(waits))
{
    outcome.file = file;
}

// A run abandoned between two lines leaves no file either.
TagsRun::~TagsRun()
{
    Clean();
}

void TagsRun::TakeLock(const std::string& directory)
{
    lock = std::make_unique<base::DirectoryLock>(
        directory, [&] { waits(directory); }, [this] { return group.Stopped() != 0; });
}

void TagsRun::Begin()
{
    TakeLock(fs::path(file).parent_path());
    target = std::make_unique<TagsTarget>(file, unfinished);
    outcome.hadFile = target->HadFile();
    if (group.Stopped() != 0) // without the lock, the unfinished file may be another program's
        return;
    if (const std::string problem = WhyNotToBegin(); !problem.empty()) {
        Fail(problem);
        outcome.kind = Kind::Refused;
        return;
    }
    target->RemoveUnfinished();
    begun = true;
}

std::string TagsRun::WhyNotToBegin() const
{
    if (const std::optional<std::string> obstacle = target->Obstacle())
        return *obstacle;
    const std::string directory = fs::path(file).parent_path();
    return ::access(directory.c_str(), W_OK | X_OK) == 0 ? ""
                                                         : directory + " cannot be written: " + std::strerror(errno);
}

void TagsRun::Fail(const std::string& problem)
{
    if (IsWell())
        outcome.problem = problem;
}

int TagsRun::Take(const TagsLine& line, const std::string& command)
{
    if (target == nullptr)
        Begin();
    outcome.lines.push_back({command, std::nullopt});
    int status = kNotRun;
    if (IsWell() && group.Stopped() == 0) {
        status = line.kind == TagsLine::Kind::Move ? Move(line) : Run(line, command);
        outcome.lines.back().status = base::ShellStatus(status);
    }
    if (line.kind == TagsLine::Kind::Move)
        End();
    return status;
}

int TagsRun::Run(const TagsLine& line, const std::string& command)
{
    if (line.unfinished != unfinished) {
        Fail("a line of the plug-in's writes elsewhere: " + line.unfinished);
        return kNotRun;
    }
    if (line.kind == TagsLine::Kind::Append && AppendsNothing(command))
        return 0;
    return RunWatched(command);
}

int TagsRun::RunWatched(const std::string& command)
{
    const FindReport find;
    if (!find.IsUsable()) {
        Fail(std::string("its commands cannot be started: ") + std::strerror(errno));
        return kNotRun;
    }
    const base::Result<int> run =
        group.Run(FindReport::Watched(command), {output, {find.Statuses(), find.Complaints()}});
    if (!run)
        Fail(std::string("its commands cannot be started: ") + std::strerror(run.Failure().number));
    const int status = run ? *run : kNotRun;
    (void)base::WriteAll(output, find.Said()); // a lost reader does not stop the run
    if (status != 0)
        Fail("a command ended with status " + std::to_string(base::ShellStatus(status)));
    else
        Fail(find.Problem());
    if (IsWell())
        CheckWhatWasMade(find.Complained());
    return status;
}

// Fails when a tags program reports success but wrote nothing, or something other than tags.
void TagsRun::CheckWhatWasMade(bool findComplained)
{
    if (!target->HasUnfinished())
        Fail("the tags program wrote no new file");
    else if (findComplained && CountTags(unfinished).files == 0)
        Fail("find complained, and listed no file");
}

int TagsRun::Move(const TagsLine& line)
{
    if (line.unfinished != unfinished || line.file != file) {
        Fail("a line of the plug-in's moves elsewhere: " + line.file);
        return kNotRun;
    }
    if (const std::optional<std::string> obstacle = target->ObstacleToMove()) {
        Fail(*obstacle);
        return kNotRun;
    }
    if (target->Move()) {
        outcome.isNew = true;
        return 0;
    }
    Fail(file + " cannot be replaced: " + std::strerror(errno));
    return kNotRun;
}

void TagsRun::End()
{
    if (group.Stopped() != 0)
        outcome.kind = Kind::Interrupted;
    else if (IsWell())
        outcome.kind = Kind::Made;
    Clean();
}

void TagsRun::Clean()
{
    if (std::exchange(begun, false))
        target->RemoveUnfinished();
    lock.reset();
}

void TagsRun::Stop(int signal)
{
    group.Stop(signal);
}

} // namespace wren
