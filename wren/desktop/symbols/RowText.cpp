#include "wren/desktop/symbols/RowText.h"

#include <QPainter>

#include <algorithm>

namespace wren {

QString Shown(std::string_view bytes)
{
    return QString::fromUtf8(bytes.data(), static_cast<qsizetype>(bytes.size()));
}

QList<QTextLayout::FormatRange> Marked(std::string_view bytes, const std::vector<unsigned>& positions,
                                       const QTextCharFormat& format)
{
    QList<QTextLayout::FormatRange> marks;
    for (const unsigned position : positions)
        if (position < bytes.size())
            marks.append({static_cast<int>(Shown(bytes.substr(0, position)).size()), 1, format});
    return marks;
}

int DrawLine(QPainter& painter, const QRect& where, const QString& text, const QFont& font, const QColor& ink,
             const QList<QTextLayout::FormatRange>& marks)
{
    QString line = text;
    line.replace('\t', ' ');
    QTextLayout layout(line, font);
    QTextOption option;
    option.setWrapMode(QTextOption::NoWrap);
    layout.setTextOption(option);
    layout.setFormats(marks);
    layout.beginLayout();
    QTextLine only = layout.createLine();
    if (only.isValid())
        only.setLineWidth(where.width());
    layout.endLayout();
    if (!only.isValid())
        return 0;
    painter.save();
    painter.setClipRect(where, Qt::IntersectClip);
    painter.setPen(ink);
    layout.draw(&painter, QPointF(where.left(), where.top() + (where.height() - only.height()) / 2));
    painter.restore();
    return std::min(where.width(), static_cast<int>(only.naturalTextWidth()) + 1);
}

QColor Faint(const QColor& ink, const QColor& paper)
{
    const auto mix = [](int strong, int weak) { return (strong * 3 + weak * 2) / 5; };
    return {mix(ink.red(), paper.red()), mix(ink.green(), paper.green()), mix(ink.blue(), paper.blue())};
}

} // namespace wren
