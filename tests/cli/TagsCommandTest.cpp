// Runs wren tags as a user does.
#include "tests/cli/TagsCommandFixture.h"
#include "tests/support/Fifo.h"
#include "tests/support/ShellWord.h"

#include <csignal>
#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

TEST_F(TagsCommand, MakesTheTagsOfADirectory)
{
    const ProgramRun run = Run({"project"});
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.errors, "");
    EXPECT_EQ(WithoutSeconds(run.output), "tags of 2 files: 2 tags, " + Tags() + "\n");
    EXPECT_TRUE(HasText(Content(Tags()), tree / "project/a.h"));
    EXPECT_TRUE(HasText(Content(Tags()), tree / "project/deep/b.c"));
    EXPECT_FALSE(HasText(Content(Tags()), "notes.txt"));
    EXPECT_FALSE(fs::exists(UnfinishedTags()));
}

TEST_F(TagsCommand, MakesTheTagsOfTheCurrentDirectoryWhenNoneIsNamed)
{
    const ProgramRun run = RunProgram(Command({}), tree / "project", environment);
    EXPECT_EQ(run.status, 0) << run.errors;
    EXPECT_EQ(WithoutSeconds(run.output), "tags of 2 files: 2 tags, " + Tags() + "\n");
}

TEST_F(TagsCommand, MakesTagsThatLookupsFind)
{
    environment.erase("WREN_CTAGS");
    const ProgramRun run = Run({"project"});
    EXPECT_EQ(run.errors, "");
    EXPECT_EQ(WithoutSeconds(run.output), "tags of 2 files: 2 tags, " + Tags() + "\n");
    const auto found = [&](const char* symbol) {
        return RunProgram({WREN_PROGRAM, "lookup", "--symbol", symbol, "--in", "project/deep", "--home", tree / "home"},
                          tree.Path())
            .output;
    };
    EXPECT_EQ(found("a"), tree / "project/a.h:1: a - a.h\n");
    EXPECT_EQ(found("b"), tree / "project/deep/b.c:1: b - b.c\n");
}

TEST_F(TagsCommand, ReplacesOldTags)
{
    tree.Write("project/tags", kOldTags);
    EXPECT_EQ(Run({"project"}).status, 0);
    EXPECT_FALSE(HasText(Content(Tags()), "old"));
    EXPECT_EQ(Run({"project"}).status, 0) << "the same tags again are a new file all the same";
}

TEST_F(TagsCommand, MakesTheSystemsTagsOfTheDirectoriesThatExist)
{
    tree.Write("headers/s.h", "int s;\n");
    tree.Write("settings", "DeclScanSystemDirectories " + (tree / "gone") + " " + (tree / "headers") + "\n");
    const ProgramRun run = Run({"--system", "--settings", tree / "settings"});
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.errors, "") << "find would complain of the one that is gone";
    EXPECT_EQ(WithoutSeconds(run.output), "tags of 1 file: 1 tag, " + SystemTags() + "\n");
    EXPECT_TRUE(HasText(Content(SystemTags()), tree / "headers/s.h"));
    EXPECT_FALSE(fs::exists(SystemTags() + ".temp"));
    EXPECT_FALSE(fs::exists(Tags()));
}

TEST_F(TagsCommand, SaysWhichSystemDirectoriesAreGoneWhenAllAre)
{
    tree.Write("settings", "DeclScanSystemDirectories " + (tree / "gone") + "\n");
    const ProgramRun run = Run({"--system", "--settings", tree / "settings"});
    EXPECT_EQ(run.status, 1);
    EXPECT_TRUE(HasText(run.errors, tree / "gone")) << run.errors;
    EXPECT_TRUE(HasText(run.errors, "DeclScanSystemDirectories")) << run.errors;
    EXPECT_FALSE(fs::exists(SystemTags()));
}

