// A scope bar above each text whose names are understood.
#pragma once

#include "wren/desktop/symbols/PaletteItem.h"

#include <QObject>

#include <vector>

namespace wren {

class CodeView;
class ScopeBar;

// A bar belongs to its view. GUI thread.
class ScopeBars : public QObject {
    Q_OBJECT
public:
    using QObject::QObject;

    // Shows a bar in the view, or takes it away. The text moves down by its height.
    void Update(CodeView& view, bool isShown);
    ScopeBar* BarOf(const CodeView& view) const; // null while there is none

signals:
    void Asked(CodeView& view, const std::vector<PaletteItem>& siblings);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    static void Place(const CodeView& view, ScopeBar& bar);
};

} // namespace wren
