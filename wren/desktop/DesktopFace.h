// The core's view of the editor that a person sits at.
#pragma once

#include "wren/core/Face.h"
#include "wren/core/HostObserver.h"

#include <QRect>

#include <functional>
#include <vector>

class QWidget;

namespace wren {

class EditorTabs;
class KeyRouter;
struct EditorLook;

// Documents are shown in tabs of one window; their texts are those tabs' own. GUI thread.
class DesktopFace : public Face, public HostObserver {
public:
    // Borrowed. 'look' is used for views that are made later.
    DesktopFace(EditorTabs& tabs, QWidget& window, QWidget& button, const EditorLook& look);

    const KeyRouter* router = nullptr; // set as soon as there is one
    std::function<void(const std::string& path, long line)> onOpenMatch;
    std::function<void(const std::string& text)> onWarn;
    std::function<void()> onWorksheetGrown; // in a plug-in call
    std::function<bool()> keysWait;         // whether more keys are waiting; null for no

    QRect AskedLine() const { return asked; } // where the plug-in last asked for a point; null for nowhere

    std::unique_ptr<TextStore> MakeText(long document) override;
    BRect DocumentWindowFrame() const override;
    BRect TextBounds(const Document& document) const override;
    BRect ButtonFrame(const Document& document) const override;
    BPoint PointAt(const Document& document, long offset) const override;
    long OffsetAt(const Document& document, BPoint where) const override;
    MouseState Mouse() const override;
    bool InputPending() const override;
    void OpenMatch(const std::string& path, long line) override;
    void Warn(const std::string& text) override;
    void Changed(const HostChange& change) override;

private:
    EditorTabs& tabs;
    QWidget& window;
    QWidget& button;
    const EditorLook& look;
    mutable QRect asked;
};

} // namespace wren
