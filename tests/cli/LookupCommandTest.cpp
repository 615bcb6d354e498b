// Runs the program as a user does.
#include "tests/support/RunProgram.h"
#include "tests/support/ShellWord.h"
#include "tests/support/SparseFile.h"
#include "tests/support/TempDirectory.h"

#include <algorithm>
#include <filesystem>
#include <gtest/gtest.h>
#include <map>
#include <sys/stat.h>

namespace {

// A small source tree with its tags and its own home.
class LookupCommand : public ::testing::Test {
protected:
    LookupCommand()
    {
        tree.Write("src/shape.h", "struct Shape {\n    int Area();\n};\nint Area(int side);\n");
        tree.Write("src/shape.cpp", "#include \"shape.h\"\n\nint Area(int side)\n{\n    return side;\n}\n");
        tree.Write("src/one.c", "int only;\n\n\n  +  \n");
        tree.Write("tags", "Area\tsrc/shape.cpp\t3;\"\tf\n"
                           "Area\tsrc/shape.h\t2;\"\tp\tstruct:Shape\n"
                           "Area\tsrc/shape.h\t4;\"\tp\n"
                           "Shape\tsrc/shape.h\t1;\"\ts\n"
                           "only\tsrc/one.c\t1;\"\tv\n"
                           "operator==\tsrc/shape.cpp\t5;\"\tf\n"
                           "putBook:onLevel:\tsrc/one.c\t2;\"\tm\n");
        tree.Write("home/.keep", "");
    }

    ProgramRun Run(std::vector<std::string> words, const std::map<std::string, std::string>& changes = {})
    {
        std::vector<std::string> command{WREN_PROGRAM, "lookup", "--home", tree / "home"};
        command.insert(command.end(), words.begin(), words.end());
        return RunProgram(command, tree.Path(), changes);
    }

    // A printed match.
    std::string At(const std::string& file, int line, const std::string& item) const
    {
        return tree / file + ":" + std::to_string(line) + ": " + item + "\n";
    }

    TempDirectory tree;
};

} // namespace

TEST_F(LookupCommand, PrintsEveryMatchInTheOrderOfTheList)
{
    const ProgramRun run = Run({"src/shape.cpp:3:5"});
    EXPECT_EQ(run.status, 0) << run.errors;
    EXPECT_EQ(run.output, At("src/shape.cpp", 3, "Area - shape.cpp") + At("src/shape.h", 2, "Shape::Area - shape.h") +
                              At("src/shape.h", 4, "Area - shape.h"));
    EXPECT_EQ(run.errors, "");
}

TEST_F(LookupCommand, PrintsTheOnlyMatchAsTheListWouldShowIt)
{
    EXPECT_EQ(Run({"src/one.c:1:5"}).output, At("src/one.c", 1, "only - one.c"));
}

TEST_F(LookupCommand, TellsDeclarationsFromDefinitions)
{
    EXPECT_EQ(Run({"src/shape.cpp:3:5", "--definition"}).output, At("src/shape.cpp", 3, "Area - shape.cpp"));
    EXPECT_EQ(Run({"src/shape.cpp:3:5", "--declaration"}).output,
              At("src/shape.h", 2, "Shape::Area - shape.h") + At("src/shape.h", 4, "Area - shape.h"));
    EXPECT_EQ(Run({"src/shape.cpp:3:5", "--declaration", "--definition"}).status, 2);
}

TEST_F(LookupCommand, TakesTheFirstIdentifierOfALineWithoutAColumn)
{
    EXPECT_EQ(Run({"src/shape.h:1"}).status, 1) << "struct is no tag";
    EXPECT_EQ(Run({"--symbol", "Shape"}).output, At("src/shape.h", 1, "struct Shape - shape.h"));
}

