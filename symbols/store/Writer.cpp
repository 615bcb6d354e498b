#include "symbols/store/Writer.h"

#include "symbols/store/DecodedFile.h"

#include <algorithm>
#include <utility>

namespace symbols {

namespace {

constexpr std::uint64_t kSmallest = 64 * 1024; // bytes: smaller segments count as equal in size
constexpr unsigned kLevels = 16;

// Segments of a level have about the same size.
unsigned LevelOf(std::uint64_t size)
{
    unsigned level = 0;
    for (std::uint64_t limit = kSmallest; size > limit && level < kLevels - 1; limit *= 8)
        level++;
    return level;
}

} // namespace

FileChanges& IndexWriter::Member::Next()
{
    if (next == nullptr)
        next = std::make_unique<FileChanges>(*changes);
    return *next;
}

std::uint64_t IndexWriter::Member::LiveBytes() const
{
    const std::uint64_t files = segment->FileCount();
    return files == 0 ? 0 : segment->Size() / files * (files - Now().deadFiles);
}

IndexWriter::IndexWriter(std::unique_ptr<Destination> destination, const State& before, bool isStale,
                         StoreLimits limits)
    : destination(std::move(destination)), limits(limits), builder(std::make_unique<SegmentBuilder>()),
      isChanged(isStale)
{
    for (const State::Member& member : before.members)
        members.push_back({member.segment, member.changes, nullptr});
}

void IndexWriter::Put(std::string_view path, const tagging::FileStamp& stamp, const tagging::ParsedSource& source)
{
    const std::lock_guard guard(lock);
    Hide(path);
    pending[std::string(path)] = builder->Add(path, stamp, source);
    isChanged = true;
    if (builder->Memory() > limits.memory)
        WriteBuilder();
}

void IndexWriter::Touch(std::string_view path, const tagging::FileStamp& stamp)
{
    const std::lock_guard guard(lock);
    if (const auto found = pending.find(std::string(path)); found != pending.end())
        builder->Touch(found->second, stamp);
    for (Member& member : members) {
        const std::optional<FileInSegment> file = member.segment->FindFile(path);
        if (!file || member.Now().IsDead(*file))
            continue;
        auto& touched = member.Next().touched;
        const auto place = std::ranges::lower_bound(touched, *file, {}, [](const auto& each) { return each.first; });
        if (place != touched.end() && place->first == *file)
            place->second = stamp;
        else
            touched.insert(place, {*file, stamp});
        isChanged = true;
    }
}

void IndexWriter::Remove(std::string_view path)
{
    const std::lock_guard guard(lock);
    Hide(path);
}

void IndexWriter::Hide(std::string_view path)
{
    if (const auto found = pending.find(std::string(path)); found != pending.end()) {
        builder->Drop(found->second);
        pending.erase(found);
    }
    for (Member& member : members) {
        const std::optional<FileInSegment> file = member.segment->FindFile(path);
        if (!file || member.Now().IsDead(*file))
            continue;
        const std::optional<FileRecord> record = member.segment->File(*file);
        FileChanges& changes = member.Next();
        changes.dead.resize(std::max<size_t>(changes.dead.size(), *file + 1));
        changes.dead[*file] = true;
        changes.deadFiles++;
        changes.deadSymbols += record ? record->symbolCount : 0;
        std::erase_if(changes.touched, [&](const auto& each) { return each.first == *file; });
        isChanged = true;
    }
}

// After a failure, what was put is lost, and so is the whole change.
void IndexWriter::WriteBuilder()
{
    const std::unique_ptr<SegmentBuilder> full = std::exchange(builder, std::make_unique<SegmentBuilder>());
    pending.clear();
    if (full->IsEmpty() || !failure)
        return;
    SegmentBuilder::Written written;
    auto segment = destination->WriteSegment(*full, &written);
    if (segment)
        members.push_back({*segment, std::make_shared<const FileChanges>(), nullptr});
    else
        failure = segment.Failure();
}

base::Result<void> IndexWriter::Commit()
{
    const std::lock_guard guard(lock);
    WriteBuilder();
    if (!failure || !isChanged)
        return failure;
    if (std::ranges::any_of(members, [](const Member& member) { return member.segment->IsDamaged(); }))
        return failure = base::Error{"the index is damaged"};
    const base::Result<void> published = Publish();
    // Merging comes after the change is visible, since nobody waits for it then. It may fail: more segments than wanted
    // cost time only.
    for (bool goesOn = static_cast<bool>(published); goesOn;) {
        const std::vector<size_t> chosen = MembersToMerge();
        goesOn = !chosen.empty() && Merge(chosen) && Publish();
    }
    return published;
}

base::Result<void> IndexWriter::CommitPart()
{
    const std::lock_guard guard(lock);
    WriteBuilder();
    return failure ? destination->PublishPart(Next()) : failure;
}

State IndexWriter::Next()
{
    std::erase_if(members, [](const Member& member) { return member.IsGone(); });
    State state;
    for (Member& member : members) {
        if (member.next != nullptr)
            member.changes = std::move(member.next);
        state.members.push_back({member.segment, member.changes});
    }
    return state;
}

base::Result<void> IndexWriter::Publish()
{
    const base::Result<void> published = destination->Publish(Next());
    isChanged = isChanged && !published;
    return published;
}

// Small segments are merged while there are many of a size, so that an update of one file costs the same in any index:
// each file is written again a few times at most, as the segments that it is in grow.
std::vector<size_t> IndexWriter::MembersToMerge() const
{
    std::vector<size_t> levels[kLevels];
    for (size_t i = 0; i < members.size(); i++) {
        if (members[i].Now().deadFiles * 2 > members[i].segment->FileCount())
            return {i};
        if (members[i].LiveBytes() <= limits.merged)
            levels[LevelOf(members[i].LiveBytes())].push_back(i);
    }
    for (const std::vector<size_t>& level : levels)
        if (level.size() > limits.segments)
            return level;
    return {};
}

// The limits bound the memory that it takes: what is merged is never written in several segments, or merging would not
// end.
bool IndexWriter::Merge(const std::vector<size_t>& chosen)
{
    SegmentBuilder merged;
    for (const size_t i : chosen)
        if (!CopyFiles(members[i], &merged))
            return false;
    SegmentBuilder::Written written;
    const auto segment = destination->WriteSegment(merged, &written);
    if (!segment)
        return false;
    for (auto i = chosen.rbegin(); i != chosen.rend(); ++i)
        members.erase(members.begin() + static_cast<std::ptrdiff_t>(*i));
    members.push_back({*segment, std::make_shared<const FileChanges>(), nullptr});
    return true;
}

bool IndexWriter::CopyFiles(const Member& member, SegmentBuilder* merged)
{
    for (FileInSegment file = 0; file < member.segment->FileCount(); file++) {
        if (member.Now().IsDead(file))
            continue;
        const std::optional<DecodedFile> decoded = DecodeFile(*member.segment, file);
        if (!decoded)
            return false;
        const tagging::FileStamp* const touched = member.Now().Touched(file);
        merged->Add(decoded->path, touched != nullptr ? *touched : decoded->stamp, decoded->source);
    }
    return true;
}

} // namespace symbols
