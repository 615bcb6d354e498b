#include "generate/CreateTags.h"

#include "generate/TagTemplates.h"
#include "tests/generate/GenerateTest.h"
#include "vetch/storage/BEntry.h"

#include <gmock/gmock.h>

using ::testing::ElementsAre;

namespace {

class HelpCreateTagsTest : public GenerateTest {
protected:
    // What the Worksheet got since the last time, and that nothing was run and nothing else asked of the host.
    std::vector<std::string> Pasted()
    {
        std::vector<std::string> texts;
        for (const std::string& line : std::exchange(host.log, {})) {
            const std::string before = "AppendToWorksheet ";
            const std::string flags = " 1 1 1";
            EXPECT_TRUE(line.starts_with(before) && line.ends_with(flags)) << line;
            texts.push_back(line.substr(before.size(), line.size() - before.size() - flags.size()));
        }
        EXPECT_THAT(requests.Take(), ElementsAre());
        return texts;
    }
    std::string InstallHint() const
    {
        return "\n# cplustags are not installed on your system. Execute the following line to install them:\n"
               "sudo cp " +
               BundlesProgram() + " /usr/bin/cplustags ; sudo chmod +x /usr/bin/cplustags";
    }
    std::string Installed(std::string command) const
    {
        return command.replace(command.find(BundlesProgram()), BundlesProgram().size(), "cplustags");
    }
};

TEST_F(HelpCreateTagsTest, PastesTheHintOnceAndThenEachCommand)
{
    HelpCreateTags(&host, true, true);
    EXPECT_THAT(Pasted(), ElementsAre(InstallHint(), SystemCommand(kTags), CompilerCommand(kTags),
                                      LocalCommand(home / "src", "./tags")));
}

TEST_F(HelpCreateTagsTest, PastesTheRequestedCommands)
{
    HelpCreateTags(&host, false, true);
    EXPECT_THAT(Pasted(), ElementsAre(InstallHint(), LocalCommand(home / "src", "./tags")));
    HelpCreateTags(&host, true, false);
    EXPECT_THAT(Pasted(), ElementsAre(InstallHint(), SystemCommand(kTags), CompilerCommand(kTags)))
        << "a new request hints again";
    HelpCreateTags(&host, false, false);
    EXPECT_THAT(Pasted(), ElementsAre());
}

TEST_F(HelpCreateTagsTest, LeavesOutTheCompilersHeadersWithoutUsrInclude)
{
    settings.Set("DeclScanSystemDirectories", "/headers");
    program.Is({true});
    HelpCreateTags(&host, true, false);
    EXPECT_THAT(Pasted(), ElementsAre("\n# Execute the following line to generate tags for the system headers:\n"
                                      "find /headers " +
                                      kWildcards + "  | cplustags -I " + kIgnoreStringsDefault +
                                      " --c-kinds=+p --excmd=number -f ~/Library/Caches/SystemHeaderTags -L - "));
}

TEST_F(HelpCreateTagsTest, NamesAnInstalledProgramWithoutItsPath)
{
    program.Is({true});
    HelpCreateTags(&host, true, true);
    EXPECT_THAT(Pasted(), ElementsAre(Installed(SystemCommand(kTags)), Installed(CompilerCommand(kTags)),
                                      Installed(LocalCommand(home / "src", "./tags"))));
    EXPECT_EQ(program.looks, 2) << "once a command: the hint is not thought of";
}

TEST_F(HelpCreateTagsTest, LooksASecondTimeBeforeItHints)
{
    program.Is({false, true});
    HelpCreateTags(&host, false, true);
    EXPECT_THAT(Pasted(), ElementsAre(LocalCommand(home / "src", "./tags")))
        << "installed between the two looks: no hint, but the command was decided by the first one";
    EXPECT_EQ(program.looks, 2);
}

// The request hints with its first command or not at all: here the program vanishes after that.
TEST_F(HelpCreateTagsTest, ForgetsTheHintEvenWhenThereWasNoneToPaste)
{
    program.Is({true, false});
    HelpCreateTags(&host, true, true);
    EXPECT_THAT(Pasted(), ElementsAre(Installed(SystemCommand(kTags)), Installed(CompilerCommand(kTags)),
                                      LocalCommand(home / "src", "./tags")));

    bool hint = true;
    program.Is({true});
    HelpCreateTags(&host, BEntry("/src"), kGenerateLocalCtags, nullptr, hint);
    EXPECT_FALSE(hint);
    EXPECT_EQ(Pasted().size(), 1u);
}

TEST_F(HelpCreateTagsTest, DoesNotHintWhenItMayNot)
{
    bool hint = false;
    HelpCreateTags(&host, BEntry("/src"), kGenerateLocalCtags, kIncludeSpecificCompiler, hint);
    EXPECT_FALSE(hint);
    EXPECT_THAT(Pasted(), ElementsAre(LocalCommand("/src", "./tags"), CompilerCommand(kTags)));
    EXPECT_EQ(program.looks, 1);
}

TEST_F(HelpCreateTagsTest, HintsAtTheBundlesProgramWhateverTheEnvironmentNames)
{
    ::setenv("WREN_CTAGS", home.Path().c_str(), 1);
    HelpCreateTags(&host, false, true);
    const std::vector<std::string> pasted = Pasted();
    ASSERT_EQ(pasted.size(), 2u);
    EXPECT_EQ(pasted[0], InstallHint());
    EXPECT_THAT(pasted[1], testing::HasSubstr("| " + home.Path() + " --c-kinds"));
}

TEST_F(HelpCreateTagsTest, UsesTheWorksheetsDirectoryForTheWorksheet)
{
    program.Is({true});
    host.worksheet = true;
    host.worksheetDirectory = "/work sheets";
    HelpCreateTags(&host, false, true);
    EXPECT_THAT(Pasted(), ElementsAre(Installed(LocalCommand("/work\\ sheets", "./tags"))))
        << "its own directory, which is that of the shell";
}

} // namespace
