// Runs the program as a user does.
#include "tests/support/RunProgram.h"
#include "tests/support/ShellWord.h"
#include "tests/support/TempDirectory.h"

#include <algorithm>
#include <filesystem>
#include <gtest/gtest.h>

namespace {

std::string Tag(const std::string& name, const std::string& scope = "")
{
    return name + "\tsrc/all.h\t1;\"\tf" + (scope.empty() ? "" : "\t" + scope) + "\n";
}

// "name100" to "name100 + count - 1", sorted.
std::string Numbered(const std::string& name, int count)
{
    std::string tags;
    for (int i = 0; i < count; ++i)
        tags += Tag(name + std::to_string(100 + i));
    return tags;
}

std::string Lines(const std::vector<std::string>& lines)
{
    std::string text;
    for (const std::string& line : lines)
        text += line + "\n";
    return text;
}

// A small source tree with its tags and its own home.
class CompleteCommand : public ::testing::Test {
protected:
    CompleteCommand()
    {
        tree.Write("src/all.h", "int all;\n");
        tree.Write("tags", Tag("MakeShape") + Tag("MakeShapeList") + Tag("NSDate") + Tag("NSStream") + Tag("NSString") +
                               Tag("Outer", "namespace:lib") + Tag("alone") + Tag("arm", "struct:Outer") +
                               Tag("armada", "struct:lib::Outer") + Tag("putBook:onLevel:", "class:Shelf") +
                               Tag("shade") + Tag("shadow") + Tag("takeBook:") + Tag("turnPage:") +
                               Tag("vector", "namespace:std"));
        tree.Write("home/.keep", "");
    }

    // Completes in a document with the text 'marked' at its caret, "|"; 'words' follow the place.
    ProgramRun Complete(const std::string& marked, const std::vector<std::string>& words = {})
    {
        const size_t caret = marked.find('|');
        tree.Write("src/a.mm", std::string(marked).erase(caret, 1));
        const std::string before = marked.substr(0, caret);
        const long line = 1 + std::count(before.begin(), before.end(), '\n');
        const size_t column = caret - (before.rfind('\n') + 1) + 1;
        std::vector<std::string> all{"src/a.mm:" + std::to_string(line) + ":" + std::to_string(column)};
        all.insert(all.end(), words.begin(), words.end());
        return Run(all);
    }

    ProgramRun Run(const std::vector<std::string>& words, const std::map<std::string, std::string>& changes = {})
    {
        std::vector<std::string> command{WREN_PROGRAM, "complete", "--home", tree / "home"};
        command.insert(command.end(), words.begin(), words.end());
        return RunProgram(command, tree.Path(), changes);
    }

    TempDirectory tree;
};

struct Case {
    const char* why;
    const char* text;   // with the caret
    const char* output; // "" for none, and exit status 1
};

} // namespace

TEST_F(CompleteCommand, PrintsTheCompletedWord)
{
    const Case kCases[] = {
        {"the only candidate, whole", "int x = alo|;", "alone\n"},
        {"what two candidates have in common", "Mak|", "MakeShape\n"},
        {"a qualified name, with its scope", "Outer::arma|", "Outer::armada\n"},
        {"the scope's inner end is enough", "x = lib::Outer::arma|", "lib::Outer::armada\n"},
        {"a leading std:: does not count", "std::vec|", "std::vector\n"},
        {"a name without the scope it has in the tags", "vec|", "vector\n"},
        {"a selector's first piece", "[shelf take|];", "takeBook:\n"},
        {"a selector's next piece, alone", "[shelf putBook:title onL|];", "onLevel:\n"},
        {"in front of other text of the word", "alo|XYZ", "aloneXYZ\n"},
    };
    for (const Case& c : kCases) {
        const ProgramRun run = Complete(c.text);
        EXPECT_EQ(run.output, c.output) << c.why << ": " << run.errors;
        EXPECT_EQ(run.status, 0) << c.why;
        EXPECT_EQ(run.errors, "") << c.why;
    }
}

TEST_F(CompleteCommand, PrintsTheCandidatesThatDiffer)
{
    const Case kCases[] = {
        {"nothing more in common", "NSStr|", "NSStream\nNSString\n"},
        {"one of them is what was typed", "MakeShape|", "MakeShape\nMakeShapeList\n"},
        {"names with their scopes, in the order of the tags file", "ar|", "Outer::arm\nlib::Outer::armada\n"},
        {"a qualified name", "Outer::ar|", "Outer::arm\nlib::Outer::armada\n"},
    };
    for (const Case& c : kCases) {
        const ProgramRun run = Complete(c.text);
        EXPECT_EQ(run.output, c.output) << c.why << ": " << run.errors;
        EXPECT_EQ(run.status, 0) << c.why;
        EXPECT_EQ(run.errors, "") << c.why;
    }
}

