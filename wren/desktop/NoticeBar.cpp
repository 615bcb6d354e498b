#include "wren/desktop/NoticeBar.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QStyle>
#include <QToolButton>

namespace wren {

namespace {

constexpr int kMostLines = 8; // the text below stays usable; the oldest go first

} // namespace

NoticeBar::NoticeBar(QWidget* parent) : QFrame(parent), label(new QLabel)
{
    setFrameShape(QFrame::StyledPanel);
    setBackgroundRole(QPalette::ToolTipBase);
    setAutoFillBackground(true);
    label->setForegroundRole(QPalette::ToolTipText);
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    label->setTextInteractionFlags(Qt::TextSelectableByMouse);
    auto* close = new QToolButton;
    close->setIcon(style()->standardIcon(QStyle::SP_TitleBarCloseButton));
    close->setAutoRaise(true);
    close->setToolTip(tr("Dismiss"));
    close->setFocusPolicy(Qt::NoFocus);
    connect(close, &QToolButton::clicked, this, &NoticeBar::Dismiss);
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(8, 4, 4, 4);
    row->addWidget(label, 1);
    row->addWidget(close, 0, Qt::AlignTop);
    hide();
}

void NoticeBar::Tell(const QString& text)
{
    told.removeAll(text);
    told.append(text);
    while (told.size() > kMostLines)
        told.removeFirst();
    label->setText(Told());
    show();
}

QString NoticeBar::Told() const
{
    return told.join('\n');
}

void NoticeBar::Dismiss()
{
    told.clear();
    hide();
}

} // namespace wren
