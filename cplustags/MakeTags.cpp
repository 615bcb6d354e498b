#include "cplustags/MakeTags.h"

#include "cplustags/Failure.h"
#include "cplustags/LazyTagger.h"
#include "cplustags/Options.h"
#include "cplustags/Output.h"
#include "cplustags/Place.h"
#include "cplustags/Progress.h"
#include "cplustags/Sources.h"
#include "cplustags/StayingTags.h"
#include "cplustags/Summary.h"
#include "tagsfile/TagLine.h"

#include <chrono>
#include <optional>

namespace cplustags {

namespace {

// One run, from the sources to the tags. Operations throw Failure.
class Job {
public:
    Job(const Options& options, Progress& progress, const base::CancelToken& cancel)
        : options(options), progress(progress), cancel(cancel), place(options), output(options, place, cancel),
          tagger(options, place, output, progress, cancel),
          sources(options, place, progress, [this] { return tagger.GoesOn(); })
    {
    }

    void Run();

private:
    void TagSources();
    void CheckOutcome() const;
    bool HasNothingToDo() const { return options.append && !sources.HasNames(); }
    void Write();
    void Report(const tagsfile::TagsCount& count) const;

    const std::chrono::steady_clock::time_point start = std::chrono::steady_clock::now();
    const Options& options;
    Progress& progress;
    const base::CancelToken& cancel;
    const Place place;
    Output output;
    LazyTagger tagger;
    Sources sources;
};

void Job::Run()
{
    output.Check();
    TagSources();
    if (cancel.IsCancelled())
        throw Failure("interrupted");
    CheckOutcome();
    if (!HasNothingToDo())
        Write();
}

void Job::TagSources()
{
    FoundSource source;
    while (tagger.GoesOn() && sources.Next(source))
        tagger.Add(source.path, std::move(source.field));
    tagger.Finish();
}

// When appending, missing files are normal: their old tags are removed. Otherwise a list without any readable file is a
// mistake, and must not replace a tags file.
void Job::CheckOutcome() const
{
    sources.CheckList();
    tagger.Check();
    const size_t lost = sources.Unreadable() + sources.Unnameable() + (options.append ? 0 : sources.Missing());
    if (!tagger.HasBegun() && lost > 0)
        throw Failure("none of the sources could be tagged");
}

void Job::Write()
{
    tagsfile::TagsCount count = {tagger.Total().files, tagger.Total().tags};
    tagsfile::LineSources lines = tagger.Lines();
    std::optional<StayingTags> staying;
    if (output.HasOldTags()) {
        const tagsfile::TagsCount old = staying.emplace(place, tagger.TaggedFields()).Count();
        count = {count.files + old.files, count.tags + old.tags};
        lines.push_back(staying->Lines());
    }
    output.Write(count, std::move(lines));
    if (!cancel.IsCancelled())
        Report(count);
}

void Job::Report(const tagsfile::TagsCount& count) const
{
    const auto name = [this](unsigned file) {
        return base::Shown(tagsfile::PathOfField(tagger.Field(file), place.directory));
    };
    if (const tagging::TagsByFile tooLong = tagger.TooLong(); !tooLong.empty())
        progress.Say(TooLongText(tooLong, name));
    if (!options.totals)
        return;
    const std::chrono::duration<double> seconds = std::chrono::steady_clock::now() - start;
    tagging::TaggingCounts counts = tagger.Total();
    counts.unreadable += sources.Unreadable() + sources.Missing();
    progress.Say(SummaryText(counts, sources.Unnameable(), count, seconds.count()));
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
