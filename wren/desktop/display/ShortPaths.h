// Rows of matches whose files are deep in one tree.
#pragma once

#include <QString>

#include <vector>

namespace wren {

// The rows, without what all their paths begin with: "f : a.c - /home/me/work/kernel/fs" becomes "f : a.c - …/fs". The
// last directory that they share stays. The same rows when that would save little.
std::vector<QString> WithShortPaths(const std::vector<QString>& rows);

} // namespace wren
