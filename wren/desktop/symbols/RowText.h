// Texts of a row in a list of symbols.
#pragma once

#include <QColor>
#include <QRect>
#include <QString>
#include <QTextLayout>

#include <string_view>
#include <vector>

class QPainter;

namespace wren {

// Bytes of a file or of a name; what is not UTF-8 becomes U+FFFD.
QString Shown(std::string_view bytes);

// The characters of Shown(bytes) that begin at these bytes.
QList<QTextLayout::FormatRange> Marked(std::string_view bytes, const std::vector<unsigned>& positions,
                                       const QTextCharFormat& format);

// One line, vertically centred, cut at the right of 'where'. Returns its width.
int DrawLine(QPainter& painter, const QRect& where, const QString& text, const QFont& font, const QColor& ink,
             const QList<QTextLayout::FormatRange>& marks = {});

// Between ink and paper: for what matters less.
QColor Faint(const QColor& ink, const QColor& paper);

} // namespace wren
