// The outline beside the text and the scopes above it, both from the text as it is.
#pragma once

#include "wren/desktop/ScopeBars.h"
#include "wren/desktop/symbols/PaletteItem.h"

#include <QObject>

#include <vector>

namespace wren {

class AskedTexts;
class Host;
class Landing;
class MainWindow;
class OutlinePanel;
class ScopeBar;
class SymbolEngine;

// One question serves both. They follow the caret. GUI thread.
class OutlineActions : public QObject {
    Q_OBJECT
public:
    struct Parts { // all borrowed
        Host& host;
        MainWindow& window;
        SymbolEngine& engine;
        AskedTexts& texts;
        Landing& landing;
    };
    explicit OutlineActions(Parts parts);

    void Show(bool shown);       // the outline, and gives it the keyboard
    void ShowScopes(bool shown); // above the texts, in their look as it is now
    void OpenScope();            // lists what stands beside the scope of the caret

    void Renamed(); // a text has another file now, and so perhaps scopes
    void Raised();  // another text is the current one
    void CaretMoved();

    OutlinePanel& Panel();
    const ScopeBar* Scopes() const; // of the current text; null for none

signals:
    void Shown(bool shown);
    void SiblingsAsked(const std::vector<PaletteItem>& siblings); // of a scope of the current text

private:
    bool IsOutlined() const;
    void Ask();
    ScopeBar* Bar() const;

    const Parts parts;
    ScopeBars scopes;
    bool showsScopes = false;
    OutlinePanel* panel = nullptr; // made when it is needed; owned by the window
    bool isNew = false;            // its height was never set
};

} // namespace wren
