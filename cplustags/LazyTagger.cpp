#include "cplustags/LazyTagger.h"

#include "cplustags/CtagsProgram.h"
#include "cplustags/Failure.h"
#include "cplustags/IgnoredMacros.h"
#include "cplustags/Interrupt.h"

#include <functional>
#include <thread>
#include <utility>

namespace cplustags {

namespace {

// The signals are for the main thread, whose calls that wait are then broken off.
std::thread ThreadWithoutSignals(std::function<void()> body)
{
    const InterruptsElsewhere elsewhere;
    return std::thread(std::move(body));
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
    std::string error;
    settings.ctags = FindCtags(options.ctags, place.currentDirectory, &error);
    if (settings.ctags.empty())
        throw Failure(error);
    scratch = std::make_unique<Scratch>(output.Begin());
    settings.temporaries = scratch->Directory();
    settings.directory = place.directory;
    settings.language = options.language;
    settings.ignored = ListForCtags(options.ignored, place.currentDirectory);
    settings.ignoredMacros = IgnoredMacros(settings.ignored);
    settings.prototypes = options.prototypes;
    settings.jobs = options.jobs;
    settings.timeLimit = options.timeLimit;
    tagger = std::make_unique<Tagger>(settings, progress, cancel, ThreadWithoutSignals);
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

LineSources LazyTagger::Lines()
{
    return HasBegun() ? tagger->Lines() : LineSources();
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
