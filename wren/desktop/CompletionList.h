// The names that fit a place, in a list below the word that is typed.
#pragma once

#include "wren/desktop/symbols/PaletteItem.h"

#include <QFrame>

#include <vector>

namespace wren {

class CodeView;
class SymbolList;

// It lies over its text, in the text's font, and never takes the keyboard. It follows the word when the text scrolls;
// a click beside it closes it. GUI thread.
class CompletionList : public QFrame {
    Q_OBJECT
public:
    explicit CompletionList(CodeView& view); // belongs to the view; shows nothing yet

    void Show(long word, std::vector<PaletteItem> items); // below the offset of the word; marks the first
    bool Move(int key);                                   // the mark, by a key of arrows or pages; false for others

    const CodeView& View() const { return view; }
    const std::vector<PaletteItem>& Items() const;
    int Marked() const; // the row

signals:
    void Clicked(); // on the marked one

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void TakeLook();
    int WidthOfRows() const;
    void Place();

    CodeView& view;
    SymbolList* list;
    long word = 0;
};

} // namespace wren
