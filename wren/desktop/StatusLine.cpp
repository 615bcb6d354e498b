#include "wren/desktop/StatusLine.h"

#include "base/Utf8.h"
#include "vetch/support/FThread.h"
#include "wren/core/Document.h"
#include "wren/desktop/GuiLoop.h"
#include "wren/desktop/display/ShownText.h"
#include "wren/desktop/editor/CodeView.h"

#include <QLabel>
#include <QStatusBar>
#include <QToolButton>

#include <chrono>
#include <utility>

namespace wren {

namespace {

QString NameOf(LineEnds ends)
{
    switch (ends) {
    case LineEnds::Windows:
        return "CR LF";
    case LineEnds::Mac:
        return "CR";
    default:
        return "LF";
    }
}

// Shows something of the text, and opens a menu that changes it.
QToolButton* TextButton(const char* name, const QString& tip, const QString& description)
{
    auto* button = new QToolButton;
    button->setObjectName(name);
    button->setAutoRaise(true);
    button->setFocusPolicy(Qt::NoFocus);
    button->setPopupMode(QToolButton::InstantPopup);
    button->setToolTip(tip);
    button->setAccessibleDescription(description);
    return button;
}

using namespace std::chrono_literals;

constexpr int kTagsWidth = 40; // characters of a path that are shown

// From 1, in characters, as people count.
long ColumnOf(const Document& document, long caret)
{
    const std::string before = document.Text(document.LineStart(document.LineAt(caret)), caret);
    return static_cast<long>(base::CountCodePoints(before)) + 1;
}

} // namespace

StatusLine::StatusLine(QStatusBar* bar)
    : rebuild(new QToolButton), stop(new QToolButton), index(new QToolButton), tags(new QLabel), background(new QLabel),
      position(new QLabel),
      ends(TextButton("lineEnds", tr("The ends of the lines"), tr("How the lines of this text end"))),
      encoding(TextButton("encoding", tr("The encoding of the file"), tr("How the characters of this file are bytes")))
{
    rebuild->setText(tr("Rebuild Tags"));
    rebuild->setObjectName("rebuildTags");
    rebuild->setFocusPolicy(Qt::NoFocus);
    rebuild->hide();
    connect(rebuild, &QToolButton::clicked, this, &StatusLine::RebuildAsked);
    stop->setText(tr("Stop"));
    stop->setObjectName("stopTags");
    stop->setAccessibleName(tr("Stop making tags"));
    stop->setToolTip(tr("Stop making tags, and keep the old ones"));
    stop->setFocusPolicy(Qt::NoFocus);
    stop->hide();
    connect(stop, &QToolButton::clicked, this, &StatusLine::StopAsked);
    constexpr int kSecond = 1000; // milliseconds
    second.setInterval(kSecond);
    connect(&second, &QTimer::timeout, this, &StatusLine::ShowBackground);
    bar->addPermanentWidget(rebuild);
    bar->addPermanentWidget(index);
    bar->addPermanentWidget(background);
    bar->addPermanentWidget(stop);
    index->setObjectName("index");
    index->setAutoRaise(true);
    index->setFocusPolicy(Qt::NoFocus);
    index->setPopupMode(QToolButton::InstantPopup);
    index->hide();
    tags->setObjectName("servingTags");
    tags->setTextFormat(Qt::PlainText); // a path may look like markup
    tags->setAccessibleName(tr("The tags file of this text"));
    bar->addPermanentWidget(tags);
    bar->addPermanentWidget(encoding);
    bar->addPermanentWidget(ends);
    bar->addPermanentWidget(position);
    vetch::SetThreadsWatcher(&GuiLoop::Wake);
}

StatusLine::~StatusLine()
{
    vetch::SetThreadsWatcher(nullptr);
}

void StatusLine::Show(const Document* document, const CodeView* view)
{
    const bool any = document != nullptr && view != nullptr;
    position->setVisible(any);
    ends->setVisible(any);
    encoding->setVisible(any);
    if (!any)
        return;
    const long caret = view->Caret();
    position->setText(tr("Line %1, column %2").arg(document->LineAt(caret) + 1).arg(ColumnOf(*document, caret)));
    encoding->setText(QString::fromStdString(LabelOf(document->Encoding())));
    encoding->setAccessibleName(tr("Encoding: %1").arg(encoding->text()));
    const QString name = NameOf(view->Ends());
    ends->setText(view->HasMixedEnds() ? tr("%1, mixed").arg(name) : name);
    ends->setAccessibleName(tr("Line ends: %1").arg(ends->text()));
}

void StatusLine::ShowIndex(const QString& activity, const QString& problem, bool isStopped)
{
    QString wanted = activity;
    if (wanted.isEmpty())
        wanted = !problem.isEmpty() ? tr("Names are not understood") : isStopped ? tr("Index stopped") : tr("Index");
    wanted.replace("&", "&&");
    index->setToolTip(problem.isEmpty() ? tr("The index of names") : problem);
    if (index->text() != wanted)
        index->setText(wanted);
}

void StatusLine::SetIndexMenu(QMenu* menu)
{
    index->setMenu(menu);
    index->show();
}

void StatusLine::SetEndsMenu(QMenu* menu)
{
    ends->setMenu(menu);
}

void StatusLine::SetEncodingMenu(QMenu* menu)
{
    encoding->setMenu(menu);
}

void StatusLine::ShowTags(const QString& text, const QString& tip)
{
    const QFontMetrics metrics = tags->fontMetrics();
    tags->setText(metrics.elidedText(text, Qt::ElideMiddle, kTagsWidth * metrics.averageCharWidth()));
    tags->setToolTip(PlainTip(tip));
}

void StatusLine::SetMakingTags(std::function<bool()> answers)
{
    isMakingTags = std::move(answers);
}

void StatusLine::OfferRebuild(bool offered)
{
    rebuild->setVisible(offered);
}

void StatusLine::FollowTags()
{
    stop->setVisible(!making.isValid());
    if (making.isValid()) {
        making.invalidate();
        second.stop();
    } else {
        making.start();
        second.start();
    }
}

void StatusLine::ShowBackground()
{
    if (IsMakingTags() != making.isValid())
        FollowTags();
    if (making.isValid())
        background->setText(tr("Making tags\u2026 %1 s").arg(std::chrono::milliseconds(making.elapsed()) / 1s));
    else if (!vetch::ThreadsAreIdle())
        background->setText(tr("Loading symbols\u2026"));
    else
        background->clear();
}

} // namespace wren
