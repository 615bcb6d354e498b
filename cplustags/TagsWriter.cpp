#include "cplustags/TagsWriter.h"

#include "cplustags/NewFile.h"
#include "tagsfile/NameOrder.h"
#include "tagsfile/SortedClaim.h"

#include <ctime>

namespace cplustags {

namespace {

std::string PseudoTag(const std::string& name, const std::string& value, const std::string& comment)
{
    return "!_TAG_" + name + "\t" + value + "\t/" + comment + "/\n";
}

// The pseudo-tag by which a file says that its names are in order, when there is a value for it, in its place between
// the others.
std::string PseudoTagsWith(const TagsCount& count, const std::string& sorted)
{
    return PseudoTag("CPLUSTAGS_FILES", std::to_string(count.files), "files tagged") +
           (sorted.empty() ? "" : std::string(tagsfile::kSortedClaim) + sorted + "\t/size while in order/\n") +
           PseudoTag("CPLUSTAGS_TAGS", std::to_string(count.tags), "tags in this file") +
           PseudoTag("FILE_FORMAT", "2", "extended format; --format=1 will not append ;\" to lines") +
           PseudoTag("FILE_SORTED", "1", "0=unsorted, 1=sorted, 2=foldcase") +
           PseudoTag("PROGRAM_NAME", "cplustags", "Universal Ctags did the parsing") +
           PseudoTag("PROGRAM_VERSION", CPLUSTAGS_VERSION, "");
}

// What has been written.
struct Written {
    bool isComplete = false;
    off_t size = 0;
    tagsfile::NameOrder order;
};

Written WriteAll(const std::string& head, size_t count, LineSources lines, const WriteText& write)
{
    Written written;
    written.size = static_cast<off_t>(head.length());
    if (!write(head))
        return written;
    const std::unique_ptr<tagsfile::LineSource> merged = tagsfile::Merged(std::move(lines));
    std::string previous;
    for (std::string_view line; merged->Next(line); --count) {
        if (count == 0 || !write(line))
            return written;
        written.order.Add(previous, line);
        written.size += static_cast<off_t>(line.length());
        previous.assign(line);
    }
    written.isComplete = count == 0;
    return written;
}

} // namespace

std::string PseudoTags(const TagsCount& count)
{
    return PseudoTagsWith(count, "");
}

bool WriteTags(const TagsCount& count, LineSources lines, const WriteText& write)
{
    return WriteAll(PseudoTags(count), count.tags, std::move(lines), write).isComplete;
}

// No file with tags has the size that is written first.
bool WriteTags(const TagsCount& count, LineSources lines, const WriteText& write, NewFile& file)
{
    const std::string head = PseudoTagsWith(count, tagsfile::SortedClaimValue(0));
    const Written written = WriteAll(head, count.tags, std::move(lines), write);
    if (!written.isComplete || !written.order.InOrder())
        return written.isComplete;
    const size_t place = head.find(tagsfile::kSortedClaim) + tagsfile::kSortedClaim.length();
    const bool isClaimed = file.WriteOver(static_cast<off_t>(place), tagsfile::SortedClaimValue(written.size));
    file.SetTime({std::time(nullptr), tagsfile::SortedClaimNanoseconds(written.size)});
    return isClaimed;
}

} // namespace cplustags
