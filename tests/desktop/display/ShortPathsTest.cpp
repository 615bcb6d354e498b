#include "wren/desktop/display/ShortPaths.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

namespace {

struct RowsCase {
    const char* why;
    std::vector<std::string> rows;
    std::vector<std::string> shown;
};

const RowsCase kRowsCases[] = {
    {"the last shared directory stays",
     {"open : a.c - /home/me/work/kernel/fs", "open : a.c - /home/me/work/kernel/net/core"},
     {"open : a.c - …/kernel/fs", "open : a.c - …/kernel/net/core"}},
    {"one directory inside the other",
     {"f : a.c - /home/me/kernel/fs", "f : a.c - /home/me/kernel/fs/ext4"},
     {"f : a.c - …/fs", "f : a.c - …/fs/ext4"}},
    {"names that only begin alike",
     {"f : a.c - /home/me/kernel/net", "f : a.c - /home/me/kernel/network"},
     {"f : a.c - …/kernel/net", "f : a.c - …/kernel/network"}},
    {"below the home directory",
     {"f : a.c - ~/projects/kernel/fs", "f : a.c - ~/projects/kernel/net"},
     {"f : a.c - …/kernel/fs", "f : a.c - …/kernel/net"}},
    {"little to save", {"f : a.c - /usr/fs", "f : a.c - /usr/net"}, {"f : a.c - /usr/fs", "f : a.c - /usr/net"}},
    {"nothing shared",
     {"f : a.c - /usr/include/sys", "f : a.c - ~/x"},
     {"f : a.c - /usr/include/sys", "f : a.c - ~/x"}},
    {"a single row", {"f : a.c - /home/me/work/kernel/fs"}, {"f : a.c - /home/me/work/kernel/fs"}},
    {"a row without a directory",
     {"f : a.c - /home/me/work/kernel/fs", "f - a.c"},
     {"f : a.c - /home/me/work/kernel/fs", "f - a.c"}},
    {"no rows", {}, {}},
};

TEST(ShortPaths, Cases)
{
    for (const RowsCase& c : kRowsCases) {
        std::vector<QString> rows;
        for (const std::string& row : c.rows)
            rows.push_back(QString::fromStdString(row));
        std::vector<std::string> shown;
        for (const QString& row : wren::WithShortPaths(rows))
            shown.push_back(row.toStdString());
        EXPECT_EQ(shown, c.shown) << c.why;
    }
}

} // namespace
