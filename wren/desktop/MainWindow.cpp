#include "wren/desktop/MainWindow.h"

#include "wren/desktop/EditorTabs.h"
#include "wren/desktop/NoticeBar.h"
#include "wren/desktop/PluginButton.h"
#include "wren/desktop/StatusLine.h"
#include "wren/desktop/editor/FindBar.h"

#include <QApplication>
#include <QCloseEvent>
#include <QDockWidget>
#include <QDragEnterEvent>
#include <QMimeData>
#include <QScreen>
#include <QStatusBar>
#include <QToolBar>
#include <QVBoxLayout>

namespace wren {

MainWindow::MainWindow(const QIcon& pluginIcon)
    : notices(new NoticeBar), tabs(new EditorTabs), find(new FindBar), tools(new QToolBar(tr("Tool bar"))),
      button(new PluginButton(pluginIcon)), status(new StatusLine(statusBar()))
{
    setWindowTitle("Wren");
    setAcceptDrops(true);
    resize(QSize(960, 720).boundedTo(screen()->availableSize()));
    auto* content = new QWidget;
    auto* column = new QVBoxLayout(content);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(notices);
    column->addWidget(tabs, 1);
    column->addWidget(find);
    setCentralWidget(content);
    tools->setObjectName("tools");
    tools->setMovable(false);
    addToolBar(tools);
    setContextMenuPolicy(Qt::NoContextMenu); // it would only offer to take the tool bar away
    find->hide();
    qApp->installEventFilter(this);
}

MainWindow::~MainWindow()
{
    delete status;
}

bool MainWindow::AddPanel(Qt::DockWidgetArea area, QDockWidget* panel)
{
    if (restoreDockWidget(panel))
        return true;
    addDockWidget(area, panel);
    return false;
}

// Qt gives a panel that comes to others hardly more than its smallest height.
void MainWindow::ShareHeight(QDockWidget* panel)
{
    QList<QDockWidget*> column;
    for (QDockWidget* each : findChildren<QDockWidget*>())
        if (dockWidgetArea(each) == dockWidgetArea(panel) && !each->isHidden() && !each->isFloating())
            column.append(each);
    if (column.size() < 2)
        return; // before the window is shown, this would fix the width as well
    resizeDocks(column, QList<int>(column.size(), height() / static_cast<int>(column.size())), Qt::Vertical);
}

// The action of a panel is switched off when the window is hidden, but not the panel.
std::vector<std::string> MainWindow::OpenPanels() const
{
    std::vector<std::string> names;
    for (const QDockWidget* panel : findChildren<QDockWidget*>())
        if (!panel->isHidden())
            names.push_back(panel->objectName().toStdString());
    return names;
}

// Without a window manager, no window gets the keyboard when a dialog that had it is hidden. A dialog that the user
// leaves for another program is not hidden.
bool MainWindow::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() != QEvent::WindowDeactivate || watched == this)
        return QMainWindow::eventFilter(watched, event);
    const auto* dialog = qobject_cast<const QWidget*>(watched);
    if (dialog != nullptr && dialog->isWindow() && dialog->isHidden())
        QMetaObject::invokeMethod(this, &MainWindow::TakeKeyboardBack, Qt::QueuedConnection);
    return QMainWindow::eventFilter(watched, event);
}

void MainWindow::TakeKeyboardBack()
{
    const QWidget* active = QApplication::activeWindow();
    if (!isVisible() || (active != nullptr && active->isVisible()))
        return;
    QWidget* dialog = QApplication::activeModalWidget();
    (dialog == nullptr ? this : dialog)->activateWindow();
}

void MainWindow::closeEvent(QCloseEvent* event)
{
    event->setAccepted(!mayClose || mayClose());
    // A window of the plug-in's that is still to be seen would keep Qt's loop going.
    if (event->isAccepted())
        QApplication::exit(0);
}

void MainWindow::changeEvent(QEvent* event)
{
    QMainWindow::changeEvent(event);
    if (event->type() == QEvent::PaletteChange)
        emit ColoursChanged();
    if (event->type() != QEvent::ActivationChange || present == isActiveWindow())
        return;
    present = isActiveWindow();
    if (present)
        emit UserCame();
    else
        emit UserLeft();
}

void MainWindow::moveEvent(QMoveEvent* event)
{
    QMainWindow::moveEvent(event);
    emit FrameChanged();
}

void MainWindow::resizeEvent(QResizeEvent* event)
{
    QMainWindow::resizeEvent(event);
    emit FrameChanged();
}

void MainWindow::dragEnterEvent(QDragEnterEvent* event)
{
    if (event->mimeData()->hasUrls())
        event->acceptProposedAction();
}

void MainWindow::dropEvent(QDropEvent* event)
{
    QStringList paths;
    for (const QUrl& url : event->mimeData()->urls())
        if (url.isLocalFile())
            paths.append(url.toLocalFile());
    if (paths.isEmpty())
        return;
    event->acceptProposedAction();
    emit FilesDropped(paths);
}

} // namespace wren
