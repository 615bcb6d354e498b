// External failures: kills at any moment, a full disk, concurrent runs for the same file.

#include "tests/support/FileContent.h"
#include "tests/support/LostReader.h"
#include "tests/support/RunProgram.h"
#include "tests/support/ShellWord.h"
#include "tests/support/TempDirectory.h"

#include <gtest/gtest.h>

#include <csignal>
#include <iterator>
#include <random>

namespace cplustags {
namespace {

namespace fs = std::filesystem;
using Texts = std::vector<std::string>;

const std::string kOldTags = "!_TAG_FILE_SORTED\t1\t//\nold\told.c\t1;\"\tf\n";

// A directory with sources of a few tags each, a list of them, and an old tags file.
class Project {
public:
    explicit Project(int sources)
    {
        fs::create_directories(directory / "tags.d");
        for (int number = 0; number < sources; ++number) {
            std::string source;
            for (int function = 0; function < 20; ++function)
                source += "int function_" + std::to_string(number) + "_" + std::to_string(function) +
                          "(void) { return 0; }\n";
            names.push_back(directory.Write("source" + std::to_string(number) + ".c", source));
            list += names.back() + "\n";
        }
        directory.Write("list", list);
    }

    std::string Target() const { return directory / "tags.d/tags"; }
    Texts Command(const std::string& listFile) const
    {
        return {CPLUSTAGS, "--c-kinds=+p", "--excmd=number", "-f", Target(), "-L", listFile};
    }
    ProgramRun Make() const { return RunProgram(Command(directory / "list"), directory.Path()); }
    void PutOldTags() const { directory.Write("tags.d/tags", kOldTags); }

    // All files beside the tags file; there should be none.
    Texts Litter() const
    {
        Texts litter;
        for (const auto& entry : fs::directory_iterator(directory / "tags.d"))
            if (entry.path() != Target())
                litter.push_back(entry.path().filename());
        return litter;
    }