TEST_F(CompleteCommand, SaysWhyNothingCanBeCompleted)
{
    const char* const kNothingGoesOn = "wren: nothing in the tags files completes the word at src/a.mm:";
    const char* const kNothingThere = "wren: there is nothing to complete at src/a.mm:";
    struct {
        const char* why;
        const char* text;
        const char* said;
    } const kCases[] = {
        {"a name that no tag has", "Circ|", kNothingGoesOn},
        {"a name that is typed in full", "alone|", kNothingGoesOn},
        {"one that is typed in full without its scope", "vector|", kNothingGoesOn},
        {"another scope", "Inner::arm|", kNothingGoesOn},
        {"a blank", "alo |", kNothingThere},
        {"nothing at all", "|", kNothingThere},
    };
    for (const auto& c : kCases) {
        const ProgramRun run = Complete(c.text);
        EXPECT_EQ(run.status, 1) << c.why;
        EXPECT_EQ(run.output, "") << c.why;
        EXPECT_EQ(run.errors.substr(0, std::string(c.said).size()), c.said) << c.why;
        EXPECT_EQ(std::count(run.errors.begin(), run.errors.end(), '\n'), 1) << c.why;
    }
}

TEST_F(CompleteCommand, PrintsTheWholeLineOnRequest)
{
    const Case kCases[] = {
        {"the line and no other", "first\n  if (alo| > 1)  // x\nlast\n", "  if (alone > 1)  // x\n"},
        {"a selector that has lost nothing", "[shelf putBook:[b title] onL|];",
         "[shelf putBook:[b title] onLevel:];\n"},
        {"a scope as the user wrote it", "Outer::arma|(1)", "Outer::armada(1)\n"},
        {"a scope that the tags have is not put in", "f(vec|)", "f(vector)\n"},
    };
    for (const Case& c : kCases) {
        const ProgramRun run = Complete(c.text, {"--edit"});
        EXPECT_EQ(run.output, c.output) << c.why << ": " << run.errors;
        EXPECT_EQ(run.status, 0) << c.why;
        EXPECT_EQ(run.errors, "") << c.why;
    }
    const ProgramRun offered = Complete("NSStr|", {"--edit"});
    EXPECT_EQ(offered.status, 0);
    EXPECT_EQ(offered.output, "NSStream\nNSString\n");
    EXPECT_EQ(offered.errors, "wren: nothing is inserted; these are the candidates\n");
}

TEST_F(CompleteCommand, OffersTheSameListAsTyping)
{
    const Case kCases[] = {
        {"candidates that go on in different ways", "NSStr|", "NSStream\nNSString\n"},
        {"what they have in common is not put in", "Mak|", "MakeShape\nMakeShapeList\n"},
        {"the only candidate is offered", "alo|", "alone\n"},
        {"bare names for a bare name", "arm|", "arm\narmada\n"},
        {"their scopes for a qualified one", "Outer::ar|", "Outer::arm\nlib::Outer::armada\n"},
        {"a selector as it is in the tags", "[shelf putBook:title on|]", "putBook:onLevel:\n"},
        {"two characters are too few", "ar|", ""},
        {"a name that is typed in full", "alone|", ""},
        {"a name that no tag has", "Circ|", ""},
        {"no word", "alone |", ""},
        {"the beginning of the text", "|alo", ""},
        {"behind a line break", "alo\n|", ""},
    };
    for (const Case& c : kCases) {
        const ProgramRun run = Complete(c.text, {"--auto"});
        EXPECT_EQ(run.output, c.output) << c.why << ": " << run.errors;
        EXPECT_EQ(run.status, *c.output == '\0' ? 1 : 0) << c.why;
        EXPECT_EQ(run.errors.empty(), *c.output != '\0') << c.why << ": " << run.errors;
    }
}

TEST_F(CompleteCommand, OffersAsManyAsTheListShows)
{
    struct {
        const char* why;
        int tags;
        long byCommand;
        bool more;
        long whileTyping;
    } const kCases[] = {
        {"one less than a list holds", 199, 199, false, 199},
        {"as many as a list holds are too many while typing", 200, 200, false, 0},
        {"the entry that says that there are more is no candidate", 201, 200, true, 0},
    };
    for (const auto& c : kCases) {
        // The other names limit the candidates' common beginning.
        tree.Write("tags", Numbered("many", c.tags - 1) + Tag("manyfold"));
        const ProgramRun run = Complete("many|");
        EXPECT_EQ(run.status, 0) << c.why;
        EXPECT_EQ(std::count(run.output.begin(), run.output.end(), '\n'), c.byCommand) << c.why;
        EXPECT_EQ(run.output.find("more"), std::string::npos) << c.why;
        EXPECT_EQ(run.errors, c.more ? "wren: these are the first 200 candidates; there are more\n" : "") << c.why;
        const ProgramRun typed = Complete("many|", {"--auto"});
        EXPECT_EQ(typed.status, c.whileTyping == 0 ? 1 : 0) << c.why;
        EXPECT_EQ(std::count(typed.output.begin(), typed.output.end(), '\n'), c.whileTyping) << c.why;
    }
}

