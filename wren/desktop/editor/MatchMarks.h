// All matches of a search in a view: marked in the text, counted, and shown beside the scroll bar.
#pragma once

#include "wren/desktop/editor/TextSearch.h"

#include <QColor>
#include <QObject>
#include <QPointer>
#include <QTimer>

#include <optional>
#include <vector>

namespace wren {

class CodeView;
class ScrollTicks;
struct EditorColours;

// What is seen is marked at once; but an expression marks nothing where very long lines are seen. The rest of the text
// is read in slices, from the event loop, and again after a change, in a pause of typing. The selected
// match of a search has a mark of its own. GUI thread.
class MatchMarks : public QObject {
    Q_OBJECT
public:
    enum class Of { Name, Search }; // a search is drawn over names

    MatchMarks(CodeView& view, Of what); // a child of the view
    ~MatchMarks() override;

    // Starts over when the search is another one or the text has changed. An empty text ends the marks.
    void SetSearch(const TextSearch& wanted);
    const TextSearch& Search() const { return search; }

    bool IsComplete() const { return complete; } // else there may be more matches than have been counted
    long Count() const { return count; }

    // Which match this is, from 1; absent when it is none, when it is not reached yet, and behind so many that their
    // places are not kept.
    std::optional<long> NumberOf(Selection match) const;

    const std::vector<long>& Lines() const { return ticks; } // from 0; of matches that are near each other, one

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

signals:
    void Changed(); // the count or the selection

private:
    void TextModified(int, int kind);
    void StartOver();
    void ReadSlice();
    void Keep(Selection match, const ViewText& text);
    void MarkSeen();
    void MarkSelected();
    void Define(int indicator, const QColor& colour, int alpha) const;
    QColor Colour() const;

    CodeView& view;
    const Of what;
    QPointer<ScrollTicks> scrollTicks; // the scroll bar owns it
    TextSearch search;
    QTimer slice;
    QTimer pause;
    bool stale = false;

    long reached = 0; // bytes that are read
    bool complete = true;
    long count = 0;
    std::vector<Selection> kept;
    std::vector<long> ticks;
    std::vector<Selection> marked;
    std::optional<Selection> selected; // a marked match
};

} // namespace wren
