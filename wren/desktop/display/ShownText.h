// Between the framework's texts, bytes that should be UTF-8, and Qt's, which count in UTF-16.
#pragma once

#include <QString>

#include <string>

namespace wren {

// Each byte that is part of no character becomes U+FFFD.
QString ShownText(const std::string& bytes);

// The same as a label of Qt's, where "&" would be the sign before a letter to press, and a tab in a menu would stand
// before the keys: here both are characters.
QString ShownLabel(const std::string& bytes);

// The same text as a tool tip, which would take some texts for markup.
QString PlainTip(const QString& text);

// How many UTF-16 units the first 'offset' bytes are shown as. An offset inside a character counts it whole; one beyond
// the end is the end.
int UnitsBefore(const std::string& bytes, long offset);

// How many bytes of UTF-8 the first 'units' of a text are.
long BytesBefore(const QString& text, int units);

} // namespace wren