TEST_F(CompleteCommand, CompletesAtTheEndOfALineWithoutAColumn)
{
    tree.Write("src/a.mm", "shadow;\r\nint x = alo\r\n  Mak");
    EXPECT_EQ(Run({"src/a.mm:2"}).output, "alone\n");
    EXPECT_EQ(Run({"src/a.mm:3"}).output, "MakeShape\n");
    EXPECT_EQ(Run({"src/a.mm:1"}).status, 1) << "behind a semicolon";
    EXPECT_EQ(Run({"src/a.mm:2", "--auto"}).output, "alone\n");
}

TEST_F(CompleteCommand, TakesTheColumnAsTheCharacterBehindTheCaret)
{
    tree.Write("src/a.mm", "\xc3\xa4 alone\n");
    EXPECT_EQ(Run({"src/a.mm:1:6"}).output, "aloneone\n") << "between \"al\" and \"one\"";
    EXPECT_EQ(Run({"src/a.mm:1:4"}).status, 1) << "before the name";
    EXPECT_EQ(Run({"src/a.mm:1:9"}).status, 1) << "behind the name, which is whole";
}

TEST_F(CompleteCommand, SuggestsMakingTagsWhenThereAreNone)
{
    const TempDirectory bare;
    bare.Write("a.c", "alo\n");
    for (const char* way : {"--edit", "--auto"}) {
        const ProgramRun run =
            RunProgram({WREN_PROGRAM, "complete", bare / "a.c:1", way, "--home", tree / "home"}, bare.Path());
        EXPECT_EQ(run.status, 3) << way;
        EXPECT_NE(run.errors.find("wren: no tags file serves " + bare.Path() + "\n"), std::string::npos) << run.errors;
        EXPECT_NE(run.errors.find("Make one with:"), std::string::npos) << run.errors;
        EXPECT_EQ(run.output, "") << way;
    }
}

TEST_F(CompleteCommand, UsesTheSystemTagsItIsGiven)
{
    const TempDirectory system;
    system.Write("sys.h", "int readable();\n");
    const std::string tags = system.Write("headers.tags", "readable\tsys.h\t1;\"\tp\n");
    EXPECT_EQ(Complete("reada|", {"--system-tags", tags}).output, "readable\n");
    EXPECT_EQ(Complete("reada|", {"--system-tags", tags, "--auto"}).output, "readable\n");
    EXPECT_EQ(Complete("alo|", {"--system-tags", tags}).output, "alone\n") << "the project's still count";
    const ProgramRun missing = Complete("reada|", {"--system-tags", "none.tags"});
    EXPECT_EQ(missing.status, 2);
    EXPECT_NE(missing.errors.find("none.tags"), std::string::npos);
}

TEST_F(CompleteCommand, RefusesUnknownArguments)
{
    tree.Write("src/a.mm", "alo\n");
    const std::vector<std::vector<std::string>> kWrong = {{},
                                                          {"src/a.mm"},
                                                          {"src/a.mm:0"},
                                                          {"src/a.mm:1", "--bogus"},
                                                          {"src/a.mm:1", "--auto", "--edit"},
                                                          {"a:1", "b:1"}};
    for (const auto& words : kWrong) {
        const ProgramRun run = Run(words);
        EXPECT_EQ(run.status, 2) << Lines(words);
        EXPECT_NE(run.errors, "") << Lines(words);
        EXPECT_EQ(run.output, "") << Lines(words);
    }
}

TEST_F(CompleteCommand, RefusesPlacesBeyondTheTextAndFilesThatCannotBeRead)
{
    tree.Write("src/a.mm", "alo\n");
    struct {
        const char* place;
        const char* said;
    } const kCases[] = {{"src/a.mm:99", "src/a.mm has only 2 lines"},
                        {"src/a.mm:1:99", "src/a.mm:1 has only 3 columns"},
                        {"src/gone.c:1", "gone.c"},
                        {"src:1", "src"}};
    for (const auto& c : kCases)
        for (const char* way : {"--edit", "--auto"}) {
            const ProgramRun run = Run({c.place, way});
            EXPECT_EQ(run.status, 2) << c.place;
            EXPECT_NE(run.errors.find(c.said), std::string::npos) << c.place << ": " << run.errors;
            EXPECT_EQ(run.output, "") << c.place;
        }
}

