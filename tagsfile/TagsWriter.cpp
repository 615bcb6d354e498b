#include "tagsfile/TagsWriter.h"

#include "tagsfile/NameOrder.h"
#include "tagsfile/SortedClaim.h"

namespace tagsfile {

namespace {

std::string PseudoTag(const std::string& name, const std::string& value, const std::string& comment)
{
    return "!_TAG_" + name + "\t" + value + "\t/" + comment + "/\n";
}

// The lines before the tags, sorted like all lines. Includes the claim that the names are in order if 'sorted' is its
// value.
std::string PseudoTags(const TagsCount& count, const std::string& version, const std::string& sorted)
{
    return PseudoTag("CPLUSTAGS_FILES", std::to_string(count.files), "files tagged") +
           (sorted.empty() ? "" : std::string(kSortedClaim) + sorted + "\t/size while in order/\n") +
           PseudoTag("CPLUSTAGS_TAGS", std::to_string(count.tags), "tags in this file") +
           PseudoTag("FILE_FORMAT", "2", "extended format; --format=1 will not append ;\" to lines") +
           PseudoTag("FILE_SORTED", "1", "0=unsorted, 1=sorted, 2=foldcase") +
           PseudoTag("PROGRAM_NAME", "cplustags", "Universal Ctags did the parsing") +
           PseudoTag("PROGRAM_VERSION", version, "");
}

// Counts what has been written.
struct Written {
    bool isComplete = false;
    off_t size = 0;
    NameOrder order;
};

Written WriteAll(const std::string& head, size_t count, LineSources lines, const WriteText& write)
{
    Written written;
    written.size = static_cast<off_t>(head.length());
    if (!write(head))
        return written;
    const std::unique_ptr<LineSource> merged = Merged(std::move(lines));
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

bool WriteTags(const TagsCount& count, const std::string& version, LineSources lines, const WriteText& write)
{
    return WriteAll(PseudoTags(count, version, ""), count.tags, std::move(lines), write).isComplete;
}

// The size written first matches no file with tags.
bool WriteTags(const TagsCount& count, const std::string& version, LineSources lines, const RewritableFile& file)
{
    const std::string text = PseudoTags(count, version, SortedClaimValue(0));
    const Written written = WriteAll(text, count.tags, std::move(lines), file.write);
    if (!written.isComplete || !written.order.InOrder())
        return written.isComplete;
    const size_t place = text.find(kSortedClaim) + kSortedClaim.length();
    const bool isClaimed = file.writeOver(static_cast<off_t>(place), SortedClaimValue(written.size));
    file.setTime({std::time(nullptr), SortedClaimNanoseconds(written.size)});
    return isClaimed;
}

} // namespace tagsfile