TEST_F(TagsCommand, PassesDirectorySettingsWithOptionsOrPatternsOnUnchanged)
{
    fs::create_directory(tree / "headers");
    tree.Write("settings", "DeclScanSystemDirectories -L " + (tree / "head*") + " " + (tree / "gone") + "\n");
    const ProgramRun run = Run({"--system", "--dry-run", "--settings", tree / "settings"});
    EXPECT_EQ(run.status, 0) << run.errors;
    EXPECT_TRUE(HasText(run.output, "find -L " + (tree / "head*") + " " + (tree / "gone") + " ")) << run.output;
}

TEST_F(TagsCommand, MakesLocalAndSystemTagsInOneRun)
{
    tree.Write("headers/s.h", "int s;\n");
    tree.Write("settings", "DeclScanSystemDirectories " + (tree / "headers") + "\n");
    const ProgramRun run = Run({"project", "--system", "--settings", tree / "settings"});
    EXPECT_EQ(run.status, 0) << run.errors;
    const size_t lineEnd = run.output.find('\n') + 1;
    EXPECT_EQ(WithoutSeconds(run.output.substr(0, lineEnd)), "tags of 1 file: 1 tag, " + SystemTags() + "\n");
    EXPECT_EQ(WithoutSeconds(run.output.substr(lineEnd)), "tags of 2 files: 2 tags, " + Tags() + "\n");
}

TEST_F(TagsCommand, FollowsTheSuffixesOfTheSettings)
{
    tree.Write("settings", "DeclIndexSuffixes *.txt\n");
    EXPECT_EQ(Run({"project", "--settings", tree / "settings"}).status, 0);
    EXPECT_TRUE(HasText(Content(Tags()), "notes.txt"));
    EXPECT_EQ(Content(tree / "settings"), "DeclIndexSuffixes *.txt\n");
}

TEST_F(TagsCommand, TagsEverySuffixOfCAndItsFamilyByDefault)
{
    for (const char* suffix : {"hh", "hpp", "hxx", "inl", "ipp", "tpp", "cc", "cp", "cpp", "cxx", "m", "mm"})
        tree.Write(std::string("project/x.") + suffix, "int x;\n");
    EXPECT_EQ(WithoutSeconds(Run({"project"}).output), "tags of 14 files: 14 tags, " + Tags() + "\n");
    tree.Write("settings", "DeclIndexSuffixes *.hh\n");
    EXPECT_EQ(WithoutSeconds(Run({"project", "--settings", tree / "settings"}).output),
              "tags of 1 file: 1 tag, " + Tags() + "\n");
}

TEST_F(TagsCommand, SaysWhenThereWasNothingToTag)
{
    fs::create_directory(tree / "empty");
    const ProgramRun run = Run({"empty"});
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(WithoutSeconds(run.output), "tags of 0 files: 0 tags, " + (tree / "empty/tags") + "\n");
    EXPECT_TRUE(HasText(run.errors, "no file was found")) << run.errors;
}