TEST_F(LookupCommand, LooksUpNamesSelectorsAndOperators)
{
    EXPECT_EQ(Run({"--symbol", "Shape::Area"}).output, At("src/shape.h", 2, "Shape::Area - shape.h"));
    EXPECT_EQ(Run({"--symbol", "putBook:"}).output, At("src/one.c", 2, "putBook:onLevel: - one.c"));
    EXPECT_EQ(Run({"--symbol", "operator=="}).output, At("src/shape.cpp", 5, "operator== - shape.cpp"));
    const ProgramRun filtered = Run({"--symbol", "operator==", "--definition"});
    EXPECT_EQ(filtered.status, 2);
    EXPECT_NE(filtered.errors.find("operator=="), std::string::npos);
}

TEST_F(LookupCommand, LooksUpANameInAnotherDirectory)
{
    const ProgramRun run =
        RunProgram({WREN_PROGRAM, "lookup", "--symbol", "only", "--in", tree / "src", "--home", tree / "home"}, "/");
    EXPECT_EQ(run.output, At("src/one.c", 1, "only - one.c")) << run.errors;
    EXPECT_EQ(Run({"--symbol", "only", "--in", "nowhere"}).status, 2);
}

TEST_F(LookupCommand, SaysWhyNothingWasFound)
{
    const ProgramRun name = Run({"--symbol", "Circle"});
    EXPECT_EQ(name.status, 1);
    EXPECT_EQ(name.output, "");
    EXPECT_EQ(name.errors, "wren: nothing in the tags files matches \"Circle\"\n");
    const ProgramRun blank = Run({"src/one.c:4:1"});
    EXPECT_EQ(blank.status, 1);
    EXPECT_EQ(blank.errors, "wren: there is no symbol at src/one.c:4:1\n");
}

TEST_F(LookupCommand, SuggestsMakingTagsWhenThereAreNone)
{
    const TempDirectory bare;
    bare.Write("a.c", "int a;\n");
    const ProgramRun run = RunProgram({WREN_PROGRAM, "lookup", bare / "a.c:1:5", "--home", tree / "home"}, bare.Path());
    EXPECT_EQ(run.status, 3);
    EXPECT_NE(run.errors.find("wren tags " + bare.Path() + "\n"), std::string::npos) << run.errors;
    EXPECT_NE(run.errors.find("wren tags --system"), std::string::npos) << run.errors;
    EXPECT_EQ(run.output, "");
}

TEST_F(LookupCommand, UsesTheSystemTagsItIsGiven)
{
    const TempDirectory system;
    system.Write("sys.h", "int read();\n");
    system.Write("headers.tags", "read\tsys.h\t1;\"\tp\n");
    const ProgramRun run = Run({"--symbol", "read", "--system-tags", system / "headers.tags"});
    EXPECT_EQ(run.output, system / "sys.h" + ":1: read - sys.h\n") << run.errors;
    const ProgramRun missing = Run({"--symbol", "read", "--system-tags", "none.tags"});
    EXPECT_EQ(missing.status, 2);
    EXPECT_NE(missing.errors.find("none.tags"), std::string::npos);
}

TEST_F(LookupCommand, NeedsNoTemporaryDirectoryForOtherSystemTags)
{
    const std::string system = tree.Write("system.tags", "other\tsrc/one.c\t1;\"\tv\n");
    for (const std::vector<std::string>& question : {std::vector<std::string>{"--symbol", "other"},
                                                     std::vector<std::string>{tree.Write("other.c", "other") + ":1"}}) {
        std::vector<std::string> words = question;
        words.insert(words.end(), {"--system-tags", system});
        const ProgramRun run = Run(words, {{"TMPDIR", tree / "missing"}});
        EXPECT_EQ(run.output, At("src/one.c", 1, "other - one.c")) << question[0] << ": " << run.errors;
    }
}

