// All that the framework has on the screen, found by token.
#pragma once

#include "vetch/display/Display.h"
#include "wren/desktop/display/KeyInput.h"

#include <QObject>
#include <QPointer>
#include <QRect>

#include <functional>
#include <map>
#include <vector>

class QFileDialog;
class QWidget;

namespace wren {

class FontTable;
class ListPeer;
class ViewPeer;
class WindowPeer;

// What is asked of a window or view that is gone, or that the host shows itself, does nothing. GUI thread.
class Peers : public QObject {
public:
    Peers(const FontTable& fonts, int scrollBarWidth); // borrowed
    ~Peers() override;

    void SetMainWindow(QWidget* window) { main = window; }
    QWidget* MainWindow() const { return main; }
    void SetModifierKeys(const ModifierKeys& newKeys) { keys = newKeys; }
    const ModifierKeys& Keys() const { return keys; }
    std::function<QRect()> keptLine; // see QtDisplay
    std::function<void()> onBeep;
    void Beep() const;

    void Make(const vetch::WindowDescription& window);
    void Make(const vetch::ViewDescription& view);
    void Open(const vetch::PanelDescription& panel);
    void Close(vetch::LooperToken window); // or panel

    WindowPeer* Find(vetch::LooperToken window) const; // null for none
    ViewPeer* FindView(vetch::HandlerToken view) const;
    void MoveView(vetch::HandlerToken view, BRect frame);
    void Focus(vetch::LooperToken window, vetch::HandlerToken view);
    void Publish(); // after a number of changes

    WindowPeer* FrontList() const; // the newest visible one with a list that is no pop-up
    QString TypedText() const;     // see QtDisplay
    bool IsPopUpVisible() const;
    void DismissPopUps(const QWidget* pressed); // but a window that was pressed; null: all

protected:
    bool eventFilter(QObject* object, QEvent* event) override;

private:
    struct View {
        QPointer<QWidget> widget;
        ViewPeer* peer = nullptr; // lives with the widget
        vetch::LooperToken window = 0;
    };
    template <class Wanted>
    WindowPeer* Newest(Wanted wanted) const;
    void ClosePanel(vetch::LooperToken panel);

    const FontTable& fonts;
    const int scrollBarWidth;
    ModifierKeys keys;
    QPointer<QWidget> main;
    std::map<vetch::LooperToken, QPointer<WindowPeer>> windows; // in the order in which they were made
    std::map<vetch::HandlerToken, View> views;
    std::map<vetch::LooperToken, QPointer<QFileDialog>> panels;
};

} // namespace wren