TEST_F(TagsCommand, ReportsTheNumbersAtTheHeadOfTheTagsFile)
{
    UseProgram(
        std::string(kReadOptions) +
        R"(printf '!_TAG_CPLUSTAGS_FILES\t585\t//\n!_TAG_CPLUSTAGS_TAGS\t48211\t//\na\ta.h\t1;"\tv\n' >"$target")");
    EXPECT_EQ(WithoutSeconds(Run({"project"}).output), "tags of 585 files: 48211 tags, " + Tags() + "\n");
}

TEST_F(TagsCommand, PassesTheNumberOfJobsToTheTagsProgram)
{
    UseProgram(std::string(kReadOptions) + R"(printf '!_TAG_CPLUSTAGS_FILES\t%s\t//\n' "$CPLUSTAGS_JOBS" >"$target")");
    EXPECT_EQ(WithoutSeconds(Run({"project", "--jobs", "3"}).output), "tags of 3 files: 0 tags, " + Tags() + "\n");
}

TEST_F(TagsCommand, ShowsTheCommandsOnlyWithVerbose)
{
    EXPECT_FALSE(HasText(Run({"project"}).errors, "executing"));
    const ProgramRun run = Run({"project", "--verbose"});
    EXPECT_TRUE(HasText(run.errors, "executing mv ")) << run.errors;
    EXPECT_EQ(WithoutSeconds(run.output), "tags of 2 files: 2 tags, " + Tags() + "\n");
}

TEST_F(TagsCommand, KeepsTheCommandsOwnOutputOffItsOutput)
{
    UseProgram(std::string(kReadOptions) + "echo chatter\necho complaint >&2\n" + kWriteTags);
    const ProgramRun run = Run({"project"});
    EXPECT_EQ(run.errors, "chatter\ncomplaint\n");
    EXPECT_EQ(WithoutSeconds(run.output), "tags of 2 files: 2 tags, " + Tags() + "\n");
}

TEST_F(TagsCommand, RunsOnATerminalThatStopsBackgroundOutput)
{
    UseProgram(std::string(kReadOptions) + "echo progress >&2\n" + kWriteTags);
    const std::string command =
        "stty tostop; exec " + ShellWord(WREN_PROGRAM) + " tags project --home " + ShellWord(tree / "home");
    const ProgramRun run = RunProgram({"/usr/bin/script", "-qec", command, "/dev/null"}, tree.Path(), environment);
    EXPECT_TRUE(HasText(run.output, "progress")) << run.output;
    EXPECT_TRUE(HasText(run.output, "tags of 2 files: 2 tags")) << run.output;
}

TEST_F(TagsCommand, DryRunPrintsTheCommandsAndTouchesNothing)
{
    tree.Write("project/tags.tmp", kOldTags);
    const std::string before = Listing();
    const ProgramRun run = Run({"project", "--system", "--dry-run"});
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.errors, "");
    EXPECT_EQ(Listing(), before);
    for (const std::string& part :
         {"export HOME=" + (tree / "home") + "\n", std::string("\nfind /usr/include \\("),
          std::string("\nmv ~/Library/Caches/SystemHeaderTags.temp ~/Library/Caches/SystemHeaderTags\n"),
          "\nfind " + (tree / "project") + " \\(", "\nmv " + UnfinishedTags() + " " + Tags() + "\n"})
        EXPECT_TRUE(HasText(run.output, part)) << part << " is not in:\n" << run.output;
    EXPECT_FALSE(HasText(run.output, "/System/Library/Frameworks")) << "it does not exist here";
}

TEST_F(TagsCommand, DryRunPrintsCommandsThatAShellCanRun)
{
    tree.Write("commands", Run({"project", "--dry-run"}).output);
    const ProgramRun shell = RunProgram({"/bin/sh", tree / "commands"}, "/");
    EXPECT_EQ(shell.status, 0) << shell.errors;
    const std::string tags = Content(Tags());
    EXPECT_TRUE(HasText(tags, tree / "project/a.h"));
    EXPECT_EQ(Run({"project"}).status, 0);
    EXPECT_EQ(Content(Tags()), tags);
}

TEST_F(TagsCommand, LeavesTheOldFileWhenTheTagsProgramFails)
{
    struct Case {
        std::string script;
        const char* why;
    };
    for (const Case& c : {
             Case{"#!/bin/sh\nexit 1\n", "nothing was written"},
             Case{std::string(kReadOptions) + "echo half >\"$target\"\nexit 1\n", "half a file was written"},
             Case{std::string(kReadOptions) + "exit 0\n", "it claims success and wrote nothing"},
             Case{"#!/no/such/interpreter\n", "it cannot be started"},
             Case{"#!/bin/sh\nkill -SEGV $$\n", "it crashed"},
         }) {
        UseProgram(c.script);
        tree.Write("project/tags", kOldTags);
        const ProgramRun run = Run({"project"});
        EXPECT_EQ(run.status, 1) << c.why;
        EXPECT_EQ(run.output, "") << c.why;
        EXPECT_TRUE(HasText(run.errors, Tags() + " was not made")) << c.why << ": " << run.errors;
        EXPECT_TRUE(HasText(run.errors, "The old file is unchanged.")) << c.why << ": " << run.errors;
        EXPECT_TRUE(HasText(run.errors, "wren tags " + (tree / "project") + " --dry-run")) << c.why << run.errors;
        ExpectOldTags(c.why);
    }
}

