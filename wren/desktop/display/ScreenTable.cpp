#include "wren/desktop/display/ScreenTable.h"

#include "wren/desktop/display/Frames.h"

#include <QGuiApplication>
#include <QScreen>

#include <algorithm>

namespace wren {

namespace {

float Outside(float value, float least, float most)
{
    return std::max({least - value, value - most, 0.0f});
}

float Distance(const BRect& frame, BPoint point)
{
    const float x = Outside(point.x, frame.left, frame.right);
    const float y = Outside(point.y, frame.top, frame.bottom);
    return x * x + y * y;
}

} // namespace

ScreenTable::ScreenTable()
{
    for (QScreen* screen : QGuiApplication::screens())
        Watch(screen);
    QObject::connect(qGuiApp, &QGuiApplication::screenAdded, &connections, [this](QScreen* screen) {
        Watch(screen);
        Read();
    });
    QObject::connect(qGuiApp, &QGuiApplication::screenRemoved, &connections, [this] { Read(); });
    QObject::connect(qGuiApp, &QGuiApplication::primaryScreenChanged, &connections, [this] { Read(); });
    Read();
}

BRect ScreenTable::Usable(BPoint where) const
{
    const std::lock_guard lock(mutex);
    const auto nearest =
        std::ranges::min_element(usable, {}, [where](const BRect& frame) { return Distance(frame, where); });
    return nearest == usable.end() ? BRect() : *nearest;
}

void ScreenTable::Watch(QScreen* screen)
{
    QObject::connect(screen, &QScreen::availableGeometryChanged, &connections, [this] { Read(); });
}

void ScreenTable::Read()
{
    std::vector<BRect> frames;
    for (const QScreen* screen : QGuiApplication::screens()) // the main one first
        frames.push_back(FrameOf(screen->availableGeometry()));
    if (frames.empty())
        return; // between two screens: the old ones stay
    const std::lock_guard lock(mutex);
    usable = std::move(frames);
}

} // namespace wren