TEST_F(LookupCommand, ShortensTheHomeDirectoryOnlyWithTheUsersOwnSystemTags)
{
    tree.Write("home/a/x.h", "int twice;\n");
    tree.Write("home/b/x.h", "int twice;\n");
    tree.Write("home/tags", "twice\ta/x.h\t1;\"\tv\ntwice\tb/x.h\t1;\"\tv\n");
    const std::string empty = tree.Write("empty.tags", "");
    EXPECT_EQ(Run({"--symbol", "twice", "--in", tree / "home"}).output,
              At("home/a/x.h", 1, "twice : x.h - ~/a") + At("home/b/x.h", 1, "twice : x.h - ~/b"));
    EXPECT_EQ(Run({"--symbol", "twice", "--in", tree / "home", "--system-tags", empty}).output,
              At("home/a/x.h", 1, "twice : x.h - " + (tree / "home/a")) +
                  At("home/b/x.h", 1, "twice : x.h - " + (tree / "home/b")));
}

TEST_F(LookupCommand, RefusesUnknownArguments)
{
    const std::vector<std::vector<std::string>> kWrong = {{},
                                                          {"src/one.c"},
                                                          {"src/one.c:1", "--symbol", "x"},
                                                          {"--bogus"},
                                                          {"src/one.c:1", "--in", "src"},
                                                          {"a:1", "b:1"}};
    for (const auto& words : kWrong) {
        const ProgramRun run = Run(words);
        EXPECT_EQ(run.status, 2) << (words.empty() ? "nothing" : words[0]);
        EXPECT_NE(run.errors, "") << (words.empty() ? "nothing" : words[0]);
        EXPECT_EQ(run.output, "") << (words.empty() ? "nothing" : words[0]);
    }
}

TEST_F(LookupCommand, RefusesPlacesBeyondTheTextAndFilesThatCannotBeRead)
{
    struct Case {
        const char* place;
        const char* said;
    };
    for (const Case& c :
         {Case{"src/one.c:99", "src/one.c has only 5 lines"}, Case{"src/one.c:1:99", "src/one.c:1 has only 9 columns"},
          Case{"src/gone.c:1", "gone.c"}, Case{"src:1", "src"}}) {
        const ProgramRun run = Run({c.place});
        EXPECT_EQ(run.status, 2) << c.place;
        EXPECT_NE(run.errors.find(c.said), std::string::npos) << c.place << ": " << run.errors;
    }
}

TEST_F(LookupCommand, SaysWhyTheTagsFileCouldNotAnswer)
{
    struct Case {
        const char* tags;
        const char* said;
    };
    for (const Case& c : {Case{"", "is empty"}, Case{"only\tsrc/one.c\t/^int only;$/;\"\tv\n", "has no line numbers"},
                          Case{"f\tsrc/one.c\t1;\"\tp\tclass:A\ttyperef:typename:int\n", "fields behind its scopes"}}) {
        tree.Write("tags", c.tags);
        const ProgramRun run = Run({"--symbol", "A::f"});
        EXPECT_EQ(run.status, 1) << c.said;
        EXPECT_NE(run.errors.find(c.said), std::string::npos) << run.errors;
        EXPECT_NE(run.errors.find("rebuild it with: wren tags " + tree.Path() + "\n"), std::string::npos) << run.errors;
    }
    std::filesystem::remove(tree / "tags");
    std::filesystem::create_directory(tree / "tags");
    EXPECT_NE(Run({"--symbol", "f"}).errors.find("is a directory"), std::string::npos);
}

TEST_F(LookupCommand, ReportsASparseTagsFileWithARemedy)
{
    if (const std::string reason = MakeSparse(tree / "tags", kTerabyte); !reason.empty())
        GTEST_SKIP() << reason;
    const ProgramRun run = Run({"--symbol", "only"});
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(run.errors, "wren: " + (tree / "tags") +
                              " is not read: it is 1.1 TB long, and most of that is holes, which no tags program "
                              "leaves; remove it, or make the tags again\n"
                              "wren: nothing in the tags files matches \"only\"\n"
                              "wren: " +
                              (tree / "tags") + " is mostly holes; rebuild it with: wren tags " + tree.Path() + "\n");
    tree.Write("system", "only\t" + (tree / "src/one.c") + "\t1;\"\tv\n");
    const ProgramRun other = Run({"--symbol", "only", "--system-tags", tree / "system"});
    EXPECT_EQ(other.output, At("src/one.c", 1, "only - one.c")) << "the other file answers";
    EXPECT_NE(other.errors.find(tree / "tags is not read"), std::string::npos) << other.errors;
}

