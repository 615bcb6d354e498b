// FileChanges to an index, and the merging of its segments.
#pragma once

#include "symbols/store/SegmentBuilder.h"
#include "symbols/store/Store.h"
#include "symbols/store/View.h"

#include <memory>
#include <mutex>
#include <string>
#include <unordered_map>
#include <vector>

namespace symbols {

// Where a writer puts its results. Its destruction removes segments that were not published.
class Destination {
public:
    virtual ~Destination() = default;
    virtual base::Result<std::shared_ptr<const Segment>> WriteSegment(SegmentBuilder& builder,
                                                                      SegmentBuilder::Written* written) = 0;
    virtual base::Result<void> Publish(const State& state) = 0;
    virtual base::Result<void> PublishPart(const State& state) = 0; // of a state that is not complete
};

// Any thread.
class IndexWriter : public Store::Writer {
public:
    // 'isStale': the first Commit() publishes even without changes.
    IndexWriter(std::unique_ptr<Destination> destination, const State& before, bool isStale, StoreLimits limits);

    void Put(std::string_view path, const tagging::FileStamp& stamp, const tagging::ParsedSource& source) override;
    void Touch(std::string_view path, const tagging::FileStamp& stamp) override;
    void Remove(std::string_view path) override;
    base::Result<void> Commit() override;
    base::Result<void> CommitPart() override;

private:
    struct Member { // a segment, with changes that are not published yet
        std::shared_ptr<const Segment> segment;
        std::shared_ptr<const FileChanges> changes; // as published
        std::unique_ptr<FileChanges> next;          // null: the same

        FileChanges& Next();
        const FileChanges& Now() const { return next != nullptr ? *next : *changes; }
        bool IsGone() const { return Now().deadFiles == segment->FileCount(); }
        std::uint64_t LiveBytes() const; // about
    };

    void Hide(std::string_view path);
    void WriteBuilder();
    base::Result<void> Publish();
    State Next(); // with all changes
    std::vector<size_t> MembersToMerge() const;
    bool Merge(const std::vector<size_t>& chosen); // false when it failed, which changes nothing
    static bool CopyFiles(const Member& member, SegmentBuilder* merged);

    std::mutex lock;
    std::unique_ptr<Destination> destination;
    StoreLimits limits;
    std::vector<Member> members;
    std::unique_ptr<SegmentBuilder> builder;
    std::unordered_map<std::string, SegmentBuilder::FileNumber> pending; // in the builder
    bool isChanged;
    base::Result<void> failure; // the first one
};

} // namespace symbols
