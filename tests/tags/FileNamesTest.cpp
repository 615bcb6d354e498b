#include "tags/FileNames.h"

#include <gtest/gtest.h>

namespace {

EntryRef Ref(const char* path)
{
    return path == nullptr ? EntryRef() : EntryRef(path);
}

struct Order {
    const char* why;
    const char* a;
    const char* b;
    bool before;
};

const Order kOrders[] = {
    {"by leaf name", "/z/a.h", "/a/b.h", true},
    {"not the other way round", "/a/b.h", "/z/a.h", false},
    {"equal names are not before each other", "/a/a.h", "/b/a.h", false},
    {"bytes: capitals first", "/a/B.h", "/a/a.h", true},
    {"bytes from 0x80 up come after all others", "/a/z.h", "/a/\xc3\xa9.h", true},
    {"a name before none", "/a/a.h", nullptr, true},
    {"none is before no name", nullptr, "/a/a.h", false},
    {"none is not before none", nullptr, nullptr, false},
};

TEST(MatchEntryName, OrdersByFileName)
{
    for (const Order& row : kOrders) {
        const EntryRef a = Ref(row.a);
        const EntryRef b = Ref(row.b);
        EXPECT_EQ(MatchEntryName(&a, &b), row.before) << row.why;
    }
}

struct Files {
    const char* why;
    std::vector<const char*> paths;
    bool ambiguous;
};

const Files kFiles[] = {
    {"no match", {}, false},
    {"one", {"/a/util.h"}, false},
    {"two names", {"/a/util.h", "/b/view.h"}, false},
    {"twice the same file", {"/a/util.h", "/a/util.h"}, false},
    {"two files of one name", {"/a/util.h", "/b/util.h"}, true},
    {"far from each other", {"/a/util.h", "/a/a.h", "/a/z.h", "/b/util.h"}, true},
    {"among repetitions", {"/a/util.h", "/b/util.h", "/a/util.h"}, true},
    {"names nothing, twice", {nullptr, nullptr}, false},
    {"names nothing, beside a name", {nullptr, "/a/util.h"}, false},
    {"case counts", {"/a/util.h", "/b/Util.h"}, false},
};

TEST(FileNamesAreAmbiguous, IsTrueWhenDifferentFilesShareAName)
{
    for (const Files& row : kFiles) {
        std::vector<TagData> matches;
        for (const char* path : row.paths) {
            matches.emplace_back();
            matches.back().file = Ref(path);
        }
        EXPECT_EQ(FileNamesAreAmbiguous(matches), row.ambiguous) << row.why;
    }
}

} // namespace