TEST_F(LookupCommand, PrintsTheLinesThatAnEditorOpens)
{
    const struct {
        const char* named;
        int printed;
    } kCases[] = {{"3", 3}, {"0", 1}, {"-5", 1}, {"-9999999999", 1}, {"99999999999999999999", 1}, {"700", 700}};
    for (const auto& each : kCases) {
        tree.Write("tags", "only\tsrc/one.c\t" + std::string(each.named) + ";\"\tv\n");
        EXPECT_EQ(Run({"--symbol", "only"}).output, At("src/one.c", each.printed, "only - one.c")) << each.named;
    }
    tree.Write("tags", "Area\tsrc/shape.h\t-7;\"\tp\nArea\tsrc/shape.h\t4;\"\tp\n");
    EXPECT_EQ(Run({"--symbol", "Area"}).output,
              At("src/shape.h", 1, "Area - shape.h") + At("src/shape.h", 4, "Area - shape.h"));
}

TEST_F(LookupCommand, DoesNotWaitForAPipeInPlaceOfAFile)
{
    std::filesystem::remove(tree / "tags");
    ASSERT_EQ(::mkfifo((tree / "tags").c_str(), 0600), 0);
    ASSERT_EQ(::mkfifo((tree / "pipe.c").c_str(), 0600), 0);
    const ProgramRun tags = Run({"--symbol", "f"});
    EXPECT_EQ(tags.status, 1);
    EXPECT_NE(tags.errors.find(tree / "tags is not a plain file"), std::string::npos) << tags.errors;
    const ProgramRun source = Run({"pipe.c:1"});
    EXPECT_EQ(source.status, 2);
    EXPECT_NE(source.errors.find("a pipe, a device or a socket holds no text"), std::string::npos) << source.errors;
    const ProgramRun made = RunProgram({WREN_PROGRAM, "tags", tree.Path(), "--home", tree / "home"}, tree.Path());
    EXPECT_EQ(made.status, 1);
    EXPECT_NE(made.errors.find(tree / "tags is not a tags file"), std::string::npos) << made.errors;
}

TEST_F(LookupCommand, SaysWhenThereMayBeMoreThanTheListHolds)
{
    std::string lines;
    for (int line = 1; line <= 45; ++line)
        lines += "many\tsrc/one.c\t" + std::to_string(line) + ";\"\tv\n";
    tree.Write("tags", lines);
    const ProgramRun run = Run({"--symbol", "many"});
    EXPECT_EQ(std::count(run.output.begin(), run.output.end(), '\n'), 41);
    EXPECT_NE(run.errors.find("41"), std::string::npos);
}

TEST_F(LookupCommand, WorksWithoutAHomeAndWithOneThatCannotBeWritten)
{
    const ProgramRun without = RunProgram({WREN_PROGRAM, "lookup", "src/one.c:1:5"}, tree.Path(), {{"HOME", ""}});
    EXPECT_EQ(without.status, 0);
    EXPECT_EQ(without.output, At("src/one.c", 1, "only - one.c"));
    tree.Write("file", "");
    const ProgramRun broken =
        RunProgram({WREN_PROGRAM, "lookup", "src/one.c:1:5", "--home", tree / "file"}, tree.Path());
    EXPECT_EQ(broken.status, 0);
    EXPECT_EQ(broken.output, At("src/one.c", 1, "only - one.c"));
}

TEST_F(LookupCommand, LeavesSourceTagsAndHomeAsTheyWere)
{
    const auto content = [&] { return RunProgram({"/bin/ls", "-lR", "--time-style=full-iso"}, tree / "src").output; };
    const std::string before = content();
    Run({"src/shape.cpp:3:5"});
    EXPECT_EQ(content(), before);
}

