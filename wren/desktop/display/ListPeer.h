// A list on the screen.
#pragma once

#include "vetch/app/BHandler.h"
#include "wren/desktop/display/KeyInput.h"
#include "wren/desktop/display/ViewPeer.h"

#include <QListView>

namespace wren {

class ListRows;

// The mouse and the keys are posted to the framework's list, which answers with its selection: nothing is selected here
// but what it says. Its selection looks the same whether it has the keyboard or not.
class ListPeer : public QListView, public ViewPeer {
public:
    // 'keys' is borrowed. Lines are 'lineHeight' apart.
    ListPeer(vetch::HandlerToken list, const ModifierKeys& keys, int lineHeight, QWidget* parent);

    vetch::HandlerToken List() const { return list; }
    long Selected() const { return selected; }

    static constexpr int kPainted = Qt::UserRole; // of the model: the row as it is painted
    void ShortenPaths();                          // from now on; the whole row is its tool tip
    int WidthSaved() const;                       // by shortening, in pixels
    void TakeKey(const QKeyEvent& event);         // posts it, if it is a key stroke

    QWidget& Widget() override { return *this; }
    void AddItem(long index, const std::string& text) override;
    void RemoveItem(long index) override;
    void ChangeItem(long index, const std::string& text) override;
    void SelectItem(long index) override;
    void SetSelectionColour(rgb_color colour) override;
    void Publish() override;

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    void SetUp();
    void TakeClick(const QMouseEvent& event, int clicks);

    const vetch::HandlerToken list;
    const ModifierKeys& keys;
    const int lineHeight;
    ListRows* const rows; // the view's child
    long selected = -1;
    bool moved = false; // the selection, since it was last shown
};

} // namespace wren
