#include "cplustags/MakeTags.h"

#include "cplustags/CtagsProgram.h"
#include "cplustags/FileList.h"
#include "cplustags/IgnoredMacros.h"
#include "cplustags/Interrupt.h"
#include "cplustags/NewFile.h"
#include "cplustags/OldTags.h"
#include "cplustags/Options.h"
#include "cplustags/Paths.h"
#include "cplustags/Progress.h"
#include "cplustags/Scratch.h"
#include "cplustags/SparseFile.h"
#include "cplustags/StandardOutput.h"
#include "cplustags/Summary.h"
#include "cplustags/TagLine.h"
#include "cplustags/Tagger.h"
#include "cplustags/TagsWriter.h"
#include "cplustags/WorkingDirectory.h"

#include <cerrno>
#include <chrono>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <optional>
#include <stdexcept>
#include <sys/stat.h>
#include <unistd.h>
#include <unordered_set>

namespace cplustags {

namespace {

constexpr const char* kStandard = "-"; // input or output

struct Failure : std::runtime_error {
    using std::runtime_error::runtime_error;
};

std::string Reason()
{
    return std::strerror(errno);
}

bool IsGone(const std::string& path)
{
    struct stat status;
    return ::stat(path.c_str(), &status) != 0 && (errno == ENOENT || errno == ENOTDIR);
}

// The signals are for the main thread, whose calls that wait are then broken off.
std::thread ThreadWithoutSignals(std::function<void()> body)
{
    const InterruptsElsewhere elsewhere;
    return std::thread(std::move(body));
}

// One run. Operations throw Failure; what was begun is undone at destruction.
class Job {
public:
    Job(const Options& options, Progress& progress, const base::CancelToken& cancel);

    void Run();

private:
    bool WritesFile() const { return options.target != kStandard; }
    void CheckTarget() const;
    int OpenList();
    void HaveFilesTagged();
    void Begin();
    void MakeNewFile();
    const std::string& MakeWorkingDirectory();
    void CheckOutcome() const;
    bool HasNothingToDo() const { return options.append && !files.HasNames(); }
    bool HasOldTags() const;
    std::unique_ptr<LineSource> OldLines();
    TagsCount Count();
    void Write();
    void WriteFile(const TagsCount& count, LineSources lines);
    void WriteOutput(const TagsCount& count, LineSources lines);
    void SayWhatIsTooLong() const;
    void SaySummary(const TagsCount& count) const;

