#include "symbols/update/Walk.h"

#include "tests/support/TempDirectory.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace symbols {

namespace {

using testing::ElementsAre;

std::vector<std::string> PathsIn(const std::string& root)
{
    const base::CancelToken cancel;
    const base::Result<Walked> walked = Walk({root, {root}}, cancel);
    std::vector<std::string> paths;
    if (walked)
        for (const FoundFile& file : walked->files)
            paths.push_back(file.path);
    else
        paths.push_back(walked.Failure().Message());
    return paths;
}

} // namespace

TEST(Walk, FindsSourcesOfTheFamilyInByteOrder)
{
    const TempDirectory tree;
    for (const char* name : {"b/x.cpp", "a.h", "b.c", "read.me", "b-x.mm", "Makefile", "b/y.tpp", ".c"})
        tree.Write(name, "");
    EXPECT_THAT(PathsIn(tree.Path()), ElementsAre("a.h", "b-x.mm", "b.c", "b/x.cpp", "b/y.tpp"));
}

} // namespace symbols
