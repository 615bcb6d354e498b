#include "wren/desktop/files/FilesPanel.h"

#include "wren/desktop/symbols/RowText.h"

#include <QApplication>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLineEdit>
#include <QStackedWidget>
#include <QToolButton>
#include <QTreeView>
#include <QVBoxLayout>

#include <filesystem>
#include <utility>

namespace wren {

namespace {

constexpr int kSpace = 4;   // pixels
constexpr int kIndent = 14; // pixels

} // namespace

FilesPanel::FilesPanel(const FileIcons& icons, QWidget* parent)
    : QDockWidget(tr("Files"), parent), whole(icons), found(icons), field(new QLineEdit), all(new QToolButton),
      trees(new QStackedWidget), wholeTree(NewTree(whole, tr("Files"))), foundTree(NewTree(found, tr("Found files")))
{
    setObjectName("files");
    setAllowedAreas(Qt::LeftDockWidgetArea | Qt::RightDockWidgetArea);
    auto* content = new QWidget;
    auto* column = new QVBoxLayout(content);
    column->setContentsMargins(kSpace, kSpace, kSpace, 0);
    column->setSpacing(kSpace);
    auto* line = new QHBoxLayout;
    line->addWidget(field, 1);
    line->addWidget(all);
    column->addLayout(line);
    column->addWidget(trees, 1);
    setWidget(content);
    field->setPlaceholderText(tr("Narrow the files"));
    field->setAccessibleName(tr("Narrow the files"));
    field->setClearButtonEnabled(true);
    field->installEventFilter(this);
    all->setText(tr("All"));
    all->setCheckable(true);
    all->setToolTip(tr("Show ignored files as well"));
    all->setFocusPolicy(Qt::TabFocus);
    setFocusProxy(field);
    connect(field, &QLineEdit::textChanged, this, &FilesPanel::Typed);
    connect(all, &QToolButton::toggled, this, &FilesPanel::AllSwitched);
    connect(&whole, &FilesModel::Wanted, this, &FilesPanel::Wanted);
}

QTreeView* FilesPanel::NewTree(FilesModel& model, const QString& name)
{
    auto* tree = new QTreeView;
    tree->setModel(&model);
    tree->setHeaderHidden(true);
    tree->setUniformRowHeights(true); // else the heights of all rows are looked for
    tree->setIndentation(kIndent);
    tree->setExpandsOnDoubleClick(false); // a click does
    tree->setFocusPolicy(Qt::NoFocus);
    tree->setFrameShape(QFrame::NoFrame);
    tree->setAccessibleName(name);
    connect(tree, &QTreeView::clicked, this, &FilesPanel::Choose);
    trees->addWidget(tree);
    return tree;
}

// ----------------------------------------------------------------------------------------------------- What is shown

void FilesPanel::SetRoot(const std::string& path)
{
    revealing.clear();
    setWindowTitle(tr("Files of %1").arg(Shown(std::filesystem::path(path).filename().string())));
    setToolTip(Shown(path));
    whole.Clear();
    found.ShowOnly({});
    field->clear();
}

void FilesPanel::SetEntries(const std::string& directory, std::vector<TreeEntry> entries)
{
    whole.SetEntries(directory, std::move(entries));
    RevealMore();
}

void FilesPanel::ShowFound(const std::vector<std::string>& files, bool more)
{
    found.ShowOnly(files);
    foundTree->expandAll();
    QModelIndex first = found.index(0, 0);
    while (found.KindOf(first) == TreeEntry::Kind::Directory && first.isValid())
        first = found.index(0, 0, first);
    foundTree->setCurrentIndex(first);
    Tell(more ? tr("There are more: type more letters.") : files.empty() ? tr("No file has these letters.") : "");
}

void FilesPanel::Tell(const QString& problem)
{
    field->setToolTip(problem);
    field->setAccessibleDescription(problem);
}

void FilesPanel::Reveal(const std::string& file)
{
    revealing = file;
    RevealMore();
}

void FilesPanel::RevealMore()
{
    if (revealing.empty())
        return;
    QModelIndex at;
    for (size_t end = 0; end != std::string::npos;) {
        if (!whole.IsRead(at))
            return whole.Want(at);
        wholeTree->expand(at);
        end = revealing.find('/', end + 1);
        at = whole.IndexOf(std::string_view(revealing).substr(0, end));
        if (!at.isValid()) // it is not among the files that are shown
            break;
    }
    revealing.clear();
    wholeTree->setCurrentIndex(at);
    if (at.isValid())
        wholeTree->scrollTo(at);
}

// ----------------------------------------------------------------------------------------------------------- The user

std::string FilesPanel::Letters() const
{
    return field->text().toStdString();
}

bool FilesPanel::ShowsAll() const
{
    return all->isChecked();
}

QTreeView& FilesPanel::Tree() const
{
    return field->text().isEmpty() ? *wholeTree : *foundTree;
}

std::string FilesPanel::Marked() const
{
    const QModelIndex current = Tree().currentIndex();
    return static_cast<const FilesModel*>(Tree().model())->PathOf(current);
}

void FilesPanel::Typed()
{
    trees->setCurrentWidget(&Tree());
    Tell("");
    emit LettersTyped();
}

void FilesPanel::Choose(const QModelIndex& index)
{
    revealing.clear();
    const auto& model = static_cast<const FilesModel&>(*Tree().model());
    if (!index.isValid() || model.KindOf(index) == TreeEntry::Kind::Link)
        return;
    if (model.KindOf(index) == TreeEntry::Kind::Directory)
        Tree().setExpanded(index, !Tree().isExpanded(index));
    else
        emit Chosen(model.PathOf(index));
}

void FilesPanel::StepToFile(bool down)
{
    QModelIndex at = foundTree->currentIndex();
    do
        at = down ? foundTree->indexBelow(at) : foundTree->indexAbove(at);
    while (at.isValid() && found.KindOf(at) != TreeEntry::Kind::File);
    if (at.isValid())
        foundTree->setCurrentIndex(at);
}

bool FilesPanel::KeyPressed(QKeyEvent& event)
{
    const bool isNarrowed = !field->text().isEmpty();
    switch (event.key()) {
    case Qt::Key_Escape:
        if (isNarrowed)
            field->clear();
        else
            emit Left();
        return true;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        Choose(Tree().currentIndex());
        return true;
    case Qt::Key_Left:
    case Qt::Key_Right:
    case Qt::Key_Home:
    case Qt::Key_End:
        if (isNarrowed)
            return false; // they move in the letters
        [[fallthrough]];
    case Qt::Key_Up:
    case Qt::Key_Down:
        if (isNarrowed) {
            StepToFile(event.key() == Qt::Key_Down);
            return true;
        }
        [[fallthrough]];
    case Qt::Key_PageUp:
    case Qt::Key_PageDown:
        revealing.clear();
        QApplication::sendEvent(&Tree(), &event);
        return true;
    default:
        return false;
    }
}

bool FilesPanel::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == field && event->type() == QEvent::KeyPress)
        return KeyPressed(*static_cast<QKeyEvent*>(event));
    return QDockWidget::eventFilter(watched, event);
}

} // namespace wren
