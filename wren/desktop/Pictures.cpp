#include "wren/desktop/Pictures.h"

#include <QMap>

namespace wren {

namespace {

// Within 24 by 24, with lines of 1.8; a part that has to be filled says so.
const QMap<QString, const char*>& Drawings()
{
    static const QMap<QString, const char*> kDrawings = {
        {"document-new", "<path d='M6 3h8l4 4v14H6z'/><path d='M14 3v4h4M12 11v6M9 14h6'/>"},
        {"document-open", "<path d='M3 19V5h6l2 3h9v3'/><path d='M3 19l3-8h16l-3 8z'/>"},
        {"document-save", "<path d='M4 4h13l3 3v13H4z'/><path d='M8 4v5h7V4M7 20v-7h10v7'/>"},
        {"document-save-as", "<path d='M12 20H4V4h13l3 3v3'/><path d='M8 4v5h7V4M7 20v-7h4M14 21l1-4 5-5 3 3-5 5z'/>"},
        {"document-revert", "<path d='M4 5v5h5'/><path d='M4.5 10a8 8 0 1 1 0 5M12 8v5l3 2'/>"},
        {"window-close", "<path d='M6 6l12 12M18 6L6 18'/>"},
        {"application-exit", "<path d='M10 4H5v16h5M10 12h10M16 8l4 4-4 4'/>"},
        {"edit-undo", "<path d='M8 5L4 9l4 4'/><path d='M4 9h10a5 5 0 0 1 0 10H8'/>"},
        {"edit-redo", "<path d='M16 5l4 4-4 4'/><path d='M20 9H10a5 5 0 0 0 0 10h6'/>"},
        {"edit-cut", "<circle cx='6' cy='6' r='2.5'/><circle cx='6' cy='18' r='2.5'/>"
                     "<path d='M8 7.5L20 17M8 16.5L20 7'/>"},
        {"edit-copy", "<path d='M9 8h11v13H9z'/><path d='M15 5V3H4v13h2'/>"},
        {"edit-paste", "<path d='M8 5H5v16h14V5h-3'/><path d='M9 3h6v4H9zM9 12h6M9 16h6'/>"},
        {"edit-select-all", "<path d='M4 8V4h4M16 4h4v4M20 16v4h-4M8 20H4v-4M8 9h8M8 12h8M8 15h5'/>"},
        {"edit-find", "<circle cx='10.5' cy='10.5' r='6'/><path d='M15 15l6 6'/>"},
        {"preferences-system", "<path d='M4 7h9M17 7h3M4 12h3M11 12h9M4 17h9M17 17h3'/><circle cx='15' cy='7' r='2'/>"
                               "<circle cx='9' cy='12' r='2'/><circle cx='15' cy='17' r='2'/>"},
        {"go-previous", "<path d='M20 12H4M10 6l-6 6 6 6'/>"},
        {"go-next", "<path d='M4 12h16M14 6l6 6-6 6'/>"},
        {"go-jump", "<path d='M4 5h8M4 10h5M4 15h5M4 20h8M12 12.5h9M17 8.5l4 4-4 4'/>"},
        {"zoom-in", "<circle cx='10.5' cy='10.5' r='6'/><path d='M15 15l6 6M10.5 8v5M8 10.5h5'/>"},
        {"zoom-out", "<circle cx='10.5' cy='10.5' r='6'/><path d='M15 15l6 6M8 10.5h5'/>"},
        {"zoom-original", "<circle cx='10.5' cy='10.5' r='6'/><path d='M15 15l6 6M9 8.5l1.5-1v6'/>"},
        {"system-run", "<path d='M7 4l13 8-13 8z'/>"},
        {"process-stop", "<path d='M6 6h12v12H6z'/>"},
        {"help-about", "<circle cx='12' cy='12' r='9'/><path d='M12 11v6M12 7v.5'/>"},
        {"folder", "<path d='M3 19V5h6l2 3h10v11z'/>"},
        {"text-x-generic", "<path d='M6 3h8l4 4v14H6z'/><path d='M14 3v4h4'/>"},
        {"preferences-text", "<path d='M5 7V4h14v3M12 4v16M9 20h6'/>"},
        {"preferences-names", "<path d='M3 5v6l9 9 7-7-9-9H4z'/><circle cx='7.5' cy='8.5' r='1'/>"},
        {"preferences-keys", "<path d='M2.5 6h19v12h-19z'/><path d='M6 10h.5M9.5 10h.5M13 10h.5M17 10h.5M7 14h10'/>"},
        {"preferences-session", "<path d='M3 19V5h6l2 3h10v11z'/><path d='M12 11v3l2 1.5'/>"},
    };
    return kDrawings;
}

} // namespace

QByteArray PictureNamed(const QString& name, const QColor& ink)
{
    const char* drawing = Drawings().value(name, nullptr);
    if (drawing == nullptr)
        return {};
    return QByteArray("<svg xmlns='http://www.w3.org/2000/svg' viewBox='0 0 24 24' fill='none' stroke='") +
           ink.name().toLatin1() + "' stroke-width='1.8' stroke-linecap='round' stroke-linejoin='round'>" + drawing +
           "</svg>";
}

} // namespace wren
