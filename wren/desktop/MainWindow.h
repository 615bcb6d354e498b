// The editor's window: a tool bar, the documents' tabs, a bar to find in them, and a line of status.
#pragma once

#include <QMainWindow>

#include <functional>

namespace wren {

class EditorTabs;
class FindBar;
class NoticeBar;
class PluginButton;
class StatusLine;

// Holds the parts, and tells what happens to the window. What they do together is the Editor's. GUI thread.
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

    std::function<bool()> mayClose; // false keeps the window open

signals:
    void UserCame(); // to this window
    void UserLeft(); // for another one, of this program or of any other
    void FrameChanged();
    void ColoursChanged(); // the desktop's, or those that were chosen instead
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
