// The editor's window: a tool bar, the documents' tabs, a bar to find in them, and a line of status.
#pragma once

#include <QMainWindow>

#include <functional>
#include <string>
#include <vector>

namespace wren {

class EditorTabs;
class FindBar;
class NoticeBar;
class PluginButton;
class StatusLine;

// Owns the widgets, and signals what the user does with the window. The Editor connects them. GUI thread.
class MainWindow : public QMainWindow {
    Q_OBJECT
public:
    explicit MainWindow(const QIcon& pluginIcon);
    ~MainWindow() override;

    EditorTabs& Tabs() { return *tabs; }
    NoticeBar& Notices() { return *notices; }
    FindBar& Find() { return *find; }
    PluginButton& Button() { return *button; }
    QToolBar& Tools() { return *tools; }
    StatusLine& Status() { return *status; }

    // Adds a panel where it was in the layout that was restored, or else in the area. Whether it was there.
    bool AddPanel(Qt::DockWidgetArea area, QDockWidget* panel);
    void ShareHeight(QDockWidget* panel);        // equally, with the panels above and below it
    std::vector<std::string> OpenPanels() const; // their names

    std::function<bool()> mayClose; // false keeps the window open

signals:
    void UserCame(); // to this window
    void UserLeft(); // for another window, of this program or of any other
    void FrameChanged();
    void ColoursChanged(); // those of the desktop, or those that the user chose instead
    void FilesDropped(const QStringList& paths);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override; // of the whole program
    void closeEvent(QCloseEvent* event) override;
    void changeEvent(QEvent* event) override;
    void moveEvent(QMoveEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;

private:
    void TakeKeyboardBack();

    NoticeBar* notices;
    EditorTabs* tabs;
    FindBar* find;
    QToolBar* tools;
    PluginButton* button;
    StatusLine* status;
    bool present = false;
};

} // namespace wren
