// The pictures of actions.
#pragma once

#include <QIcon>
#include <QString>

namespace wren {

// By the names of the freedesktop.org icon naming specification: the desktop's, else the style's, else a drawn one; a null
// icon for a name that none of them has.
QIcon IconNamed(const QString& name);

} // namespace wren
