#include "symbols/Workspace.h"

#include "tests/symbols/IndexStory.h"

#include <gtest/gtest.h>

#include <thread>

namespace symbols {

namespace {

namespace fs = std::filesystem;

WorkspaceOptions OptionsOf(const IndexStory& story)
{
    return {.root = story.top, .cache = story.Cache(), .withSystem = false, .tagging = TestSettings()};
}

} // namespace

TEST(Workspace, HasAStateBeforeThereIsAnIndex)
{
    const IndexStory story;
    const Workspace workspace(OptionsOf(story));
    ASSERT_NE(workspace.Current(), nullptr);
    EXPECT_EQ(workspace.Current()->Totals().files, 0u);
}

TEST(Workspace, ShowsUpdatesOfItsIndex)
{
    IndexStory story;
    story.Write("a.c", "int a;\n");
    Workspace workspace(OptionsOf(story));
    story.Update();
    const SnapshotPointer before = workspace.Current();
    EXPECT_EQ(AnswerFor(before, "a"), "a: a.c:1 in a.c");
    EXPECT_EQ(workspace.Current(), before) << "nothing has changed";
    story.Write("b.c", "int b;\n");
    ASSERT_TRUE(workspace.Project()->Update({}, story.cancel));
    EXPECT_EQ(AnswerFor(workspace.Current(), "b"), "b: b.c:1 in b.c");
}

TEST(Workspace, PrefersOpenTextsToFiles)
{
    IndexStory story;
    story.Write("a.c", "int a;\n");
    story.Update();
    Workspace workspace(OptionsOf(story));
    ASSERT_TRUE(workspace.SetOpenText(story.Path("a.c"), "\nint changed;\n"));
    ASSERT_TRUE(workspace.SetOpenText(story.Path("new.c"), "int fresh;\n"));
    EXPECT_EQ(AnswerFor(workspace.Current(), "a"), "a: in");
    EXPECT_EQ(AnswerFor(workspace.Current(), "changed"), "changed: a.c:2 in a.c");
    EXPECT_EQ(AnswerFor(workspace.Current(), "fresh"), "fresh: new.c:1 in new.c");
    EXPECT_EQ(workspace.Read("a.c"), "\nint changed;\n");
    workspace.CloseText(story.Path("a.c"));
    workspace.CloseText(story.Path("new.c"));
    workspace.CloseText(story.Path("never opened.c"));
    EXPECT_EQ(AnswerFor(workspace.Current(), "a"), "a: a.c:1 in a.c");
    EXPECT_EQ(AnswerFor(workspace.Current(), "fresh"), "fresh: in");
    EXPECT_EQ(workspace.Read("a.c"), "int a;\n");
}

TEST(Workspace, KeepsATextThatCannotBeParsed)
{
    IndexStory story;
    story.Write("a.c", "int a;\n");
    story.Update();
    WorkspaceOptions options = OptionsOf(story);
    options.tagging.ctags.program = "/bin/false";
    Workspace workspace(options);
    EXPECT_FALSE(workspace.SetOpenText(story.Path("a.c"), "int changed;\n"));
    EXPECT_EQ(workspace.Read("a.c"), "int changed;\n");
    EXPECT_EQ(workspace.Current()->ByName("a", {}).found.size(), 0u);
}

TEST(Workspace, ConvertsPaths)
{
    IndexStory story;
    story.Write("x/a.c", "int a;\n");
    fs::create_symlink("x/a.c", story.Path("link.c"));
    fs::create_directory_symlink(story.top, story.tree / "other");
    story.Update();
    const Workspace workspace(OptionsOf(story));
    EXPECT_EQ(workspace.PathInIndex(story.Path("x/a.c")), "x/a.c");
    EXPECT_EQ(workspace.PathInIndex(story.Path("new.c")), "new.c");
    EXPECT_EQ(workspace.PathInIndex(story.Path("link.c")), "x/a.c") << "the file is indexed by its real path";
    EXPECT_EQ(workspace.PathInIndex(story.tree / "other/x/a.c"), "x/a.c");
    EXPECT_EQ(workspace.PathInIndex("/usr/include/stdio.h"), "/usr/include/stdio.h");
    EXPECT_EQ(workspace.PathInIndex(story.top + "-sibling/a.c"), story.top + "-sibling/a.c");
    File file;
    file.path = "x/a.c";
    EXPECT_EQ(workspace.AbsolutePath(file), story.Path("x/a.c"));
    file.path = "/usr/include/stdio.h";
    EXPECT_EQ(workspace.AbsolutePath(file), "/usr/include/stdio.h");
}

TEST(Workspace, ReadsFilesOfTheProjectAndOthers)
{
    IndexStory story;
    story.Write("a.c", "int a;\n");
    const Workspace workspace(OptionsOf(story));
    EXPECT_EQ(workspace.Read("a.c"), "int a;\n");
    EXPECT_EQ(workspace.Read(story.Path("a.c")), "int a;\n");
    EXPECT_EQ(workspace.Read("none.c"), std::nullopt);
    EXPECT_EQ(workspace.Read("/dev/zero"), std::nullopt);
}

TEST(Workspace, WithoutAProjectHasTheOpenTexts)
{
    IndexStory story;
    story.Write("a.c", "int a;\n");
    WorkspaceOptions options = OptionsOf(story);
    options.withProject = false;
    Workspace workspace(options);
    EXPECT_EQ(workspace.Project(), nullptr);
    EXPECT_EQ(workspace.Current()->Totals().files, 0u);
    ASSERT_TRUE(workspace.SetOpenText(story.Path("x/b.c"), "int b;\n"));
    EXPECT_EQ(AnswerFor(workspace.Current(), "b"), "b: x/b.c:1 in x/b.c");
    EXPECT_EQ(workspace.Read("a.c"), "int a;\n");
    EXPECT_FALSE(fs::exists(story.Cache())) << "nothing is indexed";
}

TEST(Workspace, WithoutARootHasAbsolutePaths)
{
    IndexStory story;
    const std::string path = story.Write("a.c", "int a;\n");
    Workspace workspace({.root = "", .cache = story.Cache(), .withSystem = false, .tagging = TestSettings()});
    EXPECT_EQ(workspace.Project(), nullptr);
    EXPECT_EQ(workspace.PathInIndex(path), path);
    ASSERT_TRUE(workspace.SetOpenText(path, "int changed;\n"));
    EXPECT_EQ(AnswerFor(workspace.Current(), "changed"), "changed: " + path + ":1 in " + path);
    EXPECT_EQ(workspace.Read(path), "int changed;\n");
    workspace.CloseText(path);
    EXPECT_EQ(AnswerFor(workspace.Current(), "changed"), "changed: in");
    EXPECT_EQ(workspace.Read(path), "int a;\n");
    EXPECT_EQ(workspace.Read("a.c"), std::nullopt) << "not the file in the current directory";
}

TEST(Workspace, KeepsTextsWithoutAFileApart)
{
    IndexStory story;
    story.Write("a.c", "int a;\n");
    story.Update();
    Workspace workspace(OptionsOf(story));
    const std::string untitled = "untitled:Untitled-1";
    ASSERT_TRUE(workspace.SetOpenText(untitled, "class Fresh { int a; };\n", tagging::Language::Cplusplus));
    EXPECT_EQ(AnswerFor(workspace.CurrentFor(untitled), "Fresh"),
              "Fresh: untitled:Untitled-1:1 in untitled:Untitled-1");
    EXPECT_EQ(AnswerFor(workspace.CurrentFor(untitled), "a"), "a: untitled:Untitled-1:1 in untitled:Untitled-1");
    EXPECT_EQ(AnswerFor(workspace.CurrentFor("a.c"), "a"), "a: a.c:1 in a.c");
    EXPECT_EQ(AnswerFor(workspace.CurrentFor(story.Path("a.c")), "Fresh"), "Fresh: in");
    EXPECT_EQ(workspace.PathInIndex(untitled), untitled);
    File file;
    file.path = untitled;
    EXPECT_EQ(workspace.AbsolutePath(file), untitled);
    EXPECT_EQ(workspace.Read(untitled), "class Fresh { int a; };\n");
    workspace.CloseText(untitled);
    EXPECT_EQ(workspace.Read(untitled), std::nullopt);
}

TEST(Workspace, BelievesTheEditorAboutTheLanguageExceptForHeaders)
{
    struct Case {
        const char* why;
        const char* path;
        const char* text;
        std::optional<tagging::Language> given;
        tagging::Language language;
    };
    using tagging::Language;
    const Case cases[] = {
        {"the name says it", "a.c", "int class;\n", std::nullopt, Language::C},
        {"the editor knows better than the name", "b.c", "class A {};\n", Language::Cplusplus, Language::Cplusplus},
        {"a name that says nothing", "c.x", "int class;\n", Language::C, Language::C},
        {"a name of C++ that the editor reads as C", "d.hpp", "int class;\n", Language::C, Language::C},
        {"Objective-C++ as told", "e.m", "@class A;\n", Language::ObjectiveCplusplus, Language::ObjectiveCplusplus},
        {"a header is what it contains", "f.h", "class A { public: int a; };\n", Language::C, Language::Cplusplus},
        {"so is one of C", "g.h", "int a;\n", Language::Cplusplus, Language::C},
    };
    IndexStory story;
    Workspace workspace(OptionsOf(story));
    for (const Case& each : cases) {
        ASSERT_TRUE(workspace.SetOpenText(story.Path(each.path), each.text, each.given));
        const SnapshotPointer current = workspace.Current();
        const std::optional<FileNumber> file = current->FindFile(each.path);
        ASSERT_TRUE(file) << each.path;
        EXPECT_EQ(current->FileOf(*file).language, each.language) << each.why;
    }
}

// For ThreadSanitizer.
TEST(Workspace, IsUsedByManyThreads)
{
    IndexStory story;
    story.Write("a.c", "int a;\n");
    Workspace workspace(OptionsOf(story));
    std::vector<std::thread> threads;
    threads.emplace_back([&] {
        for (int i = 0; i < 5; ++i) {
            story.Write("b.c", "int b" + std::to_string(i) + ";\n");
            EXPECT_TRUE(workspace.Project()->Update({}, story.cancel));
        }
    });
    threads.emplace_back([&] {
        for (int i = 0; i < 20; ++i)
            EXPECT_TRUE(workspace.SetOpenText(story.Path("a.c"), "int open" + std::to_string(i) + ";\n"));
    });
    for (int reader = 0; reader < 2; ++reader)
        threads.emplace_back([&] {
            for (int i = 0; i < 50; ++i) {
                workspace.Current()->ByPrefix("o", {});
                workspace.Read(workspace.PathInIndex(story.Path("a.c")));
            }
        });
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_EQ(AnswerFor(workspace.Current(), "open19"), "open19: a.c:1 in a.c");
    EXPECT_EQ(AnswerFor(workspace.Current(), "b4"), "b4: b.c:1 in b.c");
}

} // namespace symbols
