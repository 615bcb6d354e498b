#include "wren/desktop/display/PeerUpdates.h"

#include "wren/desktop/display/ListPeer.h"
#include "wren/desktop/display/Peers.h"
#include "wren/desktop/display/ViewPeer.h"
#include "wren/desktop/display/WindowPeer.h"

#include <variant>

namespace wren {

namespace {

class Carrier {
public:
    explicit Carrier(Peers& peers) : peers(peers) {}

    void operator()(const vetch::WindowMade& made) const { peers.Make(made.window); }
    void operator()(const vetch::WindowClosed& closed) const { peers.Close(closed.window); }
    void operator()(const vetch::WindowShown& shown) const
    {
        // Not before its list is: it would be seen empty.
        ToWindow(shown.window, [this](WindowPeer& window) {
            peers.Publish();
            window.ShowUp();
        });
    }
    void operator()(const vetch::WindowHidden& hidden) const
    {
        ToWindow(hidden.window, [](WindowPeer& window) { window.Withdraw(); });
    }
    void operator()(const vetch::WindowMinimized& minimized) const
    {
        ToWindow(minimized.window, [&](WindowPeer& window) { window.Minimize(minimized.minimized); });
    }
    void operator()(const vetch::WindowMoved& moved) const
    {
        ToWindow(moved.window, [&](WindowPeer& window) { window.Place(moved.frame); });
    }
    void operator()(const vetch::WindowLimited& limited) const
    {
        ToWindow(limited.window, [&](WindowPeer& window) {
            window.Limit({limited.minWidth, limited.maxWidth, limited.minHeight, limited.maxHeight});
        });
    }
    void operator()(const vetch::WindowTitled& titled) const
    {
        ToWindow(titled.window, [&](WindowPeer& window) { window.SetTitle(titled.title); });
    }
    void operator()(const vetch::WindowActivated& activated) const
    {
        ToWindow(activated.window, [&](WindowPeer& window) { window.Activate(activated.active); });
    }
    void operator()(const vetch::WindowFocused& focused) const { peers.Focus(focused.window, focused.view); }

    void operator()(const vetch::ViewMade& made) const { peers.Make(made.view); }
    void operator()(const vetch::ViewMoved& moved) const { peers.MoveView(moved.view, moved.frame); }
    void operator()(const vetch::ListItemAdded& added) const
    {
        ToView(added.list, [&](ViewPeer& view) { view.AddItem(added.index, added.text); });
    }
    void operator()(const vetch::ListItemRemoved& removed) const
    {
        ToView(removed.list, [&](ViewPeer& view) { view.RemoveItem(removed.index); });
    }
    void operator()(const vetch::ListItemChanged& changed) const
    {
        ToView(changed.list, [&](ViewPeer& view) { view.ChangeItem(changed.index, changed.text); });
    }
    void operator()(const vetch::ListSelected& selected) const
    {
        ToView(selected.list, [&](ViewPeer& view) { view.SelectItem(selected.index); });
    }
    void operator()(const vetch::ListColoured& coloured) const
    {
        ToView(coloured.list, [&](ViewPeer& view) { view.SetSelectionColour(coloured.selection); });
    }
    void operator()(const vetch::TextChanged& changed) const
    {
        ToView(changed.control, [&](ViewPeer& view) { view.SetText(changed.text); });
    }
    void operator()(const vetch::TextSelected& selected) const
    {
        ToView(selected.control, [&](ViewPeer& view) { view.SelectText(selected.start, selected.end); });
    }
    void operator()(const vetch::CheckChanged& changed) const
    {
        ToView(changed.control, [&](ViewPeer& view) { view.SetChecked(changed.on); });
    }

    void operator()(const vetch::Beeped&) const { peers.Beep(); }
    void operator()(const vetch::PanelOpened& opened) const { peers.Open(opened.panel); }

private:
    template <class Operation>
    void ToWindow(vetch::LooperToken token, Operation operation) const
    {
        if (WindowPeer* window = peers.Find(token))
            operation(*window);
    }
    template <class Operation>
    void ToView(vetch::HandlerToken token, Operation operation) const
    {
        if (ViewPeer* view = peers.FindView(token))
            operation(*view);
    }

    Peers& peers;
};

} // namespace

void CarryOut(const vetch::Update& update, Peers& peers)
{
    std::visit(Carrier(peers), update);
}

} // namespace wren
