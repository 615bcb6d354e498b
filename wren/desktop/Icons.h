// The pictures of actions.
#pragma once

#include <QChar>
#include <QIcon>
#include <QPalette>
#include <QString>

namespace wren {

// By the names of the freedesktop.org icon naming specification: the desktop's, else the style's, else a drawn one; a
// null icon for a name that none of them has.
QIcon IconNamed(const QString& name);

// The character in the font's hand, always in that colour of the program's palette, whatever that becomes.
QIcon DrawnIcon(QChar character, QPalette::ColorRole ink);

} // namespace wren
