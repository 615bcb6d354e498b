// The tagger of a run, which is made with the first source.
#pragma once

#include "base/CancelToken.h"
#include "cplustags/Options.h"
#include "cplustags/Output.h"
#include "cplustags/Place.h"
#include "cplustags/Progress.h"
#include "tagging/Tagger.h"
#include "tagging/ctags/Scratch.h"

#include <memory>
#include <string>
#include <unordered_set>

namespace cplustags {

// Without a source nothing is needed: neither a ctags nor a directory for temporary files. Used by one thread.
class LazyTagger {
public:
    // All must outlive it.
    LazyTagger(const Options& options, const Place& place, Output& output, Progress& progress,
               const base::CancelToken& cancel);

    bool GoesOn();                                        // false when it makes no sense to add more
    void Add(const std::string& path, std::string field); // throws Failure when there is no ctags, or no room for it
    void Finish();                                        // waits for the end
    void Check() const;                                   // throws Failure when there is no result

    // After Finish():
    bool HasBegun() const { return tagger != nullptr; }
    tagsfile::LineSources Lines(); // which it must outlive
    tagging::TaggingCounts Total() const { return HasBegun() ? tagger->Total() : tagging::TaggingCounts(); }
    tagging::TagsByFile TooLong() const { return HasBegun() ? tagger->TooLong() : tagging::TagsByFile(); }
    const std::string& Field(unsigned file) const { return tagger->Fields()[file]; }
    std::unordered_set<std::string> TaggedFields() const;

private:
    void Begin();

    const Options& options;
    const Place& place;
    Output& output;
    Progress& progress;
    const base::CancelToken& cancel;
    tagging::Settings settings;
    std::unique_ptr<tagging::Scratch> scratch;
    std::unique_ptr<tagging::Tagger> tagger;
};

} // namespace cplustags