TEST_F(TagsCommand, DoesNotTakeALeftoverForNewTags)
{
    tree.Write("project/tags", kOldTags);
    tree.Write("project/tags.tmp", "stale\tstale.h\t1;\"\tv\n");
    UseProgram("#!/bin/sh\nexit 0\n");
    EXPECT_EQ(Run({"project"}).status, 1);
    ExpectOldTags("nothing was made in this run");
}

TEST_F(TagsCommand, LeavesOtherFilesNamedTagsAlone)
{
    struct Case {
        const char* leaf;
        const char* why;
    };
    for (const Case& c : {Case{"tags", "the moved file would replace it"},
                          Case{"tags.tmp", "it would be moved in place of the tags, or removed"}}) {
        const TempDirectory project;
        project.Write("a.h", "int a;\n");
        project.Write(c.leaf, "my own list\n");
        const ProgramRun run = Run({project.Path()});
        EXPECT_EQ(run.status, 1) << c.why;
        EXPECT_TRUE(HasText(run.errors, project / c.leaf + " is not a tags file")) << c.why << ": " << run.errors;
        EXPECT_EQ(Content(project / c.leaf), "my own list\n") << c.why;
        fs::remove(project / c.leaf);
        fs::create_directory(project / c.leaf);
        const ProgramRun directory = Run({project.Path()});
        EXPECT_EQ(directory.status, 1) << c.why;
        EXPECT_TRUE(HasText(directory.errors, project / c.leaf + " is a directory")) << c.why << directory.errors;
        EXPECT_TRUE(fs::is_empty(project / c.leaf)) << c.why;
    }
}

TEST_F(TagsCommand, MakesTheOtherFileWhenOneFails)
{
    tree.Write("settings", "DeclScanSystemDirectories " + (tree / "gone") + "\n");
    const ProgramRun run = Run({"project", "--system", "--settings", tree / "settings"});
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(WithoutSeconds(run.output), "tags of 2 files: 2 tags, " + Tags() + "\n");
}

TEST_F(TagsCommand, RefusesUnknownArguments)
{
    struct Case {
        std::vector<std::string> words;
        const char* said;
    };
    for (const Case& c : {
             Case{{"nowhere"}, "nowhere"},
             Case{{"project/a.h"}, "project/a.h"},
             Case{{""}, "is not a directory"},
             Case{{"nowhere", "--system"}, "nowhere"},
             Case{{"project", "home"}, "home"},
             Case{{"--jobs", "0"}, "jobs"},
             Case{{"--jobs", "-1"}, "jobs"},
             Case{{"--jobs", "many"}, "jobs"},
             Case{{"--settings", "nowhere"}, "nowhere"},
             Case{{"--bundle", "None.bundle"}, "None.bundle"},
             Case{{"--bogus"}, "bogus"},
         }) {
        const std::string before = Listing();
        const ProgramRun run = Run(c.words);
        EXPECT_EQ(run.status, 2) << c.said;
        EXPECT_TRUE(HasText(run.errors, c.said)) << c.said << " is not in: " << run.errors;
        EXPECT_EQ(run.output, "") << c.said;
        EXPECT_EQ(Listing(), before) << c.said;
    }
}