TEST_F(LookupCommand, NamesABundleThatIsMissing)
{
    for (const std::vector<std::string>& question :
         {std::vector<std::string>{"src/one.c:1"}, std::vector<std::string>{"--symbol", "only"}}) {
        std::vector<std::string> words = question;
        words.insert(words.end(), {"--bundle", tree / "None.bundle"});
        const ProgramRun run = Run(words);
        EXPECT_EQ(run.status, 2) << question[0];
        EXPECT_EQ(run.errors, "wren: no bundle directory " + (tree / "None.bundle") + "\n") << question[0];
    }
}

TEST_F(LookupCommand, ColoursItsOutputOnATerminalOnly)
{
    EXPECT_EQ(Run({"src/one.c:1:5"}, {{"TERM", "xterm"}}).output.find('\x1b'), std::string::npos);
    const std::string command = ShellWord(WREN_PROGRAM) + " lookup src/one.c:1:5 --home " + ShellWord(tree / "home");
    const auto onTerminal = [&](const char* terminal, const char* noColour) {
        return RunProgram({"/usr/bin/script", "-qec", command, "/dev/null"}, tree.Path(),
                          {{"TERM", terminal}, {"NO_COLOR", noColour}})
            .output;
    };
    EXPECT_NE(onTerminal("xterm", "").find("\x1b[35m" + (tree / "src/one.c") + "\x1b[0m:\x1b[32m1\x1b[0m: only"),
              std::string::npos);
    EXPECT_EQ(onTerminal("dumb", "").find('\x1b'), std::string::npos);
    EXPECT_EQ(onTerminal("xterm", "1").find('\x1b'), std::string::npos);
}

// Sequences that a terminal would execute: set its title, clear it, overwrite its text.
TEST_F(LookupCommand, PassesNoControlCharactersOfTagsToATerminal)
{
    const std::string scope = "\x1b]0;owned\x07\x1b[2J\x08\xc2\x9b"
                              "1m\x7f\x9b"
                              "2Jcaf\xc3\xa9";
    tree.Write("tags", "only\tsrc/one.c\t1;\"\tf\tclass:" + scope + "\n");
    EXPECT_EQ(Run({"--symbol", "only"}).output, At("src/one.c", 1, scope + "::only - one.c")) << "programs get it all";
    const std::string command = ShellWord(WREN_PROGRAM) + " lookup --symbol only --home " + ShellWord(tree / "home");
    const std::string shown =
        RunProgram({"/usr/bin/script", "-qec", command, "/dev/null"}, tree.Path(), {{"TERM", "dumb"}}).output;
    EXPECT_NE(shown.find(": ?]0;owned??[2J??1m??2Jcaf\xc3\xa9::only - one.c"), std::string::npos) << shown;
    EXPECT_EQ(shown.find('\x1b'), std::string::npos);
    EXPECT_EQ(shown.find('\x9b'), std::string::npos);
}

TEST(Program, ExplainsItself)
{
    for (const std::vector<std::string>& words : {std::vector<std::string>{WREN_PROGRAM, "--help"},
                                                  {WREN_PROGRAM, "lookup", "--help"},
                                                  {WREN_PROGRAM, "tags", "--help"}}) {
        const ProgramRun run = RunProgram(words, "/");
        EXPECT_EQ(run.status, 0);
        EXPECT_NE(run.output.find("Examples:"), std::string::npos) << words[1];
    }
    EXPECT_EQ(RunProgram({WREN_PROGRAM, "--version"}, "/").output.substr(0, 5), "wren ");
}

TEST(Program, NamesCommandsThatNeedNoDisplayWhenThereIsNone)
{
    const std::map<std::string, std::string> noDisplay = {
        {"DISPLAY", ""}, {"WAYLAND_DISPLAY", ""}, {"QT_QPA_PLATFORM", ""}};
    for (const std::vector<std::string>& words :
         {std::vector<std::string>{WREN_PROGRAM}, {WREN_PROGRAM, "a.c"}, {WREN_PROGRAM, "--new"}}) {
        const ProgramRun run = RunProgram(words, "/", noDisplay);
        EXPECT_EQ(run.status, 69);
        EXPECT_NE(run.errors.find("wren lookup and wren complete"), std::string::npos) << run.errors;
    }
}
