#include "base/FindProgram.h"

#include "tests/support/Environment.h"
#include "tests/support/TempDirectory.h"

#include <filesystem>
#include <gtest/gtest.h>

namespace base {

TEST(FindProgram, LooksInTheSearchPathButNotInTheCurrentDirectory)
{
    const TempDirectory tree;
    for (const char* program : {"bin/tool", "here/tool"}) {
        tree.Write(program, "#!/bin/sh\n");
        std::filesystem::permissions(tree / program, std::filesystem::perms::owner_all);
    }
    tree.Write("first/tool", "not a program");
    const std::string here = tree / "here";
    SetVariable("PATH", (":" + (tree / "first") + ":" + (tree / "bin") + ":").c_str());
    EXPECT_EQ(FindProgram("tool", here), tree / "bin/tool");
    EXPECT_EQ(FindProgram("./tool", here), tree / "here/tool");
    EXPECT_EQ(FindProgram("other", here), std::nullopt);
    SetVariable("PATH", ":");
    EXPECT_EQ(FindProgram("tool", here), std::nullopt);
}

} // namespace base
