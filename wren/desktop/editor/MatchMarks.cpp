#include "wren/desktop/editor/MatchMarks.h"

#include "wren/desktop/editor/CodeView.h"
#include "wren/desktop/editor/ScrollTicks.h"

#include <QEvent>
#include <QScrollBar>

#include <algorithm>
#include <chrono>
#include <utility>

namespace wren {

namespace {

using namespace std::chrono_literals;
using Sci = QsciScintillaBase;

constexpr int kFirstIndicator = 22; // of Scintilla; the one of a search is the next, and drawn over it
constexpr int kSelectedIndicator = 24;
constexpr long kSlice = 128 * 1024;     // bytes: a millisecond or so, expressions take longer
constexpr long kMostSeen = 256 * 1024;  // bytes that are looked through for what is seen: lines may be very long
constexpr size_t kMostMarked = 5000;    // in what is seen
constexpr size_t kMostKept = 1'000'000; // places
constexpr long kMostTicks = 2000;       // more than a screen has rows
constexpr auto kPauseOfTyping = 200ms;

} // namespace

MatchMarks::MatchMarks(CodeView& view, Of what)
    : QObject(&view), view(view), what(what),
      scrollTicks(new ScrollTicks(*view.verticalScrollBar(),
                                  what == Of::Search ? ScrollTicks::Half::Right : ScrollTicks::Half::Left))
{
    slice.setInterval(0);
    connect(&slice, &QTimer::timeout, this, &MatchMarks::ReadSlice);
    pause.setSingleShot(true);
    pause.setInterval(kPauseOfTyping);
    connect(&pause, &QTimer::timeout, this, &MatchMarks::StartOver);
    view.installEventFilter(this);
    connect(&view, &Sci::SCN_MODIFIED, this, &MatchMarks::TextModified);
    // Marking counts as an update of the content: to mark at such updates would never end.
    connect(&view, &Sci::SCN_UPDATEUI, this, [this](int updated) {
        if ((updated & Sci::SC_UPDATE_V_SCROLL) != 0 && !stale)
            MarkSeen();
        if ((updated & Sci::SC_UPDATE_SELECTION) != 0) {
            MarkSelected();
            emit Changed();
        }
    });
}

MatchMarks::~MatchMarks()
{
    delete scrollTicks;
}

bool MatchMarks::eventFilter(QObject*, QEvent* event)
{
    if (event->type() == QEvent::Resize && !stale)
        QMetaObject::invokeMethod(this, &MatchMarks::MarkSeen, Qt::QueuedConnection); // once the view has its size
    return false;
}

// The view reports what is about to change. Until the pause is over nothing is asked.
void MatchMarks::TextModified(int, int kind)
{
    if ((kind & (Sci::SC_MOD_BEFOREINSERT | Sci::SC_MOD_BEFOREDELETE)) == 0 || search.text.empty())
        return;
    stale = true;
    slice.stop();
    pause.start();
}

void MatchMarks::SetSearch(const TextSearch& wanted)
{
    if (wanted == search && !stale)
        return;
    search = wanted;
    StartOver();
}

void MatchMarks::StartOver()
{
    stale = false;
    pause.stop();
    reached = 0;
    count = 0;
    kept.clear();
    ticks.clear();
    complete = search.text.empty() || !view.IsValid(search);
    MarkSeen();
    if (!complete)
        slice.start();
    ReadSlice(); // a text of an ordinary size is read within the key
}

void MatchMarks::ReadSlice()
{
    const ViewText text(view);
    if (!complete) {
        const TextFinder finder(text, search);
        reached = finder.EachWithin(reached, reached + kSlice, [&](const TextFinder::Found& found) {
            Keep(found.range, text);
            return true;
        });
        complete = reached > text.Length();
    }
    if (complete)
        slice.stop();
    scrollTicks->Show(ticks, text.Send(Sci::SCI_GETLINECOUNT), Colour());
    emit Changed();
}

void MatchMarks::Keep(Selection match, const ViewText& text)
{
    count++;
    if (kept.size() < kMostKept)
        kept.push_back(match);
    const long line = text.Send(Sci::SCI_LINEFROMPOSITION, match.start);
    if (ticks.empty() || line > ticks.back() + text.Send(Sci::SCI_GETLINECOUNT) / kMostTicks)
        ticks.push_back(line);
}

std::optional<long> MatchMarks::NumberOf(Selection match) const
{
    const auto found = std::ranges::lower_bound(kept, match.start, {}, &Selection::start);
    if (stale || found == kept.end() || *found != match)
        return std::nullopt;
    return found - kept.begin() + 1;
}

void MatchMarks::MarkSeen()
{
    const ViewText text(view);
    std::vector<Selection> seen;
    if (!search.text.empty() && !stale) {
        const long top = text.Send(Sci::SCI_GETFIRSTVISIBLELINE);
        const long below = text.Send(Sci::SCI_DOCLINEFROMVISIBLE, top + text.Send(Sci::SCI_LINESONSCREEN) + 1);
        const long start = text.Send(Sci::SCI_POSITIONFROMLINE, text.Send(Sci::SCI_DOCLINEFROMVISIBLE, top));
        const long all = text.Send(Sci::SCI_GETLINEENDPOSITION, below);
        const long end = std::min(all, start + kMostSeen);
        // An expression reads whole lines: very long ones would take too long at every step of scrolling.
        if (!search.regularExpression || end == all)
            TextFinder(text, search).EachWithin(start, end, [&](const TextFinder::Found& found) {
                seen.push_back(found.range);
                return seen.size() < kMostMarked;
            });
    }
    if (seen != marked) {
        constexpr int kAlphaOfNames = 70;
        constexpr int kAlphaOfSearch = 140;
        Define(kFirstIndicator + static_cast<int>(what), Colour(), what == Of::Name ? kAlphaOfNames : kAlphaOfSearch);
        text.Send(Sci::SCI_INDICATORCLEARRANGE, 0, text.Length());
        for (const Selection& match : seen)
            text.Send(Sci::SCI_INDICATORFILLRANGE, match.start, match.end - match.start);
        marked = std::move(seen);
    }
    MarkSelected();
}

// Drawn over everything else, since the colour of the selection is near those of the marks.
void MatchMarks::MarkSelected()
{
    if (what != Of::Search)
        return;
    const ViewText text(view);
    std::optional<Selection> now = text.Selected();
    const auto found = std::ranges::lower_bound(marked, now->start, {}, &Selection::start);
    if (stale || found == marked.end() || *found != *now)
        now = std::nullopt;
    if (now == selected)
        return;
    selected = now;
    Define(kSelectedIndicator, ColoursOf(view.Look().dark).selectedMatch, 255);
    text.Send(Sci::SCI_INDICATORCLEARRANGE, 0, text.Length());
    if (selected)
        text.Send(Sci::SCI_INDICATORFILLRANGE, selected->start, selected->end - selected->start);
}

void MatchMarks::Define(int indicator, const QColor& colour, int alpha) const
{
    constexpr int kOutlineAlpha = 200;
    const ViewText text(view);
    view.indicatorDefine(QsciScintilla::StraightBoxIndicator, indicator);
    view.setIndicatorForegroundColor(colour, indicator);
    view.setIndicatorDrawUnder(true, indicator);
    text.Send(Sci::SCI_INDICSETALPHA, indicator, alpha);
    text.Send(Sci::SCI_INDICSETOUTLINEALPHA, indicator, std::max(alpha, kOutlineAlpha));
    text.Send(Sci::SCI_SETINDICATORCURRENT, indicator);
}

QColor MatchMarks::Colour() const
{
    const EditorColours& colours = ColoursOf(view.Look().dark);
    return what == Of::Search ? colours.match : colours.occurrence;
}

} // namespace wren