    TempDirectory directory;
    Texts names;
    std::string list;
};

// Makes a pipe for the program's list, with which the test controls its progress.
std::string MakePipe(const Project& project)
{
    const std::string path = project.directory / "pipe";
    EXPECT_EQ(::mkfifo(path.c_str(), 0600), 0);
    return path;
}

// Kills a run after it has read some of the names. Or, after all names, when the directory has been read a random
// number of times: somewhere in parsing, sorting, writing, or after them.
void KillSomewhere(const Project& project, const std::string& pipe, std::mt19937& random)
{
    RunningProgram running(project.Command(pipe), project.directory.Path());
    // Set after the start, since the program needs the default action: a name may be written when there is no reader.
    const auto before = std::signal(SIGPIPE, SIG_IGN);
    const bool givesAll = random() % 2 == 0;
    std::ofstream names(pipe);
    for (size_t left = givesAll ? project.names.size() : random() % project.names.size(); left > 0; --left)
        names << project.names[left - 1] << std::endl;
    if (givesAll)
        names.close();
    for (size_t looks = givesAll ? random() % 3000 : random() % 30; looks > 0; --looks)
        project.Litter();
    ::kill(running.Process(), SIGKILL);
    running.Wait();
    std::signal(SIGPIPE, before);
}

TEST(Faults, AKillAtAnyMomentLeavesTheOldFileOrTheNewOne)
{
    const Project project(60);
    ASSERT_EQ(project.Make().status, 0);
    const std::string newTags = Content(project.Target());
    const std::string pipe = MakePipe(project);
    std::mt19937 random(5);
    constexpr int kRounds = 200;
    int oldOnes = 0;
    project.PutOldTags();
    for (int round = 0; round < kRounds; ++round) {
        KillSomewhere(project, pipe, random);
        const std::string content = Content(project.Target());
        if (content == kOldTags)
            ++oldOnes;
        else
            ASSERT_EQ(content, newTags) << "round " << round;
        project.PutOldTags();
    }
    EXPECT_GT(oldOnes, kRounds / 4) << "most were killed on the way";
    ASSERT_EQ(project.Make().status, 0);
    EXPECT_EQ(Content(project.Target()), newTags);
    EXPECT_EQ(project.Litter(), Texts{}) << "the next run cleans up";
}

TEST(Faults, TwoRunsAtOnceBothSucceed)
{
    const Project project(40);
    ASSERT_EQ(project.Make().status, 0);
    const std::string tags = Content(project.Target());
    for (int round = 0; round < 5; ++round) {
        project.PutOldTags();
        RunningProgram one(project.Command(project.directory / "list"), project.directory.Path());
        RunningProgram other(project.Command(project.directory / "list"), project.directory.Path());
        EXPECT_EQ(one.Wait().status, 0);
        EXPECT_EQ(other.Wait().status, 0);
        EXPECT_EQ(Content(project.Target()), tags);
        EXPECT_EQ(project.Litter(), Texts{});
    }
}

namespace {

constexpr int kNoMount = 77;

// Runs a script with its own mounts, which end with it. It exits with kNoMount if mounting is not allowed.
ProgramRun RunWithMounts(const std::string& script, const std::string& directory)
{
    return RunProgram({"/usr/bin/unshare", "--map-root-user", "--mount", "/bin/sh", "-c", script}, directory);
}

bool MayNotMount(const ProgramRun& run)
{
    return run.status == kNoMount || run.errors.starts_with("unshare: ");
}

} // namespace

TEST(Faults, AFullDiskLeavesTheOldFile)
{
    const Project project(60);
    project.PutOldTags();
    const std::string disk = ShellWord(project.directory / "tags.d");
    const std::string script = "mount -t tmpfs -o size=16k none " + disk +
                               " || exit 77\n"
                               "printf 'name\\tx.c\\t1;\"\\tf\\n' >" +
                               disk + "/tags\n" + ShellWord(CPLUSTAGS) + " -f " + disk + "/tags -L " +
                               ShellWord(project.directory / "list") + "\necho \"status $?\"; cat " + disk +
                               "/tags; ls -A " + disk + "\n";
    const ProgramRun run = RunWithMounts(script, project.directory.Path());
    if (MayNotMount(run))
        GTEST_SKIP() << "this system lets nobody mount here: " << run.errors;
    EXPECT_EQ(run.status, 0) << run.errors;
    EXPECT_EQ(run.output, "status 1\nname\tx.c\t1;\"\tf\ntags\n");
    EXPECT_NE(run.errors.find("No space left on device"), std::string::npos) << run.errors;
}

TEST(Faults, TemporariesGoBesideTheTagsFileWhenMemoryHasNoRoom)
{
    const Project project(40);
    // For each number of files, another step fails first.
    const std::string script = "for files in 1 2 3 4 5 6 7 8; do\n"
                               "mount -t tmpfs -o size=256m,nr_inodes=$files none /dev/shm || exit 77\n" +
                               ShellWord(CPLUSTAGS) + " -f " + ShellWord(project.Target()) + " -L " +
                               ShellWord(project.directory / "list") +
                               " || echo \"status $? with $files\"\n"
                               "ls -A /dev/shm; umount /dev/shm; done\n";
    const ProgramRun run = RunWithMounts(script, project.directory.Path());
    if (MayNotMount(run))
        GTEST_SKIP() << "this system lets nobody mount here: " << run.errors;
    EXPECT_EQ(run.status, 0) << run.errors;
    EXPECT_EQ(run.output, "");
    EXPECT_EQ(run.errors, "");
    EXPECT_EQ(project.Litter(), Texts{});
    EXPECT_NE(Content(project.Target()).find("function_39_19\t"), std::string::npos);
}

TEST(Faults, AFileThatMayNotGrowLeavesTheOldFile)
{
    const Project project(60);
    project.PutOldTags();
    const std::string command = "ulimit -f 16; exec " + ShellWord(CPLUSTAGS) + " -f " + ShellWord(project.Target()) +
                                " -L " + ShellWord(project.directory / "list");
    const ProgramRun run = RunProgram({"/bin/sh", "-c", command}, project.directory.Path());
    EXPECT_EQ(run.status, 1) << run.errors;
    EXPECT_NE(run.errors.find(project.Target()), std::string::npos) << run.errors;
    EXPECT_EQ(Content(project.Target()), kOldTags);
    EXPECT_EQ(project.Litter(), Texts{});
}

TEST(Faults, TheProgramEndsAsShellsExpectWhenItsOutputIsClosed)
{
    const Project project(60);
    fs::create_directory(project.directory / "scratch");
    for (const auto answer : {SIG_DFL, SIG_IGN}) {
        const LostReader nobody;
        const StartedWith started(SIGPIPE, answer);
        RunningProgram running({CPLUSTAGS, "-f", "-", "-L", project.directory / "list"}, project.directory.Path(),
                               {{"TMPDIR", project.directory / "scratch"}}, nobody.Output());
        const ProgramRun run = running.Wait();
        EXPECT_EQ(run.signal, SIGPIPE) << "status " << run.status;
        EXPECT_EQ(run.errors, "");
        EXPECT_TRUE(fs::is_empty(project.directory / "scratch"));
    }
}

} // namespace
} // namespace cplustags
