// The pictures of symbols' kinds.
#pragma once

#include "tagging/ParsedSource.h"

#include <QIcon>
#include <QString>

namespace wren {

// A letter on a coloured field, readable on light and dark paper. A file for SymbolKind::None.
QIcon KindIcon(tagging::SymbolKind kind);

QString KindName(tagging::SymbolKind kind); // for people and for screen readers: "function"

} // namespace wren
