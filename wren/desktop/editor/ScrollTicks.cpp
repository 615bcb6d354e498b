#include "wren/desktop/editor/ScrollTicks.h"

#include <QEvent>
#include <QPainter>
#include <QScrollBar>
#include <QStyle>
#include <QStyleOptionSlider>

#include <algorithm>

namespace wren {

ScrollTicks::ScrollTicks(QScrollBar& bar, Half half) : QWidget(&bar), bar(bar), half(half)
{
    setObjectName("scrollTicks");
    setAttribute(Qt::WA_TransparentForMouseEvents);
    bar.installEventFilter(this);
    resize(bar.size());
    hide();
}

void ScrollTicks::Show(const std::vector<long>& newLines, long newCount, const QColor& newColour)
{
    lines = newLines;
    lineCount = std::max(newCount, 1L);
    colour = newColour;
    setVisible(!lines.empty());
    update();
}

bool ScrollTicks::eventFilter(QObject*, QEvent* event)
{
    if (event->type() == QEvent::Resize)
        resize(bar.size());
    return false;
}

QRect ScrollTicks::Groove() const
{
    QStyleOptionSlider option;
    option.initFrom(&bar);
    option.orientation = bar.orientation();
    option.minimum = bar.minimum();
    option.maximum = bar.maximum();
    option.pageStep = bar.pageStep();
    option.sliderPosition = bar.sliderPosition();
    option.subControls = QStyle::SC_All;
    const QRect groove = bar.style()->subControlRect(QStyle::CC_ScrollBar, &option, QStyle::SC_ScrollBarGroove, &bar);
    return groove.isValid() ? groove : rect();
}

void ScrollTicks::paintEvent(QPaintEvent*)
{
    constexpr int kHeight = 2; // pixels
    QPainter painter(this);
    const QRect groove = Groove();
    const int width = groove.width() / 2;
    const int left = half == Half::Left ? groove.left() : groove.right() + 1 - width;
    long drawn = -1; // lines that share a row are one tick
    for (const long line : lines) {
        const long row = groove.top() + line * (groove.height() - kHeight) / lineCount;
        if (row != drawn)
            painter.fillRect(left, static_cast<int>(row), width, kHeight, colour);
        drawn = row;
    }
}

} // namespace wren
