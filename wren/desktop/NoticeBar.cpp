#include "wren/desktop/NoticeBar.h"

#include "wren/desktop/Icons.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QScrollArea>
#include <QScrollBar>
#include <QToolButton>

#include <algorithm>

namespace wren {

namespace {

constexpr int kLinesSeen = 8;

} // namespace

NoticeBar::NoticeBar(QWidget* parent) : QFrame(parent), label(new QLabel), area(new QScrollArea)
{
    setFrameShape(QFrame::StyledPanel);
    setBackgroundRole(QPalette::ToolTipBase);
    setAutoFillBackground(true);
    label->setForegroundRole(QPalette::ToolTipText);
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    label->setTextInteractionFlags(Qt::TextSelectableByMouse);
    label->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    area->setWidget(label);
    area->setWidgetResizable(true);
    area->setFrameShape(QFrame::NoFrame);
    area->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    area->setFocusPolicy(Qt::NoFocus);
    area->viewport()->setBackgroundRole(QPalette::ToolTipBase);
    auto* close = new QToolButton;
    close->setIcon(DrawnIcon(QChar(0x00D7), QPalette::ToolTipText));
    close->setAutoRaise(true);
    close->setToolTip(tr("Dismiss"));
    close->setFocusPolicy(Qt::NoFocus);
    connect(close, &QToolButton::clicked, this, &NoticeBar::Dismiss);
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(8, 4, 4, 4);
    row->addWidget(area, 1);
    row->addWidget(close, 0, Qt::AlignTop);
    QScrollBar* bar = area->verticalScrollBar();
    connect(bar, &QScrollBar::rangeChanged, this, &NoticeBar::FollowEnd);
    connect(bar, &QScrollBar::valueChanged, this, [this, bar](int value) { atEnd = value == bar->maximum(); });
    hide();
}

void NoticeBar::Tell(const QString& text, const QString& subject)
{
    std::erase_if(told, [&](const Notice& each) {
        return each.text == text || (!subject.isEmpty() && each.subject == subject);
    });
    told.push_back({subject, text});
    atEnd = true;
    Show();
    FollowEnd();
}

void NoticeBar::Withdraw(const QString& subject)
{
    if (std::erase_if(told, [&](const Notice& each) { return each.subject == subject; }) != 0)
        Show();
}

QString NoticeBar::Told() const
{
    QStringList lines;
    for (const Notice& notice : told)
        lines.append(notice.text);
    return lines.join('\n');
}

void NoticeBar::Show()
{
    label->setText(Told());
    setVisible(!told.empty());
    FitHeight();
}

void NoticeBar::resizeEvent(QResizeEvent* event)
{
    QFrame::resizeEvent(event);
    FitHeight();
}

// A narrow window breaks lines.
void NoticeBar::FitHeight()
{
    const int most = kLinesSeen * label->fontMetrics().lineSpacing();
    area->setFixedHeight(std::min(label->heightForWidth(area->viewport()->width()), most));
}

void NoticeBar::FollowEnd()
{
    QScrollBar* bar = area->verticalScrollBar();
    if (atEnd)
        bar->setValue(bar->maximum());
}

void NoticeBar::Dismiss()
{
    told.clear();
    hide();
}

} // namespace wren
