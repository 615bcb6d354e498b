#include "wren/desktop/editor/TextAccessible.h"

#include <QAccessible>
#include <QTextBoundaryFinder>

#include <algorithm>
#include <string>
#include <vector>

namespace wren {

namespace {

using Sci = QsciScintillaBase;

constexpr int kEnd = -1; // offsets of IAccessible2
constexpr int kCaret = -2;

bool (*gIsText)(QObject*) = nullptr;

QAccessibleInterface* AccessibleFor(const QString&, QObject* object)
{
    return gIsText(object) ? new TextAccessible(*qobject_cast<QsciScintillaBase*>(object)) : nullptr;
}

// An index of lines costs one pass through the text; Scintilla keeps it up to date from then on.
void KeepUnits(const ViewText& bytes)
{
    if (!(bytes.Send(Sci::SCI_GETLINECHARACTERINDEX) & Sci::SC_LINECHARACTERINDEX_UTF16))
        bytes.Send(Sci::SCI_ALLOCATELINECHARACTERINDEX, Sci::SC_LINECHARACTERINDEX_UTF16);
}

int UnitsBefore(const ViewText& bytes, long offset)
{
    KeepUnits(bytes);
    const long line = bytes.Send(Sci::SCI_LINEFROMPOSITION, offset);
    const long start = bytes.Send(Sci::SCI_POSITIONFROMLINE, line);
    const long before = bytes.Send(Sci::SCI_INDEXPOSITIONFROMLINE, line, Sci::SC_LINECHARACTERINDEX_UTF16);
    return static_cast<int>(before + bytes.Send(Sci::SCI_COUNTCODEUNITS, start, offset));
}

QString TextOf(std::string_view bytes)
{
    return QString::fromUtf8(bytes.data(), static_cast<qsizetype>(bytes.size()));
}

// Where the words, lines and so on of the text begin and end, its own beginning and end included. Qt's own search for
// them does not end when a text does not end with a word.
std::vector<int> BoundariesOf(const QString& text, QAccessible::TextBoundaryType type)
{
    std::vector<int> found = {0};
    if (type == QAccessible::LineBoundary || type == QAccessible::ParagraphBoundary) {
        for (qsizetype at = text.indexOf('\n'); at >= 0; at = text.indexOf('\n', at + 1))
            found.push_back(static_cast<int>(at) + 1);
    } else {
        using Finder = QTextBoundaryFinder;
        const Finder::BoundaryType kind = type == QAccessible::CharBoundary   ? Finder::Grapheme
                                          : type == QAccessible::WordBoundary ? Finder::Word
                                                                              : Finder::Sentence;
        Finder finder(kind, text);
        for (qsizetype at = finder.toNextBoundary(); at > 0; at = finder.toNextBoundary())
            found.push_back(static_cast<int>(at));
    }
    if (found.back() < text.size())
        found.push_back(static_cast<int>(text.size()));
    return found;
}

} // namespace

void TextAccessible::Install(bool (*isText)(QObject*))
{
    gIsText = isText;
    QAccessible::installFactory(AccessibleFor);
}

void TextAccessible::Inserted(QsciScintillaBase& view, long offset, std::string_view bytes)
{
    if (!QAccessible::isActive())
        return;
    QAccessibleTextInsertEvent event(&view, UnitsBefore(ViewText(view), offset), TextOf(bytes));
    QAccessible::updateAccessibility(&event);
}

void TextAccessible::Removing(QsciScintillaBase& view, long offset, long length)
{
    if (!QAccessible::isActive())
        return;
    const ViewText bytes(view);
    QAccessibleTextRemoveEvent event(&view, UnitsBefore(bytes, offset), TextOf(bytes.Copy(offset, offset + length)));
    QAccessible::updateAccessibility(&event);
}

void TextAccessible::CaretMoved(QsciScintillaBase& view)
{
    if (!QAccessible::isActive())
        return;
    const ViewText bytes(view);
    const Selection selected = bytes.Selected();
    const int caret = UnitsBefore(bytes, bytes.Send(Sci::SCI_GETCURRENTPOS));
    if (selected.start != selected.end) {
        QAccessibleTextSelectionEvent event(&view, UnitsBefore(bytes, selected.start),
                                            UnitsBefore(bytes, selected.end));
        event.setCursorPosition(caret);
        QAccessible::updateAccessibility(&event);
    } else {
        QAccessibleTextCursorEvent event(&view, caret);
        QAccessible::updateAccessibility(&event);
    }
}

TextAccessible::TextAccessible(QsciScintillaBase& view)
    : QAccessibleWidget(&view, QAccessible::EditableText), view(view), bytes(view)
{
}

void* TextAccessible::interface_cast(QAccessible::InterfaceType type)
{
    if (type == QAccessible::TextInterface)
        return static_cast<QAccessibleTextInterface*>(this);
    if (type == QAccessible::EditableTextInterface)
        return static_cast<QAccessibleEditableTextInterface*>(this);
    return QAccessibleWidget::interface_cast(type);
}

QAccessible::State TextAccessible::state() const
{
    QAccessible::State state = QAccessibleWidget::state();
    state.selectableText = true;
    state.multiLine = true;
    const bool isReadOnly = bytes.Send(Sci::SCI_GETREADONLY) != 0;
    state.readOnly = isReadOnly;
    state.editable = !isReadOnly;
    return state;
}

long TextAccessible::ByteOf(int offset) const
{
    KeepUnits(bytes);
    const int wanted = std::clamp(offset, 0, characterCount());
    const long line = bytes.Send(Sci::SCI_LINEFROMINDEXPOSITION, wanted, Sci::SC_LINECHARACTERINDEX_UTF16);
    const long before = bytes.Send(Sci::SCI_INDEXPOSITIONFROMLINE, line, Sci::SC_LINECHARACTERINDEX_UTF16);
    const long start = bytes.Send(Sci::SCI_POSITIONFROMLINE, line);
    return wanted == before ? start : bytes.Send(Sci::SCI_POSITIONRELATIVECODEUNITS, start, wanted - before);
}

// ------------------------------------------------------------------------------------------------ Selection and caret

int TextAccessible::selectionCount() const
{
    const Selection selected = bytes.Selected();
    return selected.start == selected.end ? 0 : 1;
}

void TextAccessible::selection(int number, int* start, int* end) const
{
    const Selection selected = bytes.Selected();
    const bool isThere = number == 0 && selected.start != selected.end;
    *start = isThere ? UnitsBefore(bytes, selected.start) : 0;
    *end = isThere ? UnitsBefore(bytes, selected.end) : 0;
}

void TextAccessible::addSelection(int start, int end)
{
    setSelection(0, start, end);
}

void TextAccessible::removeSelection(int number)
{
    if (number == 0)
        bytes.Send(Sci::SCI_SETEMPTYSELECTION, bytes.Send(Sci::SCI_GETCURRENTPOS));
}

void TextAccessible::setSelection(int number, int start, int end)
{
    if (number == 0)
        bytes.Select(ByteOf(start), ByteOf(end));
}

int TextAccessible::cursorPosition() const
{
    return UnitsBefore(bytes, bytes.Send(Sci::SCI_GETCURRENTPOS));
}

void TextAccessible::setCursorPosition(int position)
{
    bytes.Send(Sci::SCI_GOTOPOS, ByteOf(position));
}

// ----------------------------------------------------------------------------------------------------------- The text

QString TextAccessible::text(int start, int end) const
{
    const long from = ByteOf(start);
    const long to = std::max(from, end < 0 ? bytes.Length() : ByteOf(end)); // -1: to the end
    return TextOf(bytes.Copy(from, to));
}

int TextAccessible::characterCount() const
{
    return UnitsBefore(bytes, bytes.Length());
}

// The part of the text that a screen reader's question about a place concerns: the lines around it. In the whole of a
// big file, the search would take seconds.
std::pair<long, long> TextAccessible::Around(long place) const
{
    constexpr long kMost = 16 * 1024; // bytes to either side
    const long line = bytes.Send(Sci::SCI_LINEFROMPOSITION, place);
    const long last = bytes.Send(Sci::SCI_GETLINECOUNT) - 1;
    long from = bytes.Send(Sci::SCI_POSITIONFROMLINE, std::max(line - 1, 0l));
    long to = line + 2 > last ? bytes.Length() : bytes.Send(Sci::SCI_POSITIONFROMLINE, line + 2);
    if (place - from > kMost)
        from = bytes.Send(Sci::SCI_POSITIONBEFORE, place - kMost);
    if (to - place > kMost)
        to = bytes.Send(Sci::SCI_POSITIONAFTER, place + kMost);
    return {from, to};
}

// 'step' -1: the word, line and so on before the place; 0: at it; 1: behind it. Blanks between words are passed over.
QString TextAccessible::Piece(int step, int offset, QAccessible::TextBoundaryType type, int* start, int* end) const
{
    const int count = characterCount();
    *start = *end = -1;
    if (type == QAccessible::NoBoundary) {
        *start = 0;
        *end = count;
        return text(0, count);
    }
    const int wanted = offset == kEnd ? count : offset == kCaret ? cursorPosition() : offset;
    if (wanted < 0 || wanted > count)
        return {};
    const auto [from, to] = Around(ByteOf(wanted));
    const QString part = TextOf(bytes.Copy(from, to));
    const int before = UnitsBefore(bytes, from);
    const std::vector<int> bounds = BoundariesOf(part, type);
    const auto next = std::ranges::upper_bound(bounds, wanted - before);
    const bool isLastLine = next == bounds.end() && type == QAccessible::LineBoundary && !part.endsWith('\n');
    auto piece = next - bounds.begin() - (isLastLine ? 2 : 1); // number of the piece's first bound
    const auto pieces = static_cast<std::ptrdiff_t>(bounds.size()) - 1;
    const auto textOf = [&](std::ptrdiff_t number) {
        const auto at = static_cast<size_t>(number);
        return part.mid(bounds[at], bounds[at + 1] - bounds[at]);
    };
    const bool passesBlanks = step != 0 && type == QAccessible::WordBoundary;
    for (piece += step; passesBlanks && piece >= 0 && piece < pieces && textOf(piece).trimmed().isEmpty();
         piece += step) {
    }
    if (piece < 0 || piece >= pieces) {
        *start = *end = wanted;
        return {};
    }
    *start = before + bounds[static_cast<size_t>(piece)];
    *end = before + bounds[static_cast<size_t>(piece) + 1];
    return textOf(piece);
}

QString TextAccessible::textBeforeOffset(int offset, QAccessible::TextBoundaryType boundary, int* start, int* end) const
{
    return Piece(-1, offset, boundary, start, end);
}

QString TextAccessible::textAtOffset(int offset, QAccessible::TextBoundaryType boundary, int* start, int* end) const
{
    return Piece(0, offset, boundary, start, end);
}

QString TextAccessible::textAfterOffset(int offset, QAccessible::TextBoundaryType boundary, int* start, int* end) const
{
    return Piece(1, offset, boundary, start, end);
}

// ---------------------------------------------------------------------------------------------------------- On screen

QRect TextAccessible::characterRect(int offset) const
{
    const long place = ByteOf(offset);
    const long next = bytes.Send(Sci::SCI_POSITIONAFTER, place);
    const auto x = static_cast<int>(bytes.Send(Sci::SCI_POINTXFROMPOSITION, 0, place));
    const auto y = static_cast<int>(bytes.Send(Sci::SCI_POINTYFROMPOSITION, 0, place));
    const auto right = static_cast<int>(bytes.Send(Sci::SCI_POINTXFROMPOSITION, 0, next));
    const auto height = static_cast<int>(bytes.Send(Sci::SCI_TEXTHEIGHT, bytes.Send(Sci::SCI_LINEFROMPOSITION, place)));
    const QRect inView(x, y, std::max(right - x, 1), height);
    return inView.translated(view.viewport()->mapToGlobal(QPoint(0, 0)));
}

int TextAccessible::offsetAtPoint(const QPoint& point) const
{
    const QPoint here = view.viewport()->mapFromGlobal(point);
    const long place = bytes.Send(Sci::SCI_POSITIONFROMPOINTCLOSE, here.x(), here.y());
    return place < 0 ? -1 : UnitsBefore(bytes, place);
}

void TextAccessible::scrollToSubstring(int start, int end)
{
    bytes.Send(Sci::SCI_SCROLLRANGE, ByteOf(end), ByteOf(start));
}

QString TextAccessible::attributes(int, int* start, int* end) const
{
    *start = 0;
    *end = characterCount();
    return {};
}

// ------------------------------------------------------------------------------------------------------------ Changes

void TextAccessible::deleteText(int start, int end)
{
    replaceText(start, end, {});
}

void TextAccessible::insertText(int offset, const QString& inserted)
{
    replaceText(offset, offset, inserted);
}

void TextAccessible::replaceText(int start, int end, const QString& inserted)
{
    const long from = ByteOf(start);
    const std::string utf8 = inserted.toStdString();
    if (!bytes.Send(Sci::SCI_GETREADONLY))
        bytes.Replace(from, std::max(from, ByteOf(end)), utf8);
}

} // namespace wren
