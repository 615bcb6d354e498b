// The line ends of a view's text.

#include "wren/desktop/editor/CodeView.h"

#include <algorithm>

namespace wren {

namespace {

struct EndCounts {
    long unix = 0;
    long windows = 0;
    long mac = 0;

    bool None() const { return unix + windows + mac == 0; }
    bool Mixed() const { return (unix > 0) + (windows > 0) + (mac > 0) > 1; }
    LineEnds Most() const
    {
        if (windows > unix && windows >= mac)
            return LineEnds::Windows;
        return mac > unix ? LineEnds::Mac : LineEnds::Unix;
    }
};

EndCounts CountEnds(std::string_view bytes)
{
    EndCounts counts;
    for (size_t at = bytes.find('\r'); at != std::string_view::npos; at = bytes.find('\r', at + 1))
        (at + 1 < bytes.size() && bytes[at + 1] == '\n' ? counts.windows : counts.mac)++;
    counts.unix = std::count(bytes.begin(), bytes.end(), '\n') - counts.windows;
    return counts;
}

} // namespace

void CodeView::ApplyEnds(LineEnds ends)
{
    constexpr EolMode kModes[] = {EolUnix, EolWindows, EolMac};
    setEolMode(kModes[static_cast<int>(ends)]);
}

LineEnds CodeView::Ends() const
{
    switch (eolMode()) {
    case EolWindows:
        return LineEnds::Windows;
    case EolMac:
        return LineEnds::Mac;
    default:
        return LineEnds::Unix;
    }
}

void CodeView::DetectEnds()
{
    const EndCounts counts = CountEnds(text.Pointer(0, text.Length()));
    hasConvertedEnds = false;
    hasMixedEnds = counts.Mixed();
    ApplyEnds(counts.Most());
}

// A text without line ends keeps those that were chosen for it.
void CodeView::FollowEnds()
{
    if (!hasConvertedEnds)
        return;
    const EndCounts counts = CountEnds(text.Pointer(0, text.Length()));
    hasMixedEnds = counts.Mixed();
    if (!counts.None())
        ApplyEnds(counts.Most());
}

bool CodeView::HasOtherEnds(LineEnds ends) const
{
    return hasMixedEnds || Ends() != ends;
}

// The mode comes first: the client asks for it when it hears of the change.
void CodeView::ConvertEnds(LineEnds ends)
{
    ApplyEnds(ends);
    hasMixedEnds = false;
    text.Send(SCI_CONVERTEOLS, text.Send(SCI_GETEOLMODE));
    hasConvertedEnds = hasConvertedEnds || done.changed;
}

void CodeView::UseEnds(LineEnds ends)
{
    if (!isReadOnly())
        ByUser([&] { ConvertEnds(ends); });
}

} // namespace wren
