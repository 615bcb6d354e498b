// The roots that a face has open, and texts that are read before anybody asks about them.
#include "wren/projects/Projects.h"
#include "wren/projects/EarlyReader.h"

#include "symbols/Index.h"
#include "tests/support/Fifo.h"
#include "tests/support/StandInForCtags.h"
#include "tests/support/TempDirectory.h"

#include <gtest/gtest.h>

#include <csignal>
#include <filesystem>

namespace wren {

namespace {

class ProjectsTest : public testing::Test {
protected:
    ProjectsTest() : signalBefore(std::signal(SIGPIPE, SIG_IGN))
    {
        base::Result<tagging::Settings> found = symbols::IndexSettings();
        EXPECT_TRUE(found) << found.Failure().Message();
        options.tagging = *found;
        options.cache = temp / "cache";
        options.withSystem = false;
        tree.Write("outer/a.c", "int outerOnly;\n");
        tree.Write("outer/inner/b.c", "int innerFirst;\nint innerSecond;\n");
    }
    ~ProjectsTest() override { std::signal(SIGPIPE, signalBefore); }

    void Configure(bool withInner)
    {
        std::vector<Folder> folders = {{tree / "outer", true}};
        if (withInner)
            folders.push_back({tree / "outer/inner", true});
        projects.Configure(options, folders);
        for (const Projects::ProjectPointer& each : projects.All())
            EXPECT_TRUE(each->Refresh({}, never));
    }

    std::vector<std::string> RootsAround(const std::string& path)
    {
        std::vector<std::string> roots;
        for (const Projects::ProjectPointer& each : projects.Around(tree / path))
            roots.push_back(each->Root().substr(tree.Path().size() + 1));
        return roots;
    }

    void (*const signalBefore)(int);
    const TempDirectory temp;
    const TempDirectory& tree = temp;
    const base::CancelToken never;
    ProjectsOptions options;
    Projects projects{IndexListener{[](const std::string&, const std::function<void()>&) { return nullptr; },
                                    [](const std::string& text) { ADD_FAILURE() << text; }}};
};

using Roots = std::vector<std::string>;

} // namespace

TEST_F(ProjectsTest, AFileBelongsToTheInnermostFolderAndIsHeldByThoseAroundIt)
{
    Configure(true);
    EXPECT_EQ(RootsAround("outer/a.c"), Roots{"outer"});
    EXPECT_EQ(RootsAround("outer/inner/b.c"), (Roots{"outer/inner", "outer"}));
    EXPECT_EQ(RootsAround("outer/innermost.c"), Roots{"outer"});
}

TEST_F(ProjectsTest, CountsAFileOnce)
{
    Configure(false);
    EXPECT_EQ(projects.SizeOf(*projects.All()[0]).files, 2u);
    EXPECT_EQ(projects.SizeOf(*projects.All()[0]).symbols, 3u);
    Configure(true);
    EXPECT_EQ(projects.SizeOf(*projects.All()[0]).files, 1u);
    EXPECT_EQ(projects.SizeOf(*projects.All()[0]).symbols, 1u);
    EXPECT_EQ(projects.SizeOf(*projects.All()[1]).symbols, 2u);
}

namespace {

// A ctags that says which text it is given, and then works or hangs.
class EarlyReaderTest : public ProjectsTest {
protected:
    std::shared_ptr<Project> ProjectWithCtags(const std::string& works)
    {
        const std::string script = StandInForCtags("*) cat \"$name\" >" + asked.Path() + "; " + works + ";;\n");
        options.tagging.ctags.program = temp.Write("ctags", script);
        std::filesystem::permissions(options.tagging.ctags.program, std::filesystem::perms(0755));
        options.withIndex = false;
        projects.Configure(options, {{tree / "outer", false}});
        return projects.For(tree / "outer/a.c");
    }

    static OpenText TextOf(const std::string& text) { return {std::make_shared<const std::string>(text), {}}; }

    const Fifo asked;
};

} // namespace

TEST_F(EarlyReaderTest, ReadsATextThatNobodyHasAskedAbout)
{
    EarlyReader early;
    early.TextChanged(ProjectWithCtags("true"), tree / "outer/a.c", TextOf("int first;\n"));
    EXPECT_EQ(asked.ReadLine(::getpid()), "int first;");
    early.TextChanged(projects.All()[0], tree / "outer/a.c", TextOf("int second;\n"));
    EXPECT_EQ(asked.ReadLine(::getpid()), "int second;");
}

TEST_F(EarlyReaderTest, DoesNotReadAClosedText)
{
    EarlyReader early;
    const std::shared_ptr<Project> project = ProjectWithCtags("true");
    early.TextChanged(project, tree / "outer/a.c", {});
    early.TextChanged(project, tree / "outer/a.c", TextOf("int open;\n"));
    EXPECT_EQ(asked.ReadLine(::getpid()), "int open;");
}

TEST_F(EarlyReaderTest, EndsWhileCtagsHangs)
{
    options.tagging.ctags.timeLimit = 1000;
    EarlyReader early;
    early.TextChanged(ProjectWithCtags("sleep 1000"), tree / "outer/a.c", TextOf("int text;\n"));
    EXPECT_EQ(asked.ReadLine(::getpid()), "int text;");
    projects.Stop();
}

} // namespace wren
