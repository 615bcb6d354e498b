#include "wren/desktop/symbols/FileNames.h"

#include "symbols/store/Combination.h"
#include "tests/support/RandomSources.h"

#include <gtest/gtest.h>

using wren::FileNames;

namespace {

symbols::SnapshotPointer IndexOf(const std::vector<std::string>& paths)
{
    symbols::SnapshotPointer snapshot;
    const auto writer =
        symbols::WriteInMemory(nullptr, [&](symbols::SnapshotPointer made) { snapshot = std::move(made); });
    for (const std::string& path : paths)
        writer->Put(path, {}, SourceOf({SymbolNamed("f", 1)}));
    EXPECT_TRUE(writer->Commit());
    return snapshot;
}

} // namespace

TEST(FileNames, ANameIsExaminedOnceThoughFilesChange)
{
    FileNames names;
    names.Read(*IndexOf({"a.c", "lib/b.c"}));
    EXPECT_EQ(names.Examined(), 2u);
    names.Read(*IndexOf({"a.c", "lib/b.c", "lib/c.c"}));
    EXPECT_EQ(names.Examined(), 3u);
    names.Read(*IndexOf({"a.c"}));
    EXPECT_EQ(names.Examined(), 3u);
}

TEST(FileNames, NamesThatAreGoneAreForgottenWhenTheyAreMany)
{
    FileNames names;
    names.Read(*IndexOf({"a.c", "b.c", "c.c", "d.c"}));
    names.Read(*IndexOf({"a.c"}));
    names.Read(*IndexOf({"a.c", "e.c"}));
    EXPECT_EQ(names.Examined(), 6u) << "both are examined: all had been forgotten";
}

TEST(FileNames, TheSystemsFilesAreNoneOfTheProject)
{
    FileNames names;
    names.Read(*symbols::Combined(IndexOf({"a.c"}), IndexOf({"usr/include/b.h", "usr/include/c.h"}), "/", {}));
    EXPECT_EQ(names.Examined(), 1u);
}
