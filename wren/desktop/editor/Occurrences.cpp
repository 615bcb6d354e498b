#include "wren/desktop/editor/Occurrences.h"

#include "wren/desktop/editor/CodeView.h"
#include "wren/desktop/editor/PointedName.h"

#include <chrono>

namespace wren {

namespace {

using namespace std::chrono_literals;

constexpr auto kPauseOfCaret = 250ms;
constexpr long kLongestName = 500; // bytes

} // namespace

Occurrences::Occurrences(CodeView& view)
    : QObject(&view), view(view), marks(*new MatchMarks(view, MatchMarks::Of::Name))
{
    pause.setSingleShot(true);
    pause.setInterval(kPauseOfCaret);
    connect(&pause, &QTimer::timeout, this, &Occurrences::LookNow);
    connect(&view, &QsciScintillaBase::SCN_UPDATEUI, this, [this](int updated) {
        if ((updated & QsciScintillaBase::SC_UPDATE_SELECTION) != 0)
            pause.start();
    });
}

void Occurrences::LookNow()
{
    TextSearch wanted;
    wanted.text = NameAtCaret();
    wanted.matchCase = true;
    wanted.wholeWords = true;
    marks.SetSearch(wanted);
}

std::string Occurrences::NameAtCaret() const
{
    const ViewText text(view);
    const Selection selected = text.Selected();
    const long caret = view.Caret();
    const Selection name{text.Send(QsciScintillaBase::SCI_WORDSTARTPOSITION, caret, true),
                         text.Send(QsciScintillaBase::SCI_WORDENDPOSITION, caret, true)};
    const long size = name.end - name.start;
    if (size <= 0 || size > kLongestName || !PointedName::IsStyleOfNames(text.StyleAt(name.start)))
        return "";
    if (selected.start != selected.end && selected != name)
        return "";
    return text.Copy(name.start, name.end);
}

} // namespace wren