TEST_F(TagsCommand, RefusesADirectoryThatCannotBeWritten)
{
    fs::create_directory(tree / "closed");
    fs::permissions(tree / "closed", fs::perms::owner_read | fs::perms::owner_exec);
    std::vector<std::string> command = Command({"closed"});
    if (::geteuid() == 0) { // root may write everywhere until it drops that right
        const std::vector<std::string> giveUp = {"/usr/bin/setpriv", "--bounding-set=-dac_override,-dac_read_search"};
        command.insert(command.begin(), giveUp.begin(), giveUp.end());
    }
    const ProgramRun run = RunProgram(command, tree.Path(), environment);
    EXPECT_EQ(run.status, 2);
    EXPECT_TRUE(HasText(run.errors, tree / "closed" + " cannot be read and written")) << run.errors;
}

TEST_F(TagsCommand, NeedsAHomeForTheSystemsTagsOnly)
{
    environment["HOME"] = "";
    const ProgramRun system = RunProgram({WREN_PROGRAM, "tags", "--system"}, tree.Path(), environment);
    EXPECT_EQ(system.status, 2);
    EXPECT_TRUE(HasText(system.errors, "HOME is not set")) << system.errors;
    EXPECT_EQ(RunProgram({WREN_PROGRAM, "tags", "project"}, tree.Path(), environment).status, 0);
}

TEST_F(TagsCommand, SaysWhenTheSystemsTagsHaveNoPlace)
{
    tree.Write("file", "");
    const ProgramRun run = RunProgram({WREN_PROGRAM, "tags", "--system", "--home", tree / "file"}, tree.Path());
    EXPECT_EQ(run.status, 1);
    EXPECT_TRUE(HasText(run.errors, tree / "file/Library/Caches")) << run.errors;
}

TEST_F(TagsCommand, RunsNothingThatADirectorysNameSays)
{
    environment.erase("WREN_CTAGS");
    for (const char* name :
         {"a blank", "an apostrophe's", "a \"quote\"", "$(touch pwned)", "`touch pwned`", "a; touch pwned", "-leading",
          "a\nbreak; touch pwned", "\xff\xfe non-UTF-8", "$(CTAGS_TO_RUN)", "a | touch pwned", "#", "a\\", "*", "~"}) {
        const TempDirectory place;
        const std::string directory = place / name;
        place.Write(std::string(name) + "/h.h", "int hostile(void);\n");
        const auto run = [&](const std::vector<std::string>& words) {
            return RunProgram(Command(words), place.Path(), environment);
        };
        const ProgramRun made = run({"--", name});
        EXPECT_EQ(made.status, 0) << name << ": " << made.errors;
        EXPECT_TRUE(HasText(made.output, ", " + directory + "/tags\n")) << name << ": " << made.output;
        const ProgramRun found = RunProgram(
            {WREN_PROGRAM, "lookup", "--symbol", "hostile", "--in", directory, "--home", tree / "home"}, "/");
        EXPECT_EQ(found.output, directory + "/h.h:1: hostile - h.h\n") << name << ": " << found.errors;
        // The same when a user pastes the output of a dry run.
        fs::remove(directory + "/tags");
        place.Write("commands", run({"--dry-run", "--", name}).output);
        EXPECT_EQ(RunProgram({"/bin/sh", place / "commands"}, place.Path()).status, 0) << name;
        EXPECT_TRUE(fs::exists(directory + "/tags")) << name;
        fs::remove(place / "commands");
        EXPECT_EQ(std::distance(fs::directory_iterator(place.Path()), fs::directory_iterator()), 1)
            << name << " was run";
    }
}

namespace {

// A run whose tags program reports its start, and then waits.
class InterruptedTags : public TagsCommand {
protected:
    // The tags program runs 'beginning' before it reports its start, and 'end' after it may continue.
    void UseWaitingProgram(const std::string& beginning, const std::string& end = "")
    {
        UseProgram(std::string(kReadOptions) + beginning + "\necho half >\"$target\"\necho $$ >'" + began.Path() +
                   "'\nread line <'" + goOn.Path() + "'\n" + end);
        tree.Write("project/tags", kOldTags);
    }

