// The symbols of the current text beside it.
#pragma once

#include "wren/desktop/symbols/PaletteItem.h"

#include <QDockWidget>

#include <vector>

class QLineEdit;

namespace wren {

class SymbolList;

// In the order of the text, indented by scope. The symbol around the caret is marked. Typing narrows the list, a click
// or Enter goes to a symbol, Escape gives the keyboard back to the text. GUI thread.
class OutlinePanel : public QDockWidget {
    Q_OBJECT
public:
    explicit OutlinePanel(QWidget* parent = nullptr);

    void Show(std::vector<PaletteItem> items); // those of the text as it is now
    void FollowCaret(long line);               // from 1

    const std::vector<PaletteItem>& Items() const; // as narrowed
    int Marked() const;                            // the row; -1 for none

signals:
    void Chosen(const PaletteItem& item);
    void Left(); // the text gets the keyboard back

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    bool KeyPressed(int key);
    void Choose();
    void ShowNarrowed();

    std::vector<PaletteItem> all;
    long caret = 0; // its line
    QLineEdit* filter;
    SymbolList* list;
};

} // namespace wren
