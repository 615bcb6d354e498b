// The views inside a window of the plug-in's.
#pragma once

#include "vetch/display/Display.h"

#include <QPointer>
#include <QWidget>

#include <functional>
#include <vector>

namespace wren {

class ButtonPeer;
class FontTable;
class ListPeer;
class ViewPeer;
struct ModifierKeys;

// There are three kinds: the bordered pop-up at the caret and the floating window of results, which never take the
// keyboard, and the dialog, which does.
struct WindowStyle {
    bool isPopUp = false;
    bool isFloating = false;
    bool avoidsFocus = false;
    bool isBare = false; // nothing is around it but what it draws

    bool IsDialog() const { return !isPopUp && !isFloating; }
};
WindowStyle StyleOf(const vetch::WindowDescription& window);

// GUI thread.
class WindowContent : public QWidget {
public:
    struct Surroundings {
        const ModifierKeys& keys; // borrowed, all of these
        const FontTable& fonts;
        const std::function<QRect()>& keptLine; // a line of the text that lists leave visible; null for none
        int scrollBarWidth = 0;
    };
    WindowContent(vetch::LooperToken window, const WindowStyle& style, const Surroundings& surroundings,
                  QWidget* parent);

    // 'grown' is how much larger the window is than its frame in the framework: while the user drags the window, the
    // framework's frames are older, and views that follow the window grow with it.
    ViewPeer* MakeView(const vetch::ViewDescription& view, int lineHeight, QSize grown);
    void PlaceView(const QWidget& view, BRect frame, QSize grown);
    void LayOut(QSize grown);
    void OrderTabs(); // from the top down, as people read

    ListPeer* List() const; // the first one; null for none
    bool HasButtons() const { return !buttons.empty(); }
    void PressFirstButton(); // if there is one
    void PressLastButton();

    // Object names, by which others find a content and the controls in it.
    static QString NameOf(vetch::LooperToken window);
    static QString ItemName(long item);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    struct View {
        QPointer<QWidget> widget;
        BRect frame; // as the framework sets it
        bool followsWindow = false;
        bool scrolls = false;
    };
    ViewPeer* NewPeer(const vetch::ViewDescription& view, int lineHeight);
    ListPeer* NewList(const vetch::ViewDescription& view, int lineHeight);
    ButtonPeer* NewButton(const vetch::ViewDescription& view);
    void LayOut(const View& view, QSize grown);

    const WindowStyle style;
    const Surroundings surroundings;
    std::vector<View> views;
    std::vector<QPointer<ButtonPeer>> buttons;
    QPointer<ListPeer> list;
};

} // namespace wren