    // The process number of the tags program, once it has started; 0 when the run ended first.
    pid_t WaitUntilBegun(const RunningProgram& run) const
    {
        const std::string number = began.ReadLine(run.Process());
        return number.empty() ? 0 : static_cast<pid_t>(std::stol(number));
    }

    Fifo began;
    Fifo goOn;
};

} // namespace

TEST_F(InterruptedTags, LeavesTheOldFileAndNoProcess)
{
    for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
        UseWaitingProgram("");
        RunningProgram running(Command({"project"}), tree.Path(), environment);
        const pid_t program = WaitUntilBegun(running);
        ASSERT_GT(program, 0) << running.Wait().errors;
        ::kill(running.Process(), signal);
        const ProgramRun run = running.Wait();
        EXPECT_EQ(run.signal, signal);
        EXPECT_EQ(run.output, "");
        EXPECT_TRUE(HasText(run.errors, "interrupted. " + Tags() + ": The old file is unchanged.")) << run.errors;
        EXPECT_EQ(::kill(program, 0), -1) << "the tags program has outlived the run";
        ExpectOldTags("interrupted");
    }
}

TEST_F(InterruptedTags, WaitsForAProgramThatTidiesUp)
{
    UseWaitingProgram("trap 'echo tidied >tidy; exit 0' INT");
    RunningProgram running(Command({"project"}), tree.Path(), environment);
    ASSERT_GT(WaitUntilBegun(running), 0) << running.Wait().errors;
    ::kill(running.Process(), SIGINT);
    EXPECT_EQ(running.Wait().signal, SIGINT);
    EXPECT_EQ(Content(tree / "tidy"), "tidied\n");
    ExpectOldTags("an interrupted command is no success, whatever its status");
}

TEST_F(InterruptedTags, ASecondSignalEndsAProgramThatIgnoresTheFirst)
{
    UseWaitingProgram("trap '' INT TERM");
    RunningProgram running(Command({"project"}), tree.Path(), environment);
    const pid_t program = WaitUntilBegun(running);
    ASSERT_GT(program, 0) << running.Wait().errors;
    ::kill(running.Process(), SIGINT);
    ::kill(running.Process(), SIGTERM);
    EXPECT_EQ(running.Wait().signal, SIGINT);
    EXPECT_EQ(::kill(program, 0), -1);
    ExpectOldTags("interrupted");
}

TEST_F(InterruptedTags, AnInterruptedRunStartsNothingElse)
{
    tree.Write("headers/s.h", "int s;\n");
    tree.Write("settings", "DeclScanSystemDirectories " + (tree / "headers") + "\n");
    UseWaitingProgram("echo run >>runs");
    RunningProgram running(Command({"project", "--system", "--settings", tree / "settings"}), tree.Path(), environment);
    ASSERT_GT(WaitUntilBegun(running), 0) << running.Wait().errors;
    ::kill(running.Process(), SIGINT);
    EXPECT_EQ(running.Wait().signal, SIGINT);
    EXPECT_EQ(Content(tree / "runs"), "run\n") << "the project's tags were begun, too";
    EXPECT_FALSE(fs::exists(SystemTags()));
    EXPECT_FALSE(fs::exists(SystemTags() + ".temp"));
    ExpectOldTags("never begun");
}

TEST_F(InterruptedTags, TheRealTagsProgramLeavesNoTemporaryFiles)
{
    environment.erase("WREN_CTAGS");
    fs::permissions(tree.Write("ctags", "#!/bin/sh\n[ \"$1\" = --version ] && exec ctags --version\necho $$ >'" +
                                            began.Path() + "'\nread line <'" + goOn.Path() + "'\n"),
                    fs::perms::owner_all);
    environment["CPLUSTAGS_CTAGS"] = tree / "ctags";
    tree.Write("project/tags", kOldTags);
    const std::string before = RunProgram({"/bin/ls", "-A"}, tree / "project").output;
    RunningProgram running(Command({"project", "--jobs", "1"}), tree.Path(), environment);
    const pid_t ctags = WaitUntilBegun(running);
    ASSERT_GT(ctags, 0) << running.Wait().errors;
    ::kill(running.Process(), SIGINT);
    EXPECT_EQ(running.Wait().signal, SIGINT);
    EXPECT_EQ(RunProgram({"/bin/ls", "-A"}, tree / "project").output, before);
    EXPECT_EQ(::kill(ctags, 0), -1) << "ctags has outlived the run";
    ExpectOldTags("interrupted");
}

