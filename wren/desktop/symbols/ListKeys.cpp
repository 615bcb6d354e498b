#include "wren/desktop/symbols/ListKeys.h"

#include <Qt>

namespace wren {

int RowsFor(int key, int page)
{
    switch (key) {
    case Qt::Key_Up:
        return -1;
    case Qt::Key_Down:
        return 1;
    case Qt::Key_PageUp:
        return -page;
    case Qt::Key_PageDown:
        return page;
    default:
        return 0;
    }
}

} // namespace wren
