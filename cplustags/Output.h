// The destination of a run's tags.
#pragma once

#include "base/CancelToken.h"
#include "base/WorkingDirectory.h"
#include "cplustags/Options.h"
#include "cplustags/Place.h"
#include "tagsfile/NewFile.h"
#include "tagsfile/TagsWriter.h"

#include <memory>
#include <string>

namespace cplustags {

// Standard output, or a file that replaces the old one at the end of Write(); until then the old file is unchanged.
// Operations throw Failure. Not thread-safe.
class Output {
public:
    // All must outlive it.
    Output(const Options& options, const Place& place, const base::CancelToken& cancel);

    bool IsFile() const { return options.target != Options::kStandard; }
    bool HasOldTags() const; // whether to append to an existing tags file

    void Check() const;         // throws if the existing file must not be replaced
    const std::string& Begin(); // makes and returns a directory for temporary files
    void Write(const tagsfile::TagsCount& count, tagsfile::LineSources lines);

private:
    void MakeNewFile();
    void WriteFile(const tagsfile::TagsCount& count, tagsfile::LineSources lines);
    void WriteStandardOutput(const tagsfile::TagsCount& count, tagsfile::LineSources lines) const;

    const Options& options;
    const Place& place;
    const base::CancelToken& cancel;
    std::unique_ptr<tagsfile::NewFile> newFile;             // null for standard output
    std::unique_ptr<base::WorkingDirectory> forTemporaries; // null for a file
};

} // namespace cplustags
