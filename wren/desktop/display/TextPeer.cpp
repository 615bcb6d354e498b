#include "wren/desktop/display/TextPeer.h"

#include "wren/desktop/display/ShownText.h"

#include <QFocusEvent>
#include <QSignalBlocker>
#include <QTextCursor>

#include <algorithm>

namespace wren {

namespace {

constexpr int kLongestLine = 1 << 20; // Qt's own limit cuts texts of 32767 characters

// A menu over the field, its own among them, does not leave it.
bool LeavesField(const QFocusEvent& event)
{
    return event.reason() != Qt::PopupFocusReason && event.reason() != Qt::MenuBarFocusReason;
}

} // namespace

void TextPeer::SetText(const std::string& text)
{
    if (!echoes.IsNewText(text))
        return;
    told = text;
    const QString shown = ShownText(text);
    if (shown != Shown())
        Show(shown);
}

void TextPeer::SelectText(long start, long end)
{
    if (echoes.IsNewSelection(start, end))
        Select(UnitsBefore(told, start), UnitsBefore(told, end));
}

void TextPeer::Edited()
{
    if (Shown() == ShownText(told))
        return; // Qt tells of a changed font as well
    const TextEdit edit = Current();
    told = edit.text;
    unentered = true;
    if (PostTextEdited(control, edit))
        echoes.Posted(edit);
}

void TextPeer::Entered()
{
    const TextEdit edit = Current();
    told = edit.text;
    unentered = false;
    if (PostTextEntered(control, edit))
        echoes.Posted(edit);
}

void TextPeer::Left()
{
    if (unentered)
        Entered();
}

TextEdit TextPeer::Current() const
{
    QString text = Shown();
    const auto [start, end] = Selection();
    // A message's text ends at its first zero.
    text.replace(QChar(0), QChar(QChar::ReplacementCharacter));
    return {text.toStdString(), BytesBefore(text, start), BytesBefore(text, end)};
}

// One line

LinePeer::LinePeer(vetch::HandlerToken control, QWidget* parent) : QLineEdit(parent), TextPeer(control)
{
    setMaxLength(kLongestLine);
    connect(this, &QLineEdit::textEdited, this, [this] { Edited(); });
    connect(this, &QLineEdit::returnPressed, this, [this] { Entered(); });
}

void LinePeer::focusOutEvent(QFocusEvent* event)
{
    QLineEdit::focusOutEvent(event);
    if (LeavesField(*event))
        Left();
}

QString LinePeer::Shown() const
{
    return text();
}

void LinePeer::Show(const QString& text)
{
    const QSignalBlocker quiet(this);
    setText(text);
}

void LinePeer::Select(int start, int end)
{
    const QSignalBlocker quiet(this);
    if (start == end)
        setCursorPosition(start); // which ends a selection
    else
        setSelection(start, end - start);
}

std::pair<int, int> LinePeer::Selection() const
{
    if (!hasSelectedText())
        return {cursorPosition(), cursorPosition()};
    return {selectionStart(), selectionEnd()};
}

// Several lines

AreaPeer::AreaPeer(vetch::HandlerToken control, QWidget* parent) : QPlainTextEdit(parent), TextPeer(control)
{
    setTabChangesFocus(true);
    setLineWrapMode(NoWrap);
    connect(this, &QPlainTextEdit::textChanged, this, [this] { Edited(); });
}

void AreaPeer::focusOutEvent(QFocusEvent* event)
{
    QPlainTextEdit::focusOutEvent(event);
    if (LeavesField(*event))
        Left();
}

// Not toPlainText(), which makes blanks of the blanks that do not break.
QString AreaPeer::Shown() const
{
    QString text = document()->toRawText();
    text.replace(QChar(QChar::ParagraphSeparator), '\n');
    return text.replace(QChar(QChar::LineSeparator), '\n');
}

void AreaPeer::Show(const QString& text)
{
    const QSignalBlocker quiet(this);
    setPlainText(text);
}

void AreaPeer::Select(int start, int end)
{
    const QSignalBlocker quiet(this);
    const int last = document()->characterCount() - 1; // fewer than were told, where lines end with two characters
    QTextCursor cursor = textCursor();
    cursor.setPosition(std::min(start, last));
    cursor.setPosition(std::min(end, last), QTextCursor::KeepAnchor);
    setTextCursor(cursor);
}

std::pair<int, int> AreaPeer::Selection() const
{
    return {textCursor().selectionStart(), textCursor().selectionEnd()};
}

} // namespace wren
