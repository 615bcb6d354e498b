#include "tests/desktop/hands/EditorIdle.h"

#include "tests/desktop/hands/WindowManager.h"
#include "vetch/app/Loop.h"
#include "wren/desktop/Editor.h"

#include <QCoreApplication>
#include <QImage>

namespace {

constexpr int kQuietRounds = 2; // of Qt's loop, so that what one round queues is there in the next

} // namespace

// Quiet is when a round of Qt's loop has woken nobody.
void SettleEditor(wren::Editor& editor, WindowManager& manager)
{
    int quiet = 0;
    const auto connection = QObject::connect(&editor, &wren::Editor::Woke, [&quiet] { quiet = 0; });
    while (quiet < kQuietRounds) {
        ++quiet;
        vetch::Settle();
        editor.LetThrough();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QCoreApplication::processEvents();
        manager.LookAround();
    }
    QObject::disconnect(connection);
}

void StartPainters()
{
    const QImage big(4096, 2048, QImage::Format_ARGB32);
    (void)big.convertToFormat(QImage::Format_ARGB32_Premultiplied);
}
