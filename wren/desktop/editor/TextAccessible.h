// The text of a view for screen readers and other assistive programs.
#pragma once

#include "wren/desktop/editor/ViewText.h"

#include <QAccessibleWidget>
#include <Qsci/qsciscintillabase.h>

#include <functional>
#include <string_view>
#include <utility>

namespace wren {

// Offsets are UTF-16 units, as Qt's rules for accessible texts have them. Scintilla keeps them by line once they have
// been asked for, so that one costs no more at the end of a big file. Its own interface counts from the beginning, at
// every change. GUI thread.
class TextAccessible : public QAccessibleWidget,
                       public QAccessibleTextInterface,
                       public QAccessibleEditableTextInterface {
public:
    // From now on such an interface describes each widget that 'isText' accepts. Once, before they are shown.
    static void Install(bool (*isText)(QObject*));

    // For listeners, if there are any. Offset and length are bytes; what goes is still there.
    static void Inserted(QsciScintillaBase& view, long offset, std::string_view bytes);
    static void Removing(QsciScintillaBase& view, long offset, long length);
    static void CaretMoved(QsciScintillaBase& view);

    explicit TextAccessible(QsciScintillaBase& view);

    void* interface_cast(QAccessible::InterfaceType type) override;
    QAccessible::State state() const override;

    int selectionCount() const override;
    void selection(int number, int* start, int* end) const override;
    void addSelection(int start, int end) override;
    void removeSelection(int number) override;
    void setSelection(int number, int start, int end) override;
    int cursorPosition() const override;
    void setCursorPosition(int position) override;

    using QAccessibleWidget::text; // the name and the description of the widget, beside a piece of its text
    QString text(int start, int end) const override;
    QString textBeforeOffset(int offset, QAccessible::TextBoundaryType boundary, int* start, int* end) const override;
    QString textAtOffset(int offset, QAccessible::TextBoundaryType boundary, int* start, int* end) const override;
    QString textAfterOffset(int offset, QAccessible::TextBoundaryType boundary, int* start, int* end) const override;
    int characterCount() const override;

    QRect characterRect(int offset) const override;
    int offsetAtPoint(const QPoint& point) const override;
    void scrollToSubstring(int start, int end) override;
    QString attributes(int offset, int* start, int* end) const override;

    void deleteText(int start, int end) override;
    void insertText(int offset, const QString& inserted) override;
    void replaceText(int start, int end, const QString& inserted) override;

private:
    std::pair<long, long> Around(long place) const;
    QString Piece(int step, int offset, QAccessible::TextBoundaryType type, int* start, int* end) const;
    long ByteOf(int offset) const; // clamps

    QsciScintillaBase& view;
    ViewText bytes;
};

} // namespace wren
