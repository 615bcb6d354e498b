// A list of symbols or files, a row each.
#pragma once

#include "wren/desktop/symbols/PaletteItem.h"

#include <QListView>

#include <vector>

namespace wren {

class SymbolModel;

// A row shows the kind, the name with the typed letters marked, what it belongs to, and at the right where it is. Rows
// of an outline are indented. GUI thread.
class SymbolList : public QListView {
    Q_OBJECT
public:
    explicit SymbolList(QWidget* parent = nullptr);

    void Show(std::vector<PaletteItem> items); // marks none
    const std::vector<PaletteItem>& Items() const;
    int Count() const;

    int Marked() const; // the row; -1 for none
    void Mark(int row);
    void Move(int rows);   // the mark; a single step goes round at the ends
    int RowHeight() const; // pixels

private:
    SymbolModel* model;
};

} // namespace wren
