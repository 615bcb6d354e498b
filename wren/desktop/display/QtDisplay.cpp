#include "wren/desktop/display/QtDisplay.h"

#include "wren/desktop/display/FontTable.h"
#include "wren/desktop/display/ListPeer.h"
#include "wren/desktop/display/PeerUpdates.h"
#include "wren/desktop/display/Peers.h"
#include "wren/desktop/display/Questions.h"
#include "wren/desktop/display/ScreenTable.h"
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

QtDisplay::QtDisplay()
    : scrollBarWidth(static_cast<float>(ScrollBarWidth())), fonts(std::make_unique<FontTable>()),
      screens(std::make_unique<ScreenTable>()), peers(std::make_unique<Peers>(*fonts, ScrollBarWidth()))
{
}

QtDisplay::~QtDisplay() = default;

void QtDisplay::Drain()
{
    queue.Drain([this](const vetch::Update& update) { CarryOut(update, *peers); });
    peers->Publish();
}

void QtDisplay::SetWakeUp(std::function<void()> wake)
{
    queue.SetWakeUp(std::move(wake));
}

void QtDisplay::SetMainWindow(QWidget* window)
{
    peers->SetMainWindow(window);
}

void QtDisplay::SetModifierKeys(const ModifierKeys& keys)
{
    peers->SetModifierKeys(keys);
}

void QtDisplay::SetListFont(const QFont& font)
{
    fonts->Use(font);
}

void QtDisplay::SetKeptLine(std::function<QRect()> line)
{
    peers->keptLine = std::move(line);
}

void QtDisplay::SetOnBeep(std::function<void()> beeped)
{
    peers->onBeep = std::move(beeped);
}

void QtDisplay::SetOnAnswer(std::function<long(const vetch::AlertDescription&, long)> answered)
{
    onAnswer = std::move(answered);
}

QString QtDisplay::TypedText() const
{
    return peers->TypedText();
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

void QtDisplay::DismissPopUps()
{
    peers->DismissPopUps(nullptr);
}

void QtDisplay::Apply(vetch::Update update)
{
    queue.Add(std::move(update));
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
    const long answer = AskAlert(alert, peers->MainWindow());
    return onAnswer ? onAnswer(alert, answer) : answer;
}

std::optional<long> QtDisplay::RunMenu(const vetch::MenuDescription& menu)
{
    return AskMenu(menu, peers->Keys(), peers->MainWindow());
}

} // namespace wren
