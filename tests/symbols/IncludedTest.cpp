// What a workspace knows of files that its texts include, before they are indexed.

#include "symbols/Workspace.h"

#include "tests/symbols/IndexStory.h"

#include <gtest/gtest.h>

namespace symbols {

namespace {

class Included : public testing::Test {
protected:
    WorkspaceOptions Options() const
    {
        return {.root = story.top, .cache = story.Cache(), .withSystem = false, .tagging = TestSettings()};
    }

    IndexStory story;
    base::CancelToken cancel;
};

} // namespace

TEST_F(Included, IsWhatATextNamesBesideItAboveItAndInIncludeDirectories)
{
    story.Write("src/deep/near.h", "int near;\n");
    story.Write("src/above.h", "int above;\n#include <x/far.h>\n");
    story.Write("include/x/far.h", "int far;\n");
    story.Write("src/unrelated.h", "int unrelated;\n");
    Workspace workspace(Options());
    const std::string path = story.Path("src/deep/a.c");
    ASSERT_TRUE(workspace.SetOpenText(path, "#include \"near.h\"\n#include \"above.h\"\n#include \"missing.h\"\n"));
    EXPECT_TRUE(workspace.LoadIncluded(path, cancel));
    const SnapshotPointer current = workspace.Current();
    EXPECT_EQ(AnswerFor(current, "near"), "near: src/deep/near.h:1 in src/deep/near.h");
    EXPECT_EQ(AnswerFor(current, "above"), "above: src/above.h:1 in src/above.h");
    EXPECT_EQ(AnswerFor(current, "far"), "far: include/x/far.h:1 in include/x/far.h");
    EXPECT_EQ(AnswerFor(current, "unrelated"), "unrelated: in");
    EXPECT_FALSE(workspace.LoadIncluded(path, cancel)) << "nothing has changed";
    EXPECT_EQ(workspace.Current(), current);
}

TEST_F(Included, IsReadAgainWhenItHasChangedAndForgottenWhenItIsGone)
{
    story.Write("a.h", "int before;\n");
    story.Write("b.h", "int b;\n");
    Workspace workspace(Options());
    const std::string path = story.Path("a.c");
    ASSERT_TRUE(workspace.SetOpenText(path, "#include \"a.h\"\n#include \"b.h\"\n"));
    ASSERT_TRUE(workspace.LoadIncluded(path, cancel));
    story.Write("a.h", "int afterwards;\n");
    story.Remove("b.h");
    EXPECT_TRUE(workspace.LoadIncluded(path, cancel));
    EXPECT_EQ(AnswerFor(workspace.Current(), "before"), "before: in");
    EXPECT_EQ(AnswerFor(workspace.Current(), "afterwards"), "afterwards: a.h:1 in a.h");
    EXPECT_EQ(AnswerFor(workspace.Current(), "b"), "b: in");
}

TEST_F(Included, GivesWayToTheIndex)
{
    story.Write("a.h", "int a;\n");
    const std::string path = story.Write("a.c", "#include \"a.h\"\n");
    Workspace workspace(Options());
    EXPECT_TRUE(workspace.LoadIncluded(path, cancel)) << "a file that is not open is read itself, too";
    EXPECT_EQ(AnswerFor(workspace.Current(), "a"), "a: a.h:1 in a.h");
    ASSERT_TRUE(workspace.Project()->Update({}, cancel));
    EXPECT_EQ(AnswerFor(workspace.Current(), "a"), "a: a.h:1 in a.h");
    EXPECT_EQ(workspace.Current()->Totals().files, 2u);
    story.Write("a.h", "int changed;\n");
    EXPECT_FALSE(workspace.LoadIncluded(path, cancel)) << "the index has everything";
}

TEST_F(Included, ReachesTextsOutsideOfTheRoot)
{
    story.Write("a.c", "int a;\n#include \"../other/deep.h\"\n");
    story.Update();
    Workspace workspace(Options());
    const std::string outside = story.tree / "other";
    std::filesystem::create_directories(outside);
    std::ofstream(outside + "/deep.h") << "int deep;\n";
    std::ofstream(outside + "/o.h") << "int o;\n#include \"o.h\"\n#include \"../tree/a.c\"\n";
    ASSERT_TRUE(workspace.SetOpenText(outside + "/o.c", "#include \"o.h\"\n"));
    EXPECT_TRUE(workspace.LoadIncluded(outside + "/o.c", cancel));
    EXPECT_EQ(AnswerFor(workspace.Current(), "o"), "o: " + outside + "/o.h:1 in " + outside + "/o.h");
    EXPECT_EQ(AnswerFor(workspace.Current(), "a"), "a: a.c:1 in a.c");
    EXPECT_EQ(workspace.Current()->ByName("deep", {}).found.size(), 1u) << "through a file that the index has";
}

TEST_F(Included, EndsAfterTwoHundredFiles)
{
    for (int i = 0; i < 250; i++)
        story.Write("h" + std::to_string(i) + ".h",
                    "int n" + std::to_string(i) + ";\n#include \"h" + std::to_string(i + 1) + ".h\"\n");
    Workspace workspace(Options());
    const std::string path = story.Path("a.c");
    ASSERT_TRUE(workspace.SetOpenText(path, "#include \"h0.h\"\n"));
    EXPECT_TRUE(workspace.LoadIncluded(path, cancel));
    EXPECT_LE(workspace.Current()->Totals().files, 201u);
    EXPECT_TRUE(workspace.LoadIncluded(path, cancel)) << "reads on";
    EXPECT_EQ(AnswerFor(workspace.Current(), "n0"), "n0: h0.h:1 in h0.h");
}

TEST_F(Included, StopsWhenItIsCancelled)
{
    story.Write("a.h", "int a;\n");
    Workspace workspace(Options());
    ASSERT_TRUE(workspace.SetOpenText(story.Path("a.c"), "#include \"a.h\"\n"));
    cancel.Cancel();
    EXPECT_FALSE(workspace.LoadIncluded(story.Path("a.c"), cancel));
    EXPECT_EQ(AnswerFor(workspace.Current(), "a"), "a: in");
}

TEST_F(Included, LeavesAloneWhatIsNoFile)
{
    std::filesystem::create_directories(story.Path("a.h"));
    ASSERT_EQ(::mkfifo(story.Path("b.h").c_str(), 0600), 0);
    Workspace workspace(Options());
    ASSERT_TRUE(workspace.SetOpenText(story.Path("a.c"),
                                      "#include \"a.h\"\n#include \"b.h\"\n#include \"/dev/zero\"\n#include \"\"\n"));
    EXPECT_FALSE(workspace.LoadIncluded(story.Path("a.c"), cancel));
}

TEST_F(Included, FindsHeadersOfTheSystemWhenWanted)
{
    WorkspaceOptions options = Options();
    options.withSystem = true;
    Workspace workspace(options);
    ASSERT_TRUE(workspace.SetOpenText(story.Path("a.c"), "#include <stddef.h>\n#include <errno.h>\n"));
    EXPECT_TRUE(workspace.LoadIncluded(story.Path("a.c"), cancel));
    const SnapshotPointer current = workspace.Current();
    const std::optional<FileNumber> header = current->FindFile("/usr/include/errno.h");
    ASSERT_TRUE(header);
    EXPECT_TRUE(current->FileOf(*header).isSystem);
}

} // namespace symbols