TEST_F(InterruptedTags, AGuardedScriptStopsItsCommandsToo)
{
    const std::string project = tree / "project";
    tree.Write("session", "{\"do\": \"document\", \"path\": \"" + project +
                              "/a.h\"}\n{\"do\": \"answer\", \"file\": \"" + project +
                              "\"}\n{\"do\": \"popup\", \"choose\": \"Create local tags...\"}\n{\"do\": \"settle\"}\n");
    for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
        UseWaitingProgram("");
        RunningProgram running({"/bin/sh", "-c", "exec \"$0\" script --guarded --home home <session", WREN_PROGRAM},
                               tree.Path(), environment);
        const pid_t program = WaitUntilBegun(running);
        ASSERT_GT(program, 0) << running.Wait().errors;
        ::kill(running.Process(), signal);
        EXPECT_EQ(running.Wait().signal, signal);
        EXPECT_EQ(::kill(program, 0), -1) << "the tags program has outlived the script";
        ::kill(program, SIGKILL);
        ExpectOldTags("interrupted");
        EXPECT_FALSE(fs::exists(tree / "project/.tags.lock"));
    }
}

TEST_F(InterruptedTags, ASignalThatWasIgnoredStaysIgnored)
{
    UseWaitingProgram("", kWriteTags);
    std::vector<std::string> command = {"/bin/sh", "-c", "trap '' HUP; exec \"$@\"", "sh"};
    for (const std::string& word : Command({"project"}))
        command.push_back(word);
    RunningProgram running(command, tree.Path(), environment);
    ASSERT_GT(WaitUntilBegun(running), 0) << running.Wait().errors;
    ::kill(running.Process(), SIGHUP);
    goOn.WriteLine("go on");
    const ProgramRun run = running.Wait();
    EXPECT_EQ(run.status, 0) << run.errors;
    EXPECT_TRUE(HasText(Content(Tags()), "a.h"));
}

TEST_F(TagsCommand, SaysThatTheCurrentDirectoryIsGone)
{
    const ProgramRun run = RunProgram(
        {"/bin/sh", "-c", "mkdir gone; cd gone; rmdir ../gone; exec \"$0\" tags --system --home x", WREN_PROGRAM},
        tree.Path(), environment);
    EXPECT_EQ(run.status, 2);
    EXPECT_EQ(run.errors, "wren: x cannot be used: No such file or directory\n");
}

TEST_F(TagsCommand, WaitsForAnotherRunInTheSameDirectory)
{
    const int held = ::open((tree / "project/.tags.lock").c_str(), O_RDONLY | O_CREAT | O_CLOEXEC, 0600);
    ASSERT_EQ(::flock(held, LOCK_EX), 0);
    const Fifo errors;
    std::vector<std::string> command = {"/bin/sh", "-c", "exec \"$@\" 2>'" + errors.Path() + "'", "sh"};
    for (const std::string& word : Command({"project"}))
        command.push_back(word);
    RunningProgram running(command, tree.Path(), environment);
    EXPECT_EQ(errors.ReadLine(running.Process()),
              "wren: another program is making tags in " + (tree / "project") + "; waiting");
    EXPECT_FALSE(fs::exists(Tags()));
    ::close(held); // like a kill of the other run
    EXPECT_EQ(running.Wait().status, 0);
    EXPECT_TRUE(fs::exists(Tags()));
    EXPECT_FALSE(fs::exists(tree / "project/.tags.lock"));
}
