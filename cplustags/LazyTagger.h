// The tagger of a run, created with the first source.
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

// Without sources, a run needs neither ctags nor a temporary directory. Used by one thread.
class LazyTagger {
public:
    // All must outlive it.
    LazyTagger(const Options& options, const Place& place, Output& output, Progress& progress,
               const base::CancelToken& cancel);

    bool GoesOn();                                        // false when adding more is useless
    void Add(const std::string& path, std::string field); // throws Failure without ctags or a directory for its files
    void Finish();                                        // blocks until the end
    void Check() const;                                   // throws Failure when there is no result

    // After Finish():
    bool HasBegun() const { return tagger != nullptr; }
    tagsfile::LineSources Lines(); // it must outlive them
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