TEST_F(CompleteCommand, SaysWhyTheTagsFileCouldNotAnswer)
{
    for (const char* way : {"--edit", "--auto"}) {
        tree.Write("tags", "");
        const ProgramRun empty = Complete("alo|", {way});
        EXPECT_EQ(empty.status, 1) << way;
        EXPECT_NE(empty.errors.find("is empty"), std::string::npos) << empty.errors;
        tree.Write("tags", "alone\tsrc/all.h\t/^int alone;$/;\"\tv\n");
        EXPECT_NE(Complete("alo|", {way}).errors.find("has no line numbers"), std::string::npos) << way;
    }
}

TEST_F(CompleteCommand, OffersNothingWhileTypingWithoutAHome)
{
    tree.Write("src/a.mm", "alo");
    const auto run = [&](const std::vector<std::string>& words) {
        std::vector<std::string> command{WREN_PROGRAM, "complete", "src/a.mm:1"};
        command.insert(command.end(), words.begin(), words.end());
        return RunProgram(command, tree.Path(), {{"HOME", ""}});
    };
    EXPECT_EQ(run({}).output, "alone\n");
    const ProgramRun typed = run({"--auto"});
    EXPECT_EQ(typed.status, 1);
    EXPECT_NE(typed.errors.find("HOME is not set"), std::string::npos) << typed.errors;
}

TEST_F(CompleteCommand, LeavesSourceTagsAndHomeAsTheyWere)
{
    const auto content = [&] { return RunProgram({"/bin/ls", "-lRA", "--time-style=full-iso"}, tree.Path()).output; };
    tree.Write("src/a.mm", "alo");
    Run({"src/a.mm:1"}); // makes the directory for the system's tags
    const std::string before = content();
    for (const char* way : {"--edit", "--auto"})
        EXPECT_EQ(Run({"src/a.mm:1", way}).status, 0) << way;
    EXPECT_EQ(content(), before);
}

TEST_F(CompleteCommand, PassesNoControlCharactersToATerminal)
{
    const std::string scope = "\x1b]0;owned\x07\xc2\x9b"
                              "1m\x9b"
                              "2Jcaf\xc3\xa9";
    tree.Write("tags", Tag("shade", "class:" + scope) + Tag("shadow", "class:" + scope));
    EXPECT_EQ(Complete(scope + "::sha|").output, scope + "::shade\n" + scope + "::shadow\n") << "programs get it all";
    const std::string place = "src/a.mm:1:" + std::to_string(scope.size() + 6);
    const std::string command = ShellWord(WREN_PROGRAM) + " complete " + place + " --home " + ShellWord(tree / "home");
    const std::string shown = RunProgram({"/usr/bin/script", "-qec", command, "/dev/null"}, tree.Path()).output;
    EXPECT_NE(shown.find("?]0;owned??1m?2Jcaf\xc3\xa9::shade"), std::string::npos) << shown;
    EXPECT_EQ(shown.find('\x1b'), std::string::npos);
    EXPECT_EQ(shown.find('\x9b'), std::string::npos);
}

TEST_F(CompleteCommand, FailsWhenItsOutputIsLost)
{
    tree.Write("src/a.mm", "alo");
    const std::string command = ShellWord(WREN_PROGRAM) + " complete src/a.mm:1 --home home >/dev/full";
    const ProgramRun run = RunProgram({"/bin/sh", "-c", command}, tree.Path());
    EXPECT_EQ(run.status, 2);
    EXPECT_EQ(run.errors, "wren: cannot write the completion: No space left on device\n");
}

TEST_F(CompleteCommand, NamesABundleThatIsMissing)
{
    tree.Write("src/a.mm", "alo");
    const ProgramRun run = Run({"src/a.mm:1", "--bundle", tree / "None.bundle"});
    EXPECT_EQ(run.status, 2);
    EXPECT_NE(run.errors.find("None.bundle"), std::string::npos);
}

TEST(CompleteHelp, SaysWhereTheCaretIsAndWhatTheExitStatusMeans)
{
    const ProgramRun run = RunProgram({WREN_PROGRAM, "complete", "--help"}, "/");
    EXPECT_EQ(run.status, 0);
    for (const char* said : {"FILE:LINE[:COLUMN]", "--auto", "--edit", "--system-tags", "--home", "--bundle",
                             "The caret is before the character of that column", "Exit status: 0"})
        EXPECT_NE(run.output.find(said), std::string::npos) << said;
    EXPECT_NE(RunProgram({WREN_PROGRAM, "--help"}, "/").output.find("complete"), std::string::npos);
}
