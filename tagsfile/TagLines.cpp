#include "tagsfile/TagLines.h"

#include "tagsfile/Bisection.h"
#include "tagsfile/SortedClaim.h"
#include "tagsfile/UnreadFiles.h"

#include <algorithm>
#include <unistd.h>

namespace tagsfile {

namespace {

// The order that a file claims and proves. Examines its pseudo-tags as far as the first read returns them.
std::optional<FileOrder> ClaimedOrder(int descriptor, const base::FileIdentity& file)
{
    constexpr size_t kLongestHead = 4 * 1024;
    if (file.modified.tv_nsec != SortedClaimNanoseconds(file.size))
        return std::nullopt;
    char text[kLongestHead];
    const ssize_t count = ::pread(descriptor, text, sizeof text, 0);
    const std::string_view head(text, static_cast<size_t>(std::max<ssize_t>(count, 0)));
    const std::string claim = std::string(kSortedClaim) + SortedClaimValue(file.size) + "\t";
    bool isClaimed = false;
    for (size_t line = 0; line < head.length(); line = head.find('\n', line) + 1) {
        if (head[line] != '!')
            return isClaimed ? std::optional(FileOrder{true, static_cast<off_t>(line)}) : std::nullopt;
        isClaimed = isClaimed || head.substr(line).starts_with(claim);
        if (head.find('\n', line) == std::string_view::npos)
            break;
    }
    return std::nullopt; // the head does not end here, or the file is all head
}

} // namespace

bool TagLines::Open(const char* path)
{
    known.reset();
    order = NameOrder();
    learns = skipped = false;
    whyUnread.reset();
    if (!reader.Open(path))
        return false;
    identity = base::FileIdentity::OfPlainFile(reader.Descriptor());
    if (!identity)
        return true;
    whyUnread = tagsfile::WhyUnread(reader.Descriptor(), identity->size);
    if (whyUnread)
        reader.GoToEnd();
    else
        FindOrder();
    return true;
}

void TagLines::Close()
{
    ReadOnForOrder();
    reader.Close();
    known.reset();
    learns = false;
}

void TagLines::FindOrder()
{
    known = KnownFiles::Instance().Find(*identity);
    const bool isWorthIt = identity->size >= KnownFiles::kWorthKeeping;
    if (!known && isWorthIt)
        known = ClaimedOrder(reader.Descriptor(), *identity);
    learns = !known && isWorthIt && identity->HasSettled();
}

// A reader that stopped early would read the same part again next time. Learning the order once is worth a complete
// pass, unless the reader stopped near the beginning.
void TagLines::ReadOnForOrder()
{
    std::string_view line;
    while (learns && order.InOrder() && reader.Offset() >= KnownFiles::kWorthKeeping && reader.Next(line)) {
        order.Add(reader.Previous(), line);
        PassOver([](std::string_view) { return false; });
    }
    RememberOrder();
}

// All lines were seen if as many bytes were read as the file has, and the file has not changed since. One line out of
// order is enough for the opposite.
void TagLines::RememberOrder()
{
    const bool isCertain = learns && (!order.InOrder() || reader.Offset() == identity->size);
    if (isCertain && base::FileIdentity::OfPlainFile(reader.Descriptor()) == identity)
        KnownFiles::Instance().Remember(*identity, {order.InOrder(), order.HeadSize()});
    learns = false;
}

bool TagLines::SkipTo(std::string_view start)
{
    // No name contains a line break, and it would be compared with the line breaks after names.
    const bool bisects = known && known->namesInOrder && !start.empty() && start.find('\n') == std::string_view::npos;
    if (bisects && !skipped)
        Bisect(start);
    return bisects && skipped;
}

void TagLines::Bisect(std::string_view start)
{
    const std::optional<off_t> place = PlaceOfLines(reader.Descriptor(), known->headSize, identity->size, start);
    // The file may have changed since it was opened.
    skipped = place && base::FileIdentity::OfPlainFile(reader.Descriptor()) == identity;
    if (!skipped) {
        // The file is not what its record says. Forget the record, and learn the order again.
        KnownFiles::Instance().Forget(*identity);
        known.reset();
        learns = reader.Offset() == 0 && identity->HasSettled();
    } else if (*place > reader.Offset()) {
        reader.GoTo(*place);
    }
}

} // namespace tagsfile
