// The pictures of actions.
#pragma once

#include <QChar>
#include <QIcon>
#include <QPalette>
#include <QString>

namespace wren {

// Takes names of the freedesktop.org icon naming specification. The icon is the desktop's, else the style's, else a
// drawn one; a null icon for a name that none of them has.
QIcon IconNamed(const QString& name);

// The character, drawn with the program's font in that colour of its palette, also when the palette changes later.
QIcon DrawnIcon(QChar character, QPalette::ColorRole ink);

} // namespace wren
