// The drawings of the icons: one family, of lines in one colour.
#pragma once

#include <QByteArray>
#include <QColor>
#include <QString>

namespace wren {

// An SVG document with the drawing of that name, of the freedesktop.org icon naming specification where it has one;
// empty for a name without a drawing.
QByteArray PictureNamed(const QString& name, const QColor& ink);

} // namespace wren
