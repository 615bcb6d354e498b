// Ticks on a scroll bar, each at the height of its line.
#pragma once

#include <QColor>
#include <QWidget>

#include <vector>

class QScrollBar;

namespace wren {

// Lies over the scroll bar, which owns it and gets the mouse as before. Takes one half, so that the slider can still be
// seen below many ticks. GUI thread.
class ScrollTicks : public QWidget {
    Q_OBJECT
public:
    enum class Half { Left, Right };

    ScrollTicks(QScrollBar& bar, Half half);

    void Show(const std::vector<long>& lines, long lineCount, const QColor& colour); // from 0, in order

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    QRect Groove() const;

    QScrollBar& bar;
    const Half half;
    std::vector<long> lines;
    long lineCount = 1;
    QColor colour;
};

} // namespace wren
