// What is said about a name, in a frame beside it.
#pragma once

#include <QLabel>

namespace wren {

class CodeView;

// It lies over its text and never takes the keyboard. The text's font, size and colours. Scrolling,
// a click and Escape close it. GUI thread.
class NameCard : public QLabel {
    Q_OBJECT
public:
    NameCard(CodeView& view, const QString& accessibleName); // belongs to the view; shows nothing yet

    // Above the line of the offset where there is room, else below. What does not fit is cut.
    void Show(long offset, const QString& html);

    const CodeView& View() const { return view; }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;

private:
    void TakeLook();
    QSize SizeWithin(int widest) const;
    void Place(long offset);

    CodeView& view;
};

} // namespace wren
