// Where the tags of a run go.
#pragma once

#include "base/CancelToken.h"
#include "base/WorkingDirectory.h"
#include "cplustags/NewFile.h"
#include "cplustags/Options.h"
#include "cplustags/Place.h"
#include "tagsfile/TagsWriter.h"

#include <memory>
#include <string>

namespace cplustags {

// A file, which takes the place of the old one at the end of Write(), or standard output. Operations throw Failure;
// until the end of Write() the old file stays as it is. Not thread-safe.
class Output {
public:
    // All must outlive it.
    Output(const Options& options, const Place& place, const base::CancelToken& cancel);

    bool IsFile() const { return options.target != Options::kStandard; }
    bool HasOldTags() const; // a tags file is there that is to be added to

    void Check() const;         // that a file which is there may be replaced
    const std::string& Begin(); // makes a directory where temporary files may be put
    void Write(const tagsfile::TagsCount& count, tagsfile::LineSources lines);

private:
    void MakeNewFile();
    void WriteFile(const tagsfile::TagsCount& count, tagsfile::LineSources lines);
    void WriteStandardOutput(const tagsfile::TagsCount& count, tagsfile::LineSources lines) const;

    const Options& options;
    const Place& place;
    const base::CancelToken& cancel;
    std::unique_ptr<NewFile> newFile;                       // when a file is written
    std::unique_ptr<base::WorkingDirectory> forTemporaries; // when none is
};

} // namespace cplustags
