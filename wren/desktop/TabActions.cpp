#include "wren/desktop/TabActions.h"

#include "wren/core/Host.h"
#include "wren/desktop/EditorTabs.h"
#include "wren/desktop/editor/CodeView.h"

#include <QApplication>
#include <QClipboard>
#include <QMenu>
#include <QMouseEvent>
#include <QTabBar>

#include <algorithm>
#include <iterator>
#include <utility>

namespace wren {

namespace {

constexpr size_t kClosedKept = 50;

} // namespace

TabActions::TabActions(Host& host, EditorTabs& tabs, DocumentActions& documents)
    : host(host), tabs(tabs), documents(documents)
{
    QTabBar* bar = tabs.tabBar();
    bar->installEventFilter(this);
    bar->setContextMenuPolicy(Qt::CustomContextMenu);
    connect(bar, &QWidget::customContextMenuRequested, this, &TabActions::ShowMenu);
    connect(&documents, &DocumentActions::Closing, this, &TabActions::Remember);
}

void TabActions::CloseOthers(long document)
{
    std::vector<long> others = tabs.Documents();
    std::erase(others, document);
    tabs.Raise(document); // else each closed tab would raise its neighbour
    CloseAll(others);
}

void TabActions::CloseToTheRight(long document)
{
    const std::vector<long> all = tabs.Documents();
    const auto at = std::find(all.begin(), all.end(), document);
    if (at == all.end())
        return;
    tabs.Raise(document);
    CloseAll({std::next(at), all.end()});
}

void TabActions::CloseAll(const std::vector<long>& gone)
{
    for (const long each : gone)
        if (!documents.Close(each))
            return;
}

void TabActions::CopyPath(long document) const
{
    if (const std::string path = PathOf(document); !path.empty())
        QApplication::clipboard()->setText(QString::fromStdString(path));
}

void TabActions::ReopenClosed()
{
    while (!closed.empty()) {
        const ClosedFile last = std::move(closed.back());
        closed.pop_back();
        if (host.AllDocuments().FindByPath(last.path) != nullptr)
            continue;                  // it was opened by another way since
        if (documents.Open(last.path)) // else the user was told why not
            tabs.CurrentView()->GoTo(std::min(last.caret, host.Current()->Length()));
        return;
    }
}

// The Worksheet has a way of its own to open.
void TabActions::Remember(long id)
{
    const Document* document = host.AllDocuments().Find(id);
    if (document == nullptr || document->IsWorksheet() || document->Path().empty())
        return;
    std::erase_if(closed, [&](const ClosedFile& file) { return file.path == document->Path(); });
    closed.push_back({document->Path(), tabs.ViewOf(id)->Caret()});
    if (closed.size() > kClosedKept)
        closed.erase(closed.begin());
}

std::string TabActions::PathOf(long id) const
{
    const Document* document = host.AllDocuments().Find(id);
    return document == nullptr ? "" : document->Path();
}

void TabActions::FillMenu(QMenu* menu, long document)
{
    const std::vector<long> all = tabs.Documents();
    menu->addAction(tr("&Close"), this, [this, document] { documents.Close(document); });
    menu->addAction(tr("Close &Others"), this, [this, document] { CloseOthers(document); })->setEnabled(all.size() > 1);
    menu->addAction(tr("Close to the &Right"), this, [this, document] { CloseToTheRight(document); })
        ->setEnabled(!all.empty() && all.back() != document);
    menu->addAction(tr("R&eopen Closed File"), this, &TabActions::ReopenClosed)->setEnabled(CanReopen());
    menu->addSeparator();
    menu->addAction(tr("Copy &Path"), this, [this, document] { CopyPath(document); })
        ->setEnabled(!PathOf(document).empty());
}

void TabActions::ShowMenu(const QPoint& place)
{
    const long document = tabs.DocumentAt(place);
    if (document == 0)
        return;
    auto* menu = new QMenu(&tabs);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    menu->setAccessibleName(tr("Tab"));
    FillMenu(menu, document);
    menu->popup(tabs.tabBar()->mapToGlobal(place));
}

// A tab closes when the middle button goes down and up on it, so that a press can still be taken back.
bool TabActions::eventFilter(QObject* bar, QEvent* event)
{
    const bool press = event->type() == QEvent::MouseButtonPress;
    if (!press && event->type() != QEvent::MouseButtonRelease)
        return QObject::eventFilter(bar, event);
    const auto* mouse = static_cast<QMouseEvent*>(event);
    if (mouse->button() != Qt::MiddleButton)
        return QObject::eventFilter(bar, event);
    const long document = tabs.DocumentAt(mouse->position().toPoint());
    const long before = std::exchange(pressed, press ? document : 0);
    if (!press && document != 0 && document == before)
        documents.Close(document);
    return true;
}

} // namespace wren
