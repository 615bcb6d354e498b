#include "wren/desktop/display/ShortPaths.h"

#include <QStringList>
#include <QStringView>

#include <algorithm>
#include <optional>

namespace wren {

namespace {

constexpr qsizetype kLeastSaved = 8; // characters

// Where the path in a row begins; -1 for none.
qsizetype PathStart(const QString& row)
{
    for (const auto* mark : {" - /", " - ~/"})
        if (const qsizetype found = row.indexOf(QLatin1String(mark)); found >= 0)
            return found + 3;
    return -1;
}

// The length of what both begin with, in whole directories.
qsizetype Shared(QStringView one, QStringView other, qsizetype atMost)
{
    const qsizetype end = std::min({one.size(), other.size(), atMost});
    qsizetype same = 0;
    while (same < end && one[same] == other[same])
        ++same;
    const auto ends = [](QStringView path, qsizetype at) { return at == path.size() || path[at] == u'/'; };
    while (same > 0 && !(ends(one, same) && ends(other, same)))
        --same;
    return same;
}

} // namespace

std::vector<QString> WithShortPaths(const std::vector<QString>& rows)
{
    std::optional<QStringView> first;
    qsizetype shared = 0;
    for (const QString& row : rows) {
        const qsizetype start = PathStart(row);
        if (start < 0)
            return rows;
        const QStringView path = QStringView(row).mid(start);
        shared = first ? Shared(*first, path, shared) : path.size();
        first = first.value_or(path);
    }
    const qsizetype cut = first ? first->left(shared).lastIndexOf(u'/') : -1;
    if (rows.size() < 2 || cut < kLeastSaved)
        return rows;
    std::vector<QString> shortened;
    for (const QString& row : rows) {
        const qsizetype start = PathStart(row);
        shortened.push_back(row.left(start) + QChar(0x2026) + row.mid(start + cut));
    }
    return shortened;
}

} // namespace wren
