// The pictures of actions.
#pragma once

#include <QChar>
#include <QIcon>
#include <QPalette>
#include <QString>

namespace wren {

// The picture of that name, in the colours of the program's palette, also when the palette changes later. All come from
// one family of drawings, since those of desktops lack some or are of several sizes and styles. A null icon for a name
// without a picture.
QIcon IconNamed(const QString& name);

// The character, drawn with the program's font in that colour of its palette, also when the palette changes later.
QIcon DrawnIcon(QChar character, QPalette::ColorRole ink);

} // namespace wren
