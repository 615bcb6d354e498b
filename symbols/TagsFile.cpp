#include "symbols/TagsFile.h"

#include "base/Paths.h"
#include "tagging/TagStore.h"
#include "tagging/TagsOfSymbols.h"
#include "tagsfile/NewFile.h"
#include "tagsfile/TagLine.h"
#include "tagsfile/TagsFileKind.h"
#include "tagsfile/TagsWriter.h"

#include <algorithm>
#include <exception>
#include <memory>
#include <optional>
#include <system_error>
#include <thread>
#include <utility>
#include <vector>

namespace symbols {

namespace {

struct CoveredFiles {
    std::vector<FileNumber> numbers;
    std::vector<std::string> fields; // their names in the tags file
    size_t unnameable = 0;
};

// The tags of every so many files, in order.
class Share {
public:
    Share(const Snapshot& snapshot, const CoveredFiles& files, const TagsFileOptions& options,
          const base::CancelToken& cancel)
        : snapshot(snapshot), files(files), options(options), cancel(cancel)
    {
    }

    // For any thread.
    void Collect(size_t first, size_t step)
    {
        try {
            CollectTags(first, step);
        } catch (const std::exception& problem) { // out of memory
            failure = problem.what();
        }
    }

    const std::string& Failure() const { return failure; }
    std::unique_ptr<tagsfile::LineSource> Lines() { return Lines(&tooLongAgain); }
    size_t Size() const { return size; }
    size_t TooLong() const
    {
        size_t sum = 0;
        for (const auto& [file, tags] : tooLong)
            sum += tags;
        return sum;
    }

private:
    void CollectTags(size_t first, size_t step)
    {
        for (size_t i = first; i < files.numbers.size() && !cancel.IsCancelled(); i += step)
            Add(i);
        store.Sort(files.fields);
        tagsfile::LineSources sorted;
        sorted.push_back(Lines(&tooLong));
        const std::unique_ptr<tagsfile::LineSource> once = tagsfile::Merged(std::move(sorted));
        for (std::string_view line; once->Next(line);)
            ++size;
    }

    void Add(size_t file)
    {
        const Symbols symbols = snapshot.OfFile(files.numbers[file]);
        const std::vector<tagging::Symbol> plain(symbols.found.begin(), symbols.found.end());
        const auto prototypes = options.prototypes ? tagging::Prototypes::Include : tagging::Prototypes::LeaveOut;
        const tagsfile::Tags tags = tagging::TagsOf(plain, prototypes);
        for (const tagsfile::Tag& tag : tags.tags)
            store.Add(static_cast<unsigned>(file), tag);
    }

    std::unique_ptr<tagsfile::LineSource> Lines(tagging::TagsByFile* leftOut) const
    {
        return store.Lines(files.fields, leftOut);
    }

    const Snapshot& snapshot;
    const CoveredFiles& files;
    const TagsFileOptions& options;
    const base::CancelToken& cancel;
    std::string failure;
    tagging::TagStore store;
    size_t size = 0;
    tagging::TagsByFile tooLong;
    tagging::TagsByFile tooLongAgain; // counted while the lines are read a second time
};

CoveredFiles FilesToCover(const Snapshot& snapshot, const TagsFileOptions& options)
{
    CoveredFiles files;
    const std::string directory = base::DirectoryOf(options.target);
    snapshot.ForEachFile([&](FileNumber number, const File& file) {
        if (options.wants && !options.wants(file))
            return true;
        const std::string path = base::AbsolutePath(std::string(file.path), options.root);
        if (std::optional<std::string> field = tagsfile::FileField(path, directory)) {
            files.numbers.push_back(number);
            files.fields.push_back(std::move(*field));
        } else {
            ++files.unnameable;
        }
        return true;
    });
    return files;
}

// The shares are collected at a time; on this thread what the system starts no thread for.
void CollectAll(std::vector<Share>& shares)
{
    std::vector<std::thread> threads;
    for (size_t i = 0; i < shares.size(); ++i) {
        const auto collect = [&shares, i] { shares[i].Collect(i, shares.size()); };
        try {
            if (i + 1 < shares.size()) {
                threads.emplace_back(collect);
                continue;
            }
        } catch (const std::system_error&) {
        }
        collect();
    }
    for (std::thread& thread : threads)
        thread.join();
}

std::optional<base::Error> RefusalOf(const std::string& target)
{
    if (const std::string refusal = tagsfile::RefusalOfLink(target); !refusal.empty())
        return base::Error{refusal};
    switch (tagsfile::WhatIs(target)) {
    case tagsfile::Target::Foreign:
        return base::Error{base::Shown(target) + " is not a tags file and is left unchanged"};
    case tagsfile::Target::Unreadable:
        return base::SystemError("cannot read " + base::Shown(target) + ", the file to replace");
    case tagsfile::Target::Absent:
    case tagsfile::Target::Tags:
        break;
    }
    return std::nullopt;
}

base::Result<void> Write(const TagsFileOptions& options, const tagsfile::TagsCount& count, tagsfile::LineSources lines,
                         const base::CancelToken& cancel)
{
    tagsfile::NewFile newFile(options.target);
    if (!newFile.Error().empty())
        return base::Error{newFile.Error()};
    const tagsfile::RewritableFile file = {
        [&](std::string_view text) { return !cancel.IsCancelled() && newFile.Write(text); },
        [&](off_t place, std::string_view text) { return newFile.WriteOver(place, text); },
        [&](const timespec& modified) { newFile.SetTime(modified); },
    };
    const bool isWritten = tagsfile::WriteTags(count, options.version, std::move(lines), file) &&
                           !cancel.IsCancelled() && newFile.Commit();
    if (!isWritten)
        return base::Error{newFile.Error().empty() ? "cancelled" : newFile.Error()};
    return {};
}

} // namespace

base::Result<TagsFileCount> WriteTagsFile(const Snapshot& snapshot, const TagsFileOptions& options,
                                          const base::CancelToken& cancel)
{
    if (std::optional<base::Error> refusal = RefusalOf(options.target))
        return std::move(*refusal);
    const CoveredFiles files = FilesToCover(snapshot, options);
    std::vector<Share> shares;
    for (unsigned i = 0; i < std::max(options.jobs, 1u); ++i)
        shares.emplace_back(snapshot, files, options, cancel);
    CollectAll(shares);
    TagsFileCount count = {files.numbers.size(), 0, 0, files.unnameable};
    tagsfile::LineSources lines;
    for (Share& share : shares) {
        if (!share.Failure().empty())
            return base::Error{share.Failure()};
        count.tags += share.Size();
        count.tooLong += share.TooLong();
        lines.push_back(share.Lines());
    }
    if (const base::Result<void> written = Write(options, {count.files, count.tags}, std::move(lines), cancel);
        !written)
        return written.Failure();
    return count;
}

} // namespace symbols
