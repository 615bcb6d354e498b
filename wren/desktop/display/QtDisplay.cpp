#include "wren/desktop/display/QtDisplay.h"

#include "wren/desktop/display/FontTable.h"
#include "wren/desktop/display/ListPeer.h"
#include "wren/desktop/display/Peers.h"
#include "wren/desktop/display/Questions.h"
#include "wren/desktop/display/ScreenTable.h"
#include "wren/desktop/display/UpdateQueue.h"
#include "wren/desktop/display/ViewPeer.h"
#include "wren/desktop/display/WindowPeer.h"

#include <QApplication>
#include <QStyle>

#include <utility>

namespace wren {

namespace {

int ScrollBarWidth()
{
    return QApplication::style()->pixelMetric(QStyle::PM_ScrollBarExtent);
}

} // namespace

// Queues 'operation' on the window's peer, if it has one when its turn comes.
template <class Operation>
void QtDisplay::ToWindow(vetch::LooperToken token, Operation operation)
{
    queue->Add([peers = peers.get(), token, operation = std::move(operation)] {
        if (WindowPeer* window = peers->Find(token))
            operation(*window);
    });
}

template <class Operation>
void QtDisplay::ToView(vetch::HandlerToken token, Operation operation)
{
    queue->Add([peers = peers.get(), token, operation = std::move(operation)] {
        if (ViewPeer* view = peers->FindView(token))
            operation(*view);
    });
}

QtDisplay::QtDisplay()
    : scrollBarWidth(static_cast<float>(ScrollBarWidth())), fonts(std::make_unique<FontTable>()),
      screens(std::make_unique<ScreenTable>()), queue(std::make_unique<UpdateQueue>()),
      peers(std::make_unique<Peers>(*fonts, ScrollBarWidth()))
{
}

QtDisplay::~QtDisplay() = default;

void QtDisplay::Drain()
{
    queue->Drain();
    peers->Publish();
}

void QtDisplay::SetWakeUp(std::function<void()> wake)
{
    queue->SetWakeUp(std::move(wake));
}

void QtDisplay::SetMainWindow(QWidget* window)
{
    peers->SetMainWindow(window);
}

void QtDisplay::SetModifierKeys(const ModifierKeys& keys)
{
    peers->SetModifierKeys(keys);
}

QWidget* QtDisplay::TakeContent(vetch::LooperToken token)
{
    Drain();
    WindowPeer* window = peers->Find(token);
    return window == nullptr ? nullptr : window->TakeContent();
}

QtDisplay::ListWindow QtDisplay::FrontList() const
{
    const WindowPeer* window = peers->FrontList();
    if (window == nullptr)
        return {};
    return {window->Token(), window->Handler(), window->List()->List(), window->List()->Selected()};
}

bool QtDisplay::IsPopUpVisible() const
{
    return peers->IsPopUpVisible();
}

// Windows

void QtDisplay::WindowMade(const vetch::WindowDescription& window)
{
    queue->Add([peers = peers.get(), window] { peers->Make(window); });
}

void QtDisplay::WindowClosed(vetch::LooperToken window)
{
    queue->Add([peers = peers.get(), window] { peers->Close(window); });
}

void QtDisplay::WindowShown(vetch::LooperToken token)
{
    // Not before its list is: it would be seen empty.
    ToWindow(token, [peers = peers.get()](WindowPeer& window) {
        peers->Publish();
        window.ShowUp();
    });
}

void QtDisplay::WindowHidden(vetch::LooperToken token)
{
    ToWindow(token, [](WindowPeer& window) { window.Withdraw(); });
}

void QtDisplay::WindowMinimized(vetch::LooperToken token, bool minimized)
{
    ToWindow(token, [minimized](WindowPeer& window) { window.Minimize(minimized); });
}

void QtDisplay::WindowMoved(vetch::LooperToken token, BRect frame)
{
    ToWindow(token, [frame](WindowPeer& window) { window.Place(frame); });
}

void QtDisplay::WindowLimited(vetch::LooperToken token, float minWidth, float maxWidth, float minHeight,
                              float maxHeight)
{
    const SizeLimits limits = {minWidth, maxWidth, minHeight, maxHeight};
    ToWindow(token, [limits](WindowPeer& window) { window.Limit(limits); });
}

void QtDisplay::WindowTitled(vetch::LooperToken token, const std::string& title)
{
    ToWindow(token, [title](WindowPeer& window) { window.SetTitle(title); });
}

void QtDisplay::WindowActivated(vetch::LooperToken token, bool active)
{
    ToWindow(token, [active](WindowPeer& window) { window.Activate(active); });
}

void QtDisplay::WindowFocused(vetch::LooperToken window, vetch::HandlerToken view)
{
    queue->Add([peers = peers.get(), window, view] { peers->Focus(window, view); });
}

// Views

void QtDisplay::ViewMade(const vetch::ViewDescription& view)
{
    queue->Add([peers = peers.get(), view] { peers->Make(view); });
}

void QtDisplay::ViewMoved(vetch::HandlerToken view, BRect frame)
{
    queue->Add([peers = peers.get(), view, frame] { peers->MoveView(view, frame); });
}

void QtDisplay::ListItemAdded(vetch::HandlerToken list, long index, const std::string& text)
{
    ToView(list, [index, text](ViewPeer& view) { view.AddItem(index, text); });
}

void QtDisplay::ListItemRemoved(vetch::HandlerToken list, long index)
{
    ToView(list, [index](ViewPeer& view) { view.RemoveItem(index); });
}

void QtDisplay::ListItemChanged(vetch::HandlerToken list, long index, const std::string& text)
{
    ToView(list, [index, text](ViewPeer& view) { view.ChangeItem(index, text); });
}

void QtDisplay::ListSelected(vetch::HandlerToken list, long index)
{
    ToView(list, [index](ViewPeer& view) { view.SelectItem(index); });
}

void QtDisplay::ListColoured(vetch::HandlerToken list, rgb_color selection)
{
    ToView(list, [selection](ViewPeer& view) { view.SetSelectionColour(selection); });
}

void QtDisplay::TextChanged(vetch::HandlerToken control, const std::string& text)
{
    ToView(control, [text](ViewPeer& view) { view.SetText(text); });
}

void QtDisplay::TextSelected(vetch::HandlerToken control, long start, long end)
{
    ToView(control, [start, end](ViewPeer& view) { view.SelectText(start, end); });
}

void QtDisplay::CheckChanged(vetch::HandlerToken control, bool on)
{
    ToView(control, [on](ViewPeer& view) { view.SetChecked(on); });
}

void QtDisplay::Beep()
{
    queue->Add([] { QApplication::beep(); });
}

// Questions

float QtDisplay::StringWidth(const std::string& text, float fontSize) const
{
    return fonts->StringWidth(text, fontSize);
}

vetch::FontMetrics QtDisplay::Metrics(float fontSize) const
{
    return fonts->Metrics(fontSize);
}

float QtDisplay::MiniScrollBarWidth() const
{
    return scrollBarWidth;
}

BRect QtDisplay::ScreenFrame(BPoint where) const
{
    return screens->Usable(where);
}

long QtDisplay::RunAlert(const vetch::AlertDescription& alert)
{
    return AskAlert(alert, peers->MainWindow());
}

std::optional<long> QtDisplay::RunMenu(const vetch::MenuDescription& menu)
{
    return AskMenu(menu, peers->Keys(), peers->MainWindow());
}

void QtDisplay::OpenPanel(const vetch::PanelDescription& panel)
{
    queue->Add([peers = peers.get(), panel] { peers->Open(panel); });
}

} // namespace wren
