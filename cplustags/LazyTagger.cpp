#include "cplustags/LazyTagger.h"

#include "base/FindProgram.h"
#include "cplustags/Failure.h"
#include "cplustags/Interrupt.h"
#include "tagging/IgnoredMacros.h"
#include "tagging/ctags/CtagsProgram.h"

#include <functional>
#include <optional>
#include <thread>
#include <utility>

namespace cplustags {

namespace {

// Signals must reach the main thread, whose blocking calls they interrupt.
std::thread ThreadWithoutSignals(std::function<void()> body)
{
    const InterruptsElsewhere elsewhere;
    return std::thread(std::move(body));
}

std::string FindChosenCtags(const Options& options, const Place& place)
{
    if (options.ctags.empty()) {
        base::Result<std::string> found = tagging::FindCtags(place.currentDirectory);
        if (!found)
            throw Failure(found.Failure().Message());
        return std::move(*found);
    }
    std::optional<std::string> found = base::FindProgram(options.ctags, place.currentDirectory);
    if (!found)
        throw Failure("CPLUSTAGS_CTAGS is '" + base::Shown(options.ctags) + "', which cannot be run");
    return std::move(*found);
}

} // namespace

LazyTagger::LazyTagger(const Options& options, const Place& place, Output& output, Progress& progress,
                       const base::CancelToken& cancel)
    : options(options), place(place), output(output), progress(progress), cancel(cancel)
{
}

bool LazyTagger::GoesOn()
{
    return HasBegun() ? tagger->GoesOn() : !cancel.IsCancelled();
}

void LazyTagger::Add(const std::string& path, std::string field)
{
    if (!HasBegun())
        Begin();
    tagger->Add(path, std::move(field));
}

void LazyTagger::Begin()
{
    tagging::CtagsSettings& ctags = settings.ctags;
    ctags.program = FindChosenCtags(options, place);
    scratch = std::make_unique<tagging::Scratch>(output.Begin());
    ctags.temporaries = scratch->Directory();
    ctags.directory = place.directory;
    ctags.language = options.language;
    ctags.ignored = tagging::ListForCtags(options.ignored, place.currentDirectory);
    ctags.prototypes = options.prototypes;
    ctags.timeLimit = options.timeLimit;
    settings.ignoredMacros = tagging::IgnoredMacros(ctags.ignored);
    settings.jobs = options.jobs;
    tagger = std::make_unique<tagging::Tagger>(settings, progress, cancel, ThreadWithoutSignals);
}

void LazyTagger::Finish()
{
    if (HasBegun())
        tagger->Finish();
}

void LazyTagger::Check() const
{
    if (HasBegun() && !tagger->Failure().empty())
        throw Failure(tagger->Failure());
}

tagsfile::LineSources LazyTagger::Lines()
{
    return HasBegun() ? tagger->Lines() : tagsfile::LineSources();
}

std::unordered_set<std::string> LazyTagger::TaggedFields() const
{
    std::unordered_set<std::string> fields;
    for (size_t file = 0; HasBegun() && file < tagger->Fields().size(); ++file)
        if (tagger->IsTagged(file))
            fields.insert(tagger->Fields()[file]);
    return fields;
}

} // namespace cplustags
