#include "wren/desktop/EditorTabs.h"

#include "wren/desktop/display/ShownText.h"
#include "wren/desktop/editor/CodeView.h"
#include "wren/desktop/editor/Occurrences.h"
#include "wren/desktop/editor/TextPanes.h"

#include <QTabBar>
#include <QToolButton>

#include <algorithm>
#include <filesystem>
#include <iterator>
#include <utility>

namespace wren {

namespace {

namespace fs = std::filesystem;

// The directory's inner end.
fs::path LastParts(const fs::path& directory, long count)
{
    const long all = std::distance(directory.begin(), directory.end());
    fs::path last;
    for (auto part = std::next(directory.begin(), std::max(all - count, 0L)); part != directory.end(); ++part)
        last /= *part;
    return last;
}

// Scrolls when the names no longer fit. Qt's own bar first shortens all of them until nothing is left to read.
class ReadableTabBar : public QTabBar {
protected:
    QSize minimumTabSizeHint(int index) const override
    {
        const QSize whole = tabSizeHint(index);
        return {std::min(whole.width(), kReadableWidth * fontMetrics().averageCharWidth()), whole.height()};
    }

private:
    static constexpr int kReadableWidth = 32; // characters, with the sign that closes the tab
};

} // namespace

EditorTabs::EditorTabs(QWidget* parent) : QTabWidget(parent)
{
    setTabBar(new ReadableTabBar);
    setDocumentMode(true);
    setTabsClosable(true);
    setMovable(true);
    setUsesScrollButtons(true);
    setElideMode(Qt::ElideMiddle);
    tabBar()->setFocusPolicy(Qt::NoFocus);
    AddListButton();
    connect(this, &QTabWidget::currentChanged, this, [this] { emit Raised(CurrentDocument()); });
    connect(this, &QTabWidget::tabCloseRequested, this,
            [this](int index) { emit CloseAsked(DocumentOf(PanesAt(index)->View())); });
}

void EditorTabs::AddListButton()
{
    auto* button = new QToolButton;
    button->setObjectName("listOfTexts");
    button->setAutoRaise(true);
    button->setArrowType(Qt::DownArrow);
    button->setFocusPolicy(Qt::NoFocus);
    button->setToolTip(tr("List of open documents"));
    button->setAccessibleName(tr("List of open documents"));
    connect(button, &QToolButton::clicked, this, &EditorTabs::ListAsked);
    setCornerWidget(button);
}

CodeView* EditorTabs::Add(long document, const EditorLook& look)
{
    auto* view = new CodeView;
    new Occurrences(*view); // a child of the view
    view->SetLook(look);
    auto* both = new TextPanes(view);
    panes[document] = both;
    // Qt raises the first tab when it is added, while its document is not open yet; the opener raises it afterwards.
    const QSignalBlocker blocked(this);
    addTab(both, tr("untitled"));
    return view;
}

void EditorTabs::Remove(long document)
{
    TextPanes* both = PanesOf(document);
    if (both == nullptr)
        return;
    panes.erase(document);
    const auto file = files.extract(document);
    both->View()->SetClient(nullptr);
    removeTab(indexOf(both));
    if (!file.empty())
        ShowNames(fs::path(file.mapped().path).filename());
    both->deleteLater(); // it may be the one whose key or menu led here
}

void EditorTabs::Raise(long document)
{
    TextPanes* both = PanesOf(document);
    if (both == nullptr)
        return;
    if (currentWidget() == both)
        emit Raised(document);
    else
        setCurrentWidget(both);
    both->View()->setFocus();
}

void EditorTabs::FocusCurrent()
{
    if (CodeView* view = CurrentView())
        view->setFocus();
}

TextPanes* EditorTabs::PanesOf(long document) const
{
    const auto found = panes.find(document);
    return found == panes.end() ? nullptr : found->second;
}

TextPanes* EditorTabs::PanesAt(int index) const
{
    return qobject_cast<TextPanes*>(widget(index));
}

CodeView* EditorTabs::ViewOf(long document) const
{
    const TextPanes* both = PanesOf(document);
    return both == nullptr ? nullptr : both->View();
}

TextPanes* EditorTabs::CurrentPanes() const
{
    return PanesAt(currentIndex());
}

CodeView* EditorTabs::CurrentView() const
{
    const TextPanes* both = CurrentPanes();
    return both == nullptr ? nullptr : both->View();
}

long EditorTabs::CurrentDocument() const
{
    return DocumentOf(CurrentView());
}

long EditorTabs::DocumentOf(const CodeView* view) const
{
    for (const auto& [document, both] : panes)
        if (both->View() == view)
            return document;
    return 0;
}

long EditorTabs::DocumentAt(const QPoint& place) const
{
    const TextPanes* both = PanesAt(tabBar()->tabAt(place));
    return both == nullptr ? 0 : DocumentOf(both->View());
}

std::vector<long> EditorTabs::Documents() const
{
    std::vector<long> documents;
    documents.reserve(static_cast<size_t>(count()));
    for (int index = 0; index < count(); ++index)
        documents.push_back(DocumentOf(PanesAt(index)->View()));
    return documents;
}

void EditorTabs::SetName(long document, const std::string& path, bool modified)
{
    const int index = IndexOf(document);
    if (index < 0)
        return;
    const std::string before = fs::path(std::exchange(files[document], {path, modified}).path).filename();
    const std::string leaf = fs::path(path).filename();
    ShowNames(leaf);
    if (before != leaf)
        ShowNames(before);
    const QString file = QString::fromStdString(path);
    // A name that looks like markup would be shown as what it says.
    setTabToolTip(index, PlainTip(file));
}

void EditorTabs::ShowNames(const std::string& leaf)
{
    for (const auto& [document, file] : files) {
        if (fs::path(file.path).filename() != leaf)
            continue;
        const QString name = leaf.empty() ? tr("untitled") : NameOf(document);
        // A lone "&" would be taken for the mark of a key.
        ViewOf(document)->setAccessibleName(name);
        setTabText(IndexOf(document), QString(name).replace("&", "&&") + (file.modified ? " *" : ""));
    }
}

QString EditorTabs::NameOf(long document) const
{
    const auto found = files.find(document);
    if (found == files.end())
        return "";
    const fs::path path = found->second.path;
    const fs::path directory = path.parent_path();
    long parts = 0;
    for (const auto& [other, file] : files) {
        const fs::path otherPath = file.path;
        if (otherPath.filename() != path.filename() || otherPath == path)
            continue;
        parts = std::max(parts, 1L);
        while (LastParts(directory, parts) == LastParts(otherPath.parent_path(), parts))
            ++parts;
    }
    const QString leaf = QString::fromStdString(path.filename());
    return parts == 0 ? leaf : tr("%1 (%2)").arg(leaf, QString::fromStdString(LastParts(directory, parts)));
}

void EditorTabs::SetWorksheetName(long document)
{
    files.erase(document);
    if (const int index = IndexOf(document); index >= 0)
        setTabText(index, tr("Worksheet"));
}

void EditorTabs::SetLook(const EditorLook& look)
{
    for (const auto& [document, both] : panes)
        both->View()->SetLook(look);
}

int EditorTabs::IndexOf(long document) const
{
    TextPanes* both = PanesOf(document);
    return both == nullptr ? -1 : indexOf(both);
}

} // namespace wren
