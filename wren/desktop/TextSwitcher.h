// A small list over the text, for as long as the key that opened it has its modifiers held.
#pragma once

#include "wren/desktop/symbols/PaletteItem.h"

#include <QFrame>

#include <vector>

namespace wren {

class SymbolList;

// A child of the window that it covers. It has the keyboard while it is open: arrows move, letting go of a modifier or
// Enter chooses, Escape leaves, and it closes when the keyboard goes elsewhere. GUI thread.
class TextSwitcher : public QFrame {
    Q_OBJECT
public:
    explicit TextSwitcher(QWidget* window);

    // 'held': letting go of any of them chooses.
    void Open(std::vector<PaletteItem> items, Qt::KeyboardModifiers held);
    void Move(int rows); // goes round at the ends
    void Close();

    const std::vector<PaletteItem>& Items() const;
    int Marked() const; // the row; -1 for none

signals:
    void Chosen(const PaletteItem& item); // it has closed
    void Closed();                        // without a choice; the keyboard is free

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    bool KeyPressed(int key);
    void Choose();
    void Fit();

    SymbolList* list;
    Qt::KeyboardModifiers held;
};

} // namespace wren