    const Options& options;
    Progress& progress;
    const base::CancelToken& cancel;
    const std::chrono::steady_clock::time_point start = std::chrono::steady_clock::now();
    const std::string currentDirectory = CurrentDirectory();
    const std::string target; // an absolute path, also for standard output: names are written as for a file here
    const std::string directory;
    base::Descriptor list;
    FileList files;
    size_t leftOut = 0; // files whose names no line can hold
    Settings settings;
    std::unique_ptr<NewFile> newFile;                 // when a file is written
    std::unique_ptr<WorkingDirectory> forTemporaries; // when none is
    std::unique_ptr<Scratch> scratch;
    std::unique_ptr<Tagger> tagger; // once there is a file
    std::unordered_set<std::string> taggedFields;
    size_t otherFiles = 0; // that old tags are of
};

Job::Job(const Options& options, Progress& progress, const base::CancelToken& cancel)
    : options(options), progress(progress), cancel(cancel), target(AbsolutePath(options.target, currentDirectory)),
      directory(DirectoryOf(target)), files(options.files, OpenList(), currentDirectory, directory, progress, [this] {
          return tagger != nullptr ? tagger->GoesOn() : !this->cancel.IsCancelled();
      })
{
}

int Job::OpenList()
{
    if (options.list == kStandard)
        return STDIN_FILENO;
    if (options.list.empty())
        return -1;
    list = base::Descriptor(::open(options.list.c_str(), O_RDONLY | O_CLOEXEC));
    if (!list.IsOpen())
        throw Failure("cannot read the list " + Shown(options.list) + ": " + Reason());
    return list.Number();
}

void Job::Run()
{
    if (WritesFile())
        CheckTarget();
    HaveFilesTagged();
    if (cancel.IsCancelled())
        throw Failure("interrupted");
    CheckOutcome();
    if (!HasNothingToDo())
        Write();
}

void Job::CheckTarget() const
{
    if (const std::string refusal = RefusalOfLink(target); !options.followLinks && !refusal.empty())
        throw Failure(refusal);
    struct stat status;
    if (options.append && ::stat(target.c_str(), &status) == 0 && IsMostlyHoles(status))
        throw Failure(Shown(target) + " is too large for what is in it, and is left as it is; remove it");
    switch (WhatIs(target)) {
    case Target::Absent:
    case Target::Tags:
        return;
    case Target::Foreign:
        throw Failure(Shown(target) +
                      " is no tags file, and is left as it is; name another file with -f, or remove it");
    case Target::Unreadable:
        throw Failure("cannot read " + Shown(target) + ", which was to be replaced: " + Reason());
    }
}

void Job::HaveFilesTagged()
{
    std::string path;
    while ((tagger == nullptr || tagger->GoesOn()) && files.Next(path)) {
        std::optional<std::string> field = FileField(path, directory);
        if (!field) {
            progress.Say(Shown(path) + " is left out: a tags file cannot hold a name with a tab or a line break in it");
            ++leftOut;
            continue;
        }
        if (tagger == nullptr)
            Begin();
        tagger->Add(path, std::move(*field));
    }
    if (tagger != nullptr)
        tagger->Finish();
}

void Job::Begin()
{
    std::string error;
    settings.ctags = FindCtags(options.ctags, currentDirectory, &error);
    if (settings.ctags.empty())
        throw Failure(error);
    scratch = std::make_unique<Scratch>(MakeWorkingDirectory());
    settings.temporaries = scratch->Directory();
    settings.directory = directory;
    settings.language = options.language;
    settings.ignored = ListForCtags(options.ignored, currentDirectory);
    settings.ignoredMacros = IgnoredMacros(settings.ignored);
    settings.prototypes = options.prototypes;
    settings.jobs = options.jobs;
    settings.timeLimit = options.timeLimit;
    tagger = std::make_unique<Tagger>(settings, progress, cancel, ThreadWithoutSignals);
}

void Job::MakeNewFile()
{
    newFile = std::make_unique<NewFile>(target, options.followLinks ? AtLink::Follow : AtLink::Refuse);
    if (!newFile->Error().empty())
        throw Failure(newFile->Error());
}

// That of the new file, or another one when there is none.
const std::string& Job::MakeWorkingDirectory()
{
    if (WritesFile()) {
        MakeNewFile();
        return newFile->Directory();
    }
    const char* given = std::getenv("TMPDIR");
    const std::string parent = AbsolutePath(given != nullptr && *given != '\0' ? given : "/tmp", currentDirectory);
    forTemporaries = std::make_unique<WorkingDirectory>(parent, "cplustags-" + std::to_string(::geteuid()));
    if (!forTemporaries->Error().empty())
        throw Failure(forTemporaries->Error());
    return forTemporaries->Path();
}

// Files that are gone are nothing to worry about for who adds to a tags file: their old tags go. Else a list of which
// nothing could be read is a mistake, for which no tags file should be given up.
void Job::CheckOutcome() const
{
    if (!files.Error().empty())
        throw Failure("cannot read the list of sources: " + files.Error());
    if (tagger != nullptr && !tagger->Failure().empty())
        throw Failure(tagger->Failure());
    const size_t lost = files.Unreadable() + leftOut + (options.append ? 0 : files.Missing());
    if (tagger == nullptr && lost > 0)
        throw Failure("none of the sources could be tagged");
}

// The fields of tags that stay are counted in 'otherFiles'.
std::unique_ptr<LineSource> Job::OldLines()
{
    otherFiles = 0;
    const auto goes = [this](std::string_view field) {
        const std::string path = AbsolutePath(PathOfField(field, directory), directory);
        const std::optional<std::string> usual = FileField(path, directory);
        if ((usual && taggedFields.count(*usual) != 0) || IsGone(path))
            return true;
        ++otherFiles;
        return false;
    };
    std::unique_ptr<LineSource> lines = LinesThatStay(target, goes);
    if (lines == nullptr)
        throw Failure("cannot read " + Shown(target) + ": " + Reason());
    return lines;
}

bool Job::HasOldTags() const
{
    return options.append && WritesFile() && WhatIs(target) == Target::Tags;
}

TagsCount Job::Count()
{
    TagsCount count;
    if (tagger != nullptr)
        count = {tagger->Total().files, tagger->Total().tags};
    if (!HasOldTags())
        return count;
    LineSources old;
    old.push_back(OldLines());
    const std::unique_ptr<LineSource> once = Merged(std::move(old));
    for (std::string_view line; once->Next(line);)
        ++count.tags;
    count.files += otherFiles;
    return count;
}

void Job::Write()
{
    for (size_t file = 0; tagger != nullptr && file < tagger->Fields().size(); ++file)
        if (tagger->IsTagged(file))
            taggedFields.insert(tagger->Fields()[file]);
    const TagsCount count = Count();
    LineSources lines;
    if (tagger != nullptr)
        lines = tagger->Lines();
    if (HasOldTags())
        lines.push_back(OldLines());
    if (WritesFile())
        WriteFile(count, std::move(lines));
    else
        WriteOutput(count, std::move(lines));
    if (!cancel.IsCancelled())
        SayWhatIsTooLong();
    if (options.totals && !cancel.IsCancelled())
        SaySummary(count);
}

void Job::WriteFile(const TagsCount& count, LineSources lines)
{
    if (newFile == nullptr)
        MakeNewFile();
    const auto write = [this](std::string_view text) { return !cancel.IsCancelled() && newFile->Write(text); };
    const bool isWritten =
        WriteTags(count, std::move(lines), write, *newFile) && !cancel.IsCancelled() && newFile->Commit();
    if (!newFile->Error().empty())
        throw Failure(newFile->Error());
    if (!isWritten)
        throw Failure(Shown(target) + " has changed while it was read");
}

void Job::WriteOutput(const TagsCount& count, LineSources lines)
{
    StandardOutput output;
    const auto write = [this, &output](std::string_view text) { return !cancel.IsCancelled() && output.Write(text); };
    if (!WriteTags(count, std::move(lines), write) || !output.Flush())
        throw Failure("cannot write to standard output: " + Reason());
}

void Job::SayWhatIsTooLong() const
{
    if (tagger == nullptr || tagger->TooLong().empty())
        return;
    const auto name = [this](unsigned file) { return Shown(PathOfField(tagger->Fields()[file], directory)); };
    progress.Say(TooLongText(tagger->TooLong(), name));
}

void Job::SaySummary(const TagsCount& count) const
{
    const std::chrono::duration<double> seconds = std::chrono::steady_clock::now() - start;
    TaggingCounts counts = tagger != nullptr ? tagger->Total() : TaggingCounts();
    counts.unreadable += files.Unreadable() + files.Missing();
    progress.Say(SummaryText(counts, leftOut, count, seconds.count()));
}

} // namespace

int MakeTags(const Options& options, Progress& progress, const base::CancelToken& cancel)
{
    try {
        Job(options, progress, cancel).Run();
        return 0;
    } catch (const std::exception& problem) {
        if (!cancel.IsCancelled())
            progress.Say(problem.what());
        return 1;
    }
}

} // namespace cplustags
