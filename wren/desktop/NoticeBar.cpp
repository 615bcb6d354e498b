#include "wren/desktop/NoticeBar.h"

#include "wren/desktop/Icons.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QScrollArea>
#include <QScrollBar>
#include <QToolButton>

#include <algorithm>
#include <iterator>

namespace wren {

namespace {

constexpr int kLinesSeen = 8;

} // namespace

NoticeBar::NoticeBar(QWidget* parent)
    : QFrame(parent), label(new QLabel), area(new QScrollArea), choices(new QWidget), all(new QToolButton)
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
    all->setText(tr("Show All"));
    all->setObjectName("all");
    all->setAutoRaise(true);
    all->setToolTip(tr("Open all notices as a text"));
    all->setFocusPolicy(Qt::NoFocus);
    connect(all, &QToolButton::clicked, this, &NoticeBar::AllAsked);
    auto* buttons = new QVBoxLayout(choices);
    buttons->setContentsMargins(0, 0, 0, 0);
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(8, 4, 4, 4);
    row->addWidget(area, 1);
    row->addWidget(choices, 0, Qt::AlignTop);
    row->addWidget(all, 0, Qt::AlignTop);
    row->addWidget(close, 0, Qt::AlignTop);
    QScrollBar* bar = area->verticalScrollBar();
    connect(bar, &QScrollBar::rangeChanged, this, &NoticeBar::FollowEnd);
    connect(bar, &QScrollBar::valueChanged, this, [this, bar](int value) { atEnd = value == bar->maximum(); });
    hide();
}

void NoticeBar::Tell(const QString& text, const QString& subject)
{
    Add(text, subject);
    Changed();
}

void NoticeBar::Offer(const QString& text, const QString& subject, const std::vector<Choice>& offers)
{
    for (auto* old : choices->findChildren<QPushButton*>())
        old->deleteLater(); // the one that was pressed may be among them
    for (const Choice& choice : offers) {
        auto* button = new QPushButton(choice.label, choices);
        button->setFocusPolicy(Qt::NoFocus);
        connect(button, &QPushButton::clicked, this, [this, subject, chosen = choice.chosen] {
            Withdraw(subject);
            chosen();
        });
        choices->layout()->addWidget(button);
    }
    offered = subject;
    Tell(text, subject);
}

void NoticeBar::TellAll(const QStringList& texts)
{
    if (texts.isEmpty())
        return;
    for (const QString& text : texts)
        Add(text, {});
    Changed();
}

void NoticeBar::Withdraw(const QString& subject)
{
    const auto found = bySubject.find(subject);
    if (found == bySubject.end())
        return;
    Remove(*found);
    Show();
}

QString NoticeBar::Told() const
{
    QStringList lines;
    for (const Notice& notice : told)
        lines.append(notice.text);
    return lines.join('\n');
}

void NoticeBar::Add(const QString& text, const QString& subject)
{
    if (const auto found = byText.find(text); found != byText.end())
        Remove(*found);
    if (const auto found = bySubject.find(subject); found != bySubject.end())
        Remove(*found);
    const auto added = told.insert(told.end(), {subject, text});
    byText.insert(text, added);
    if (!subject.isEmpty())
        bySubject.insert(subject, added);
}

void NoticeBar::Remove(std::list<Notice>::iterator notice)
{
    byText.remove(notice->text);
    bySubject.remove(notice->subject);
    told.erase(notice);
}

void NoticeBar::Changed()
{
    atEnd = true;
    Show();
    FollowEnd();
}

// The notices that are left out are the older ones and would stand first. The line about them stands last, where the
// user sees it.
void NoticeBar::Show()
{
    const bool tooMany = told.size() > kMostShown;
    auto first = told.cbegin();
    std::advance(first, tooMany ? static_cast<std::ptrdiff_t>(told.size() - kMostShown) : 0);
    QStringList lines;
    for (; first != told.cend(); ++first)
        lines.append(first->text);
    if (tooMany)
        lines.append(tr("%1 older notices are not shown here: \"Show All\" opens all of them as a text.")
                         .arg(told.size() - kMostShown));
    label->setText(lines.join('\n'));
    choices->setVisible(bySubject.contains(offered));
    all->setVisible(tooMany);
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
    byText.clear();
    bySubject.clear();
    told.clear();
    hide();
}

} // namespace wren
