// What comes into a view from elsewhere, and goes there: the clipboard, and what is dragged.
//
// Scintilla converts the line ends of what comes, and ends it at its first NUL byte. A text with one is put in here,
// with everything behind it.

#include "wren/desktop/editor/CodeView.h"

#include <QApplication>
#include <QByteArray>
#include <QClipboard>
#include <QDropEvent>
#include <QMimeData>
#include <QMouseEvent>

namespace wren {

namespace {

// Copied bytes stay as they are between views: as text they would lose those that are not UTF-8.
constexpr const char* kBytesType = "application/x-wren-bytes";

constexpr const char* kEnds[] = {"\n", "\r\n", "\r"}; // as LineEnds count

std::string WithEnds(const QByteArray& bytes, LineEnds ends)
{
    std::string result;
    for (qsizetype at = 0; at < bytes.size(); ++at) {
        if (bytes[at] == '\r' && at + 1 < bytes.size() && bytes[at + 1] == '\n')
            ++at;
        if (bytes[at] == '\r' || bytes[at] == '\n')
            result += kEnds[static_cast<int>(ends)];
        else
            result += bytes[at];
    }
    return result;
}

} // namespace

void CodeView::paste()
{
    const QByteArray bytes = BytesWithNul(QApplication::clipboard()->mimeData());
    ByUser([&] {
        if (bytes.isEmpty())
            QsciScintilla::paste();
        else
            PutIn(bytes);
        const long line = text.Send(SCI_LINEFROMPOSITION, Caret());
        PrepareForLongLines(text.Copy(text.Send(SCI_POSITIONFROMLINE, line), text.Send(SCI_GETLINEENDPOSITION, line)));
    });
}

// The middle button pastes what was selected last.
void CodeView::mouseReleaseEvent(QMouseEvent* event)
{
    QClipboard* clipboard = QApplication::clipboard();
    const bool pastes = event->button() == Qt::MiddleButton && clipboard->supportsSelection();
    const QByteArray bytes = pastes ? BytesWithNul(clipboard->mimeData(QClipboard::Selection)) : QByteArray();
    ByUser([&] {
        if (bytes.isEmpty())
            return QsciScintilla::mouseReleaseEvent(event);
        const long offset = OffsetAtPoint(PointOf(*event));
        text.Select(offset, offset);
        PutIn(bytes);
    });
}

// Empty when it contains no NUL; then Scintilla inserts it.
QByteArray CodeView::BytesWithNul(const QMimeData* source) const
{
    bool rectangular = false;
    const QByteArray bytes = source == nullptr ? QByteArray() : fromMimeData(source, rectangular);
    return bytes.contains('\0') ? bytes : QByteArray();
}

// In the place of the selection. What was a rectangle comes as lines.
void CodeView::PutIn(const QByteArray& bytes)
{
    if (isReadOnly())
        return;
    const std::string with = WithEnds(bytes, Ends());
    text.Send(SCI_BEGINUNDOACTION);
    if (!text.Send(SCI_GETSELECTIONEMPTY))
        text.Send(SCI_CLEAR);
    text.Send(SCI_ADDTEXT, static_cast<long>(with.size()), with.data());
    text.Send(SCI_ENDUNDOACTION);
    text.Send(SCI_SCROLLCARET);
    text.Send(SCI_CHOOSECARETX);
}

// Dragged within the view, the selection is moved, unless it is dropped on itself. What was put in is selected.
void CodeView::DropWithNul(QDropEvent& event)
{
    const QByteArray bytes = BytesWithNul(event.mimeData());
    long offset = OffsetAtPoint({static_cast<float>(event.position().x()), static_cast<float>(event.position().y())});
    const Selection dragged = text.Selected();
    const bool moves = event.source() == this && event.proposedAction() == Qt::MoveAction;
    event.acceptProposedAction();
    QDragLeaveEvent over; // the mark of where it would be dropped goes
    QsciScintilla::dragLeaveEvent(&over);
    if (moves && offset >= dragged.start && offset <= dragged.end)
        return;
    text.Send(SCI_BEGINUNDOACTION);
    if (moves) {
        text.Send(SCI_CLEAR);
        if (offset > dragged.end)
            offset -= dragged.end - dragged.start;
    }
    text.Select(offset, offset);
    PutIn(bytes);
    text.Send(SCI_ENDUNDOACTION);
    text.Select(offset, Caret());
}

// As Scintilla copies them: of a rectangle, each line's with an end.
QByteArray CodeView::SelectedBytes(bool rectangular) const
{
    QByteArray bytes;
    const long ranges = text.Send(SCI_GETSELECTIONS);
    for (long range = 0; range < ranges; ++range) {
        const std::string piece =
            text.Copy(text.Send(SCI_GETSELECTIONNSTART, range), text.Send(SCI_GETSELECTIONNEND, range));
        bytes.append(piece.data(), static_cast<qsizetype>(piece.size()));
        if (rectangular)
            bytes.append(kEnds[static_cast<int>(Ends())]);
    }
    return bytes;
}

// Files are for the window to open.

void CodeView::dragEnterEvent(QDragEnterEvent* event)
{
    if (event->mimeData()->hasUrls())
        event->ignore();
    else
        QsciScintilla::dragEnterEvent(event);
}

void CodeView::dragMoveEvent(QDragMoveEvent* event)
{
    if (event->mimeData()->hasUrls())
        event->ignore();
    else
        QsciScintilla::dragMoveEvent(event);
}

void CodeView::dropEvent(QDropEvent* event)
{
    if (event->mimeData()->hasUrls())
        event->ignore();
    else if (BytesWithNul(event->mimeData()).isEmpty())
        ByUser([&] { QsciScintilla::dropEvent(event); });
    else
        ByUser([&] { DropWithNul(*event); });
}

// Scintilla hands out blanks for NUL bytes.
QMimeData* CodeView::toMimeData(const QByteArray& handed, bool rectangular) const
{
    const Selection range = text.Selected();
    const bool isAsHanded = !rectangular && text.Find('\0', range.start, range.end) == range.end;
    const QByteArray selected = isAsHanded ? QByteArray() : SelectedBytes(rectangular);
    const QByteArray& bytes = selected.size() == handed.size() ? selected : handed;
    QMimeData* data = QsciScintilla::toMimeData(bytes, rectangular);
    data->setData(kBytesType, bytes);
    return data;
}

QByteArray CodeView::fromMimeData(const QMimeData* source, bool& rectangular) const
{
    const QByteArray read = QsciScintilla::fromMimeData(source, rectangular);
    return source->hasFormat(kBytesType) ? source->data(kBytesType) : read;
}

} // namespace wren
