// Answers before the checks of what they come from have ended.
#include "symbols/Index.h"
#include "symbols/store/Store.h"
#include "tests/cli/symbols/SymbolsFixture.h"

using ::testing::HasSubstr;
using ::testing::Not;

namespace {

class StaleAnswers : public SymbolCommands {
protected:
    // An index of a few headers, which the program takes for that of the system.
    StaleAnswers()
    {
        symbols::IndexOptions options;
        options.root = "/";
        options.content = symbols::IndexOptions::Content::SystemHeaders;
        options.cache = tree / "cache/declaration/index";
        tree.Write("include/system.h", "int FromSystem(void);\n");
        options.directories = {tree / "include"};
        options.tagging = *symbols::IndexSettings();
        symbols::Index system(options);
        EXPECT_TRUE(system.Update({}, never));
        directory = system.Directory();
    }

    const base::CancelToken never;
    std::string directory; // of the system's index
};

} // namespace

// While another process updates that index, its check cannot end.
TEST_F(StaleAnswers, AreReportedWhenTheCheckOfTheSystemsHeadersTakesLonger)
{
    tree.Write("project/use.c", "int n = FromSystem();\n");
    Run({"index"});
    symbols::Store store(directory);
    const auto writer = store.Write(*store.Header(), false, never);
    ASSERT_TRUE(writer);
    const ProgramRun run = Run({"definition", "use.c:1:10"});
    EXPECT_EQ(run.status, 0);
    EXPECT_THAT(run.output, HasSubstr("system.h:1"));
    EXPECT_THAT(run.errors, HasSubstr("headers of the system takes longer, so answers may be stale"));
    EXPECT_THAT(Run({"definition", "main.cpp:8:12", "--no-system"}).errors, Not(HasSubstr("of the system")));
}
