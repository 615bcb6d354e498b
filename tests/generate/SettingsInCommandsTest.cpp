// The texts of the settings go into command lines as they stand: what they could have run, and what not. docs/guide.md
// says so to the users.
#include "generate/CreateTags.h"

#include "tests/generate/GenerateTest.h"
#include "tests/generate/RealShell.h"

namespace {

struct Text {
    const char* why;
    const char* setting;
    const char* text;
    bool runsLocally; // with the tags of a directory
    bool runsForSystem;
};

const Text kTexts[] = {
    // Suffixes stand in double quotes, in the commands for a directory and in the first one for the system.
    {"suffixes: a command in them", "DeclIndexSuffixes", "*.h$(pwned)", true, true},
    {"the older way of writing it", "DeclIndexSuffixes", "*.h`pwned`", true, true},
    {"the end of the quotes, and then anything", "DeclIndexSuffixes", "*.h\";pwned;\"", true, true},
    {"what 'find' can run by itself", "DeclIndexSuffixes", "*.cpp\"\t-exec\tpwned\t{}\t+\t-name\t\"*", true, true},
    {"but between blanks each word is a pattern", "DeclIndexSuffixes", "*.cpp\" -exec pwned {} + -name \"*", false,
     false},
    {"an operator in the quotes is text", "DeclIndexSuffixes", "*.h;pwned & pwned | pwned", false, false},
    {"so is a command in single quotes that were opened", "DeclIndexSuffixes", "\"'$(pwned)'\"", false, false},

    // Ignored macros stand there bare, in both commands for the system.
    {"ignored macros: another command", "DeclIgnoreStrings", "A;pwned;", false, true},
    {"one that runs beside it", "DeclIgnoreStrings", "A & wait; pwned;", false, true},
    {"one that reads the list", "DeclIgnoreStrings", "A | pwned |", false, true},
    {"one in backticks", "DeclIgnoreStrings", "A,`pwned`", false, true},
    {"one in quotes", "DeclIgnoreStrings", "\"$(pwned)\"", false, true},
    {"bare parentheses are escaped, which takes the command away", "DeclIgnoreStrings", "$(pwned)", false, false},
    {"and the subshell", "DeclIgnoreStrings", "A(pwned)", false, false},
    {"a comment hides the rest", "DeclIgnoreStrings", "A #;pwned", false, false},
    {"text in single quotes", "DeclIgnoreStrings", "'A;pwned;`pwned`'", false, false},
    {"an assignment where there is none", "DeclIgnoreStrings", "A=$pwned", false, false},

    // System directories stand there bare, in the first command for the system.
    {"system directories: another command", "DeclScanSystemDirectories", "/x;pwned;", false, true},
    {"one in backticks", "DeclScanSystemDirectories", "/x`pwned`", false, true},
    {"what 'find' can run by itself", "DeclScanSystemDirectories", "/bin -exec pwned {} + -o ", false, true},
    {"bare parentheses are escaped", "DeclScanSystemDirectories", "/x$(pwned)", false, false},

    // This one stands in no command.
    {"local subdirectories", "DeclLocalTagSubdirectories", "`pwned`", false, false},
};

class SettingsInCommands : public GenerateTest {
protected:
    bool RunsSomethingElse(const Requests::Commands& commands)
    {
        std::string trapped;
        for (const std::string& command : commands) {
            shell.Run(command, home.Path());
            trapped += shell.TakeTrapped();
        }
        EXPECT_TRUE(trapped.empty() || trapped.starts_with("pwned")) << trapped;
        return !trapped.empty();
    }

    RealShell shell;
};

TEST_F(SettingsInCommands, MayRunCommands)
{
    ::setenv("WREN_CTAGS", shell.MakeTagsProgram("ctags").c_str(), 1);
    for (const Text& each : kTexts) {
        const DefaultSettings untilTheNext;
        settings.Set("DeclScanSystemDirectories", (home / "src").c_str());
        settings.Set(each.setting, each.text);
        CreateTags(&host, false, true);
        EXPECT_EQ(RunsSomethingElse(requests.Take().at(0)), each.runsLocally) << each.why << ": " << each.text;
        CreateTags(&host, true, false);
        EXPECT_EQ(RunsSomethingElse(requests.Take().at(0)), each.runsForSystem) << each.why << ": " << each.text;
    }
}

// A setting can also have files written: a redirection is no command, and the traps do not see it.
TEST_F(SettingsInCommands, MayRedirectOutput)
{
    ::setenv("WREN_CTAGS", shell.MakeTagsProgram("ctags").c_str(), 1);
    settings.Set("DeclScanSystemDirectories", (home / "src").c_str());
    settings.Set("DeclIgnoreStrings", "A >out");
    CreateTags(&host, true, false);
    EXPECT_FALSE(RunsSomethingElse(requests.Take().at(0)));
    EXPECT_FALSE(shell.LeftNothing());
}

// What users have them for: several directories, patterns, and what the shell makes of them.
TEST_F(SettingsInCommands, AreExpandedByTheShell)
{
    ::setenv("WREN_CTAGS", shell.MakeTagsProgram("ctags").c_str(), 1);
    home.Write("one/a.hh", "");
    home.Write("two/b.hh", "");
    settings.Set("DeclScanSystemDirectories", "~/one ~/t*");
    settings.Set("DeclIndexSuffixes", "*.hh");
    settings.Set("DeclIgnoreStrings", "\"A B\",C=int");
    CreateTags(&host, true, false);
    EXPECT_FALSE(RunsSomethingElse(requests.Take().at(0)));
    const RealShell::Call call = shell.TakeCall();
    EXPECT_EQ(call.input, home / "one/a.hh\n" + (home / "two/b.hh\n"));
    EXPECT_EQ(call.arguments.at(1), "A B,C=int");
}

} // namespace
