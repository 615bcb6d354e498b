// Files that lookups and completions write: compares all files around them before and after.
#include "tests/support/RunProgram.h"
#include "tests/support/TempDirectory.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <iterator>
#include <map>

namespace fs = std::filesystem;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::MatchesRegex;

namespace {

// A project, a home directory, and a directory for temporary files.
class WrittenFiles : public ::testing::Test {
protected:
    WrittenFiles()
    {
        tree.Write("project/main.c", "int name10000;\nnew\nname\nempty\n");
        tree.Write("project/empty.c", "int e;\n"); // no longer has the symbols in its tags
        for (const char* directory : {"home", "tmp"})
            fs::create_directory(tree / directory);
    }

    // Writes tags of about 'lines' lines, older than their sources, one of which is almost empty: the editor would
    // rebuild them.
    void WriteStaleTags(int lines)
    {
        std::string tags = "empty\tempty.c\t1;\"\tv\n";
        for (int i = 10'000; i < 10'000 + lines; ++i)
            tags += "name" + std::to_string(i) + "\tmain.c\t1;\"\tv\n";
        const std::string path = tree.Write("project/tags", tags);
        fs::last_write_time(path, fs::last_write_time(path) - std::chrono::hours(1000));
    }

    // Runs every kind of query. Processes that they start have ended too: they write to the same pipe.
    void AskEverything(const std::map<std::string, std::string>& changes = {})
    {
        tree.Write("tmp/system", "name10000\tmain.c\t1;\"\tv\n");
        const std::vector<std::vector<std::string>> kQuestions = {
            {"lookup", "main.c:1"},
            {"lookup", "main.c:2", "--declaration"},
            {"lookup", "--symbol", "empty", "--definition"},
            {"lookup", "--symbol", "operator<"},
            {"lookup", "--symbol", "name10000", "--in", tree / "home"},
            {"lookup", "--symbol", "name10000", "--system-tags", tree / "tmp/system"},
            {"complete", "main.c:3"},
            {"complete", "main.c:3", "--edit"},
            {"complete", "main.c:3", "--auto"},
            {"complete", "main.c:4", "--system-tags", tree / "tmp/system"},
        };
        std::map<std::string, std::string> environment = {
            {"HOME", tree / "home"}, {"XDG_CACHE_HOME", ""}, {"TMPDIR", tree / "tmp"}};
        for (const auto& [name, value] : changes)
            environment[name] = value;
        for (const std::vector<std::string>& question : kQuestions) {
            std::vector<std::string> command = {"/bin/bash",         "-o",   "pipefail",  "-c",
                                                "\"$@\" 2>&1 | cat", "bash", WREN_PROGRAM};
            command.insert(command.end(), question.begin(), question.end());
            const ProgramRun run = RunProgram(command, tree / "project", environment);
            EXPECT_TRUE(run.status == 0 || run.status == 1 || run.status == 3) << run.status << " " << run.output;
        }
        fs::remove(tree / "tmp/system");
    }

    using Files = std::map<std::string, std::string>; // path to fingerprint

    Files Now() const
    {
        Files files;
        for (const fs::directory_entry& entry : fs::recursive_directory_iterator(tree.Path())) {
            std::string& state = files[fs::relative(entry.path(), tree.Path())];
            if (entry.is_directory())
                continue;
            std::ostringstream content;
            content << entry.last_write_time().time_since_epoch().count() << std::ifstream(entry.path()).rdbuf();
            state = content.str();
        }
        return files;
    }

    // The paths of new, changed and removed files.
    std::vector<std::string> DifferencesTo(const Files& before) const
    {
        const Files after = Now();
        std::vector<Files::value_type> differences;
        std::set_symmetric_difference(before.begin(), before.end(), after.begin(), after.end(),
                                      std::back_inserter(differences));
        std::vector<std::string> paths;
        for (const auto& [path, ignored] : differences)
            if (paths.empty() || paths.back() != path)
                paths.push_back(path);
        return paths;
    }

    const TempDirectory tree;
};

} // namespace

TEST_F(WrittenFiles, AreTheSystemTagsDirectoryAndRecordsOfLargeTagsFiles)
{
    WriteStaleTags(5000);
    const Files before = Now();
    AskEverything();
    EXPECT_THAT(DifferencesTo(before), ElementsAre("home/.cache", "home/.cache/declaration",
                                                   MatchesRegex("home/.cache/declaration/[0-9a-f]+.order"),
                                                   "home/Library", "home/Library/Caches"));
    const Files once = Now();
    AskEverything();
    EXPECT_THAT(DifferencesTo(once), IsEmpty()) << "the next time all is there";
}

TEST_F(WrittenFiles, FollowTheUsersCacheDirectory)
{
    WriteStaleTags(5000);
    fs::create_directories(tree / "home/Library/Caches");
    const Files before = Now();
    AskEverything({{"XDG_CACHE_HOME", tree / "cache"}});
    EXPECT_THAT(DifferencesTo(before),
                ElementsAre("cache", "cache/declaration", MatchesRegex("cache/declaration/[0-9a-f]+.order")));
}

TEST_F(WrittenFiles, AreAbsentWhenTagsFilesAreSmallOrMissing)
{
    fs::create_directories(tree / "home/Library/Caches");
    const Files without = Now();
    AskEverything();
    EXPECT_THAT(DifferencesTo(without), IsEmpty());
    WriteStaleTags(50);
    const Files before = Now();
    AskEverything();
    EXPECT_THAT(DifferencesTo(before), IsEmpty());
}
