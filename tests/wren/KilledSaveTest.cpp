#include "tests/support/TempDirectory.h"
#include "wren/core/Documents.h"
#include "wren/core/OverwrittenCopy.h"
#include "wren/core/TemporaryFile.h"
#include "wren/core/TextFile.h"

#include <algorithm>
#include <csignal>
#include <fcntl.h>
#include <filesystem>
#include <functional>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace fs = std::filesystem;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

namespace {

struct Texts {
    const char* why;
    std::string old;
    std::string next;
};

const Texts kTexts[] = {
    {"a longer text", "the old text", "the new text, which is longer"},
    {"a shorter text", "the old text, which is longer", "the new text"},
    {"an empty text", "the old text", ""},
    {"a text for an empty file", "", "the new text"},
    {"bytes of any kind",
     std::string("a\0\n\xff"
                 "b",
                 5),
     std::string("\0\0a\n\xfe\n", 6)},
};

class KilledSave : public ::testing::Test {
protected:
    KilledSave()
    {
        ::setenv("HOME", home.Path().c_str(), 1);
        ::unsetenv("XDG_STATE_HOME");
        wren::KeepRecordsOfSaves();
    }
    std::string InState(const std::string& leaf) const { return (home / ".local/state/wren/") + leaf; }

    // Saves, one byte a step, in a process that is killed before the step 'steps'; false when it has fewer steps.
    static bool SaveAndKill(const std::string& file, const std::string& text, int steps)
    {
        const pid_t child = ::fork();
        if (child == 0) {
            std::string error;
            const auto count = [&steps] { return steps-- == 0 ? ::kill(::getpid(), SIGKILL) : 0; };
            ::_exit(wren::WriteWholeFile(file, text, &error, {[&] { count(); }, 1}) ? 0 : 1);
        }
        int status = -1;
        ::waitpid(child, &status, 0);
        EXPECT_TRUE(WIFSIGNALED(status) || (WIFEXITED(status) && WEXITSTATUS(status) == 0)) << status;
        return WIFSIGNALED(status);
    }
    // A file with another name, torn by a kill.
    std::string TornFile(const std::string& leaf)
    {
        const std::string file = directory.Write(leaf, "old text");
        fs::create_hard_link(file, file + ".2");
        for (int steps = 0; Content(file) == "old text"; ++steps)
            EXPECT_TRUE(SaveAndKill(file, "new text, longer", steps));
        EXPECT_NE(Content(file), "new text, longer");
        return file;
    }
    // Leaves the temporary of a save of "a.c" that was killed in the middle of writing.
    std::string LeaveTemporary()
    {
        const std::string file = directory.Write("a.c", "old");
        const std::vector<std::string> before = In(directory.Path());
        for (int steps = 0;; ++steps) {
            EXPECT_TRUE(SaveAndKill(file, "new", steps));
            for (const std::string& leaf : In(directory.Path()))
                if (std::find(before.begin(), before.end(), leaf) == before.end() &&
                    fs::file_size(directory / leaf) > 1)
                    return directory / leaf;
        }
    }
    static std::string Content(const std::string& file)
    {
        std::string error;
        return wren::ReadWholeFile(file, &error).value_or("(" + error + ")");
    }
    static std::vector<std::string> In(const std::string& directory)
    {
        std::vector<std::string> leaves;
        std::error_code none;
        for (const fs::directory_entry& entry : fs::directory_iterator(directory, none))
            leaves.push_back(entry.path().filename());
        std::sort(leaves.begin(), leaves.end());
        return leaves;
    }

    const TempDirectory home;
    const TempDirectory directory;
};

std::vector<std::string> Offered()
{
    std::vector<std::string> texts;
    for (const wren::OverwrittenText& each : wren::LeftOverwritten())
        texts.push_back(each.path + ": " + each.text);
    return texts;
}

} // namespace

TEST_F(KilledSave, AFileWithHardLinksIsOldOrNewOrItsOldTextIsOffered)
{
    for (const Texts& texts : kTexts) {
        SCOPED_TRACE(texts.why);
        const std::string file = directory.Write("a.c", texts.old);
        fs::remove(directory / "b.c");
        fs::create_hard_link(file, directory / "b.c");
        int offered = 0;
        for (int steps = 0; SaveAndKill(file, texts.next, steps); ++steps) {
            SCOPED_TRACE(steps);
            const std::string now = Content(directory / "b.c");
            if (now == texts.old || now == texts.next) {
                EXPECT_THAT(wren::LeftOverwritten(), IsEmpty());
            } else {
                EXPECT_THAT(Offered(), ElementsAre(file + ": " + texts.old));
                ++offered;
                for (const wren::OverwrittenText& each : wren::LeftOverwritten())
                    fs::remove(each.file);
            }
            EXPECT_THAT(In(InState("overwritten")), IsEmpty()) << "what nobody needs is gone";
            directory.Write("a.c", texts.old);
        }
        EXPECT_EQ(Content(directory / "b.c"), texts.next);
        if (!texts.old.empty() && !texts.next.empty()) {
            EXPECT_GT(offered, 0) << "no kill has torn the file";
        }
    }
}

TEST_F(KilledSave, AReplacedFileIsOldOrNewAndTheNextSaveRemovesTheLeftover)
{
    for (const bool exists : {true, false}) {
        const std::string file = directory / "a.c";
        for (int steps = 0;; ++steps) {
            SCOPED_TRACE(steps);
            fs::remove(file);
            if (exists)
                directory.Write("a.c", "old");
            if (!SaveAndKill(file, "new text", steps))
                break;
            EXPECT_TRUE(Content(file) == "new text" || (exists ? Content(file) == "old" : !fs::exists(file)));
            std::string error;
            EXPECT_TRUE(wren::WriteWholeFile(directory / "other.c", "text", &error)) << error;
            EXPECT_TRUE(fs::remove(directory / "other.c"));
            EXPECT_THAT(In(directory.Path()), SizeIs(fs::exists(file) ? 1 : 0)) << "the file alone";
            EXPECT_THAT(In(InState("saving")), IsEmpty());
        }
    }
}

TEST_F(KilledSave, OnlyRecordedTemporariesAreRemoved)
{
    directory.Write(".wren-999999999-1", "a tree's");
    fs::create_symlink(directory / "a.c", directory / ".wren-999999999-2");
    EXPECT_TRUE(fs::exists(LeaveTemporary()));
    wren::RemoveLeftTemporaries();
    EXPECT_THAT(In(directory.Path()), ElementsAre(".wren-999999999-1", ".wren-999999999-2", "a.c"));
}

TEST_F(KilledSave, OtherFilesInPlaceOfATemporaryStay)
{
    const std::string linked = LeaveTemporary();
    fs::create_hard_link(linked, linked + "-link");
    wren::RemoveLeftTemporaries();
    EXPECT_TRUE(fs::exists(linked)) << "somebody has given it another name";
    fs::remove(linked);

    const std::string replaced = LeaveTemporary();
    fs::rename(directory.Write("theirs", "theirs"), replaced);
    wren::RemoveLeftTemporaries();
    EXPECT_EQ(Content(replaced), "theirs");

    const std::string link = LeaveTemporary();
    const std::string precious = directory.Write("precious", "");
    fs::remove(link);
    fs::create_symlink(precious, link);
    wren::RemoveLeftTemporaries();
    EXPECT_TRUE(fs::is_symlink(link));
    EXPECT_TRUE(fs::exists(precious));

    const std::string made = LeaveTemporary();
    fs::remove(made);
    fs::create_directory(made);
    wren::RemoveLeftTemporaries();
    EXPECT_TRUE(fs::is_directory(made));
    EXPECT_THAT(In(InState("saving")), IsEmpty());
}

TEST_F(KilledSave, FilesOfARunningEditorStay)
{
    const std::string file = directory.Write("a.c", "old text");
    fs::create_hard_link(file, directory / "b.c");
    const std::string plain = directory.Write("plain.c", "old text");
    std::string error;
    int looked = 0;
    const std::function<void()> look = [&] {
        const pid_t other = ::fork();
        if (other == 0) {
            wren::RemoveLeftTemporaries();
            ::_exit(wren::LeftOverwritten().empty() ? 0 : 1);
        }
        int status = -1;
        ::waitpid(other, &status, 0);
        EXPECT_EQ(status, 0) << looked;
        ++looked;
    };
    for (const std::string& each : {file, plain}) {
        EXPECT_TRUE(wren::WriteWholeFile(each, "new text, longer", &error, {look, 4})) << error;
        EXPECT_EQ(Content(each), "new text, longer");
    }
    EXPECT_GT(looked, 10);
}

TEST_F(KilledSave, TheOldTextOfAVanishedFileIsOffered)
{
    const std::string file = TornFile("a.c");
    fs::remove_all(directory.Path());
    EXPECT_THAT(Offered(), ElementsAre(file + ": old text"));
    EXPECT_THAT(Offered(), ElementsAre(file + ": old text")) << "offering removes nothing";
}

TEST_F(KilledSave, NothingIsOfferedOnceTheFileIsWholeAgain)
{
    for (const char* whole : {"old text", "new text, longer"}) {
        TornFile("a.c");
        EXPECT_THAT(Offered(), SizeIs(1));
        directory.Write("a.c", whole);
        EXPECT_THAT(Offered(), IsEmpty()) << whole;
        EXPECT_THAT(In(InState("overwritten")), IsEmpty());
        fs::remove(directory / "a.c.2");
    }
}

TEST_F(KilledSave, DamagedCopiesAreSkippedAndStay)
{
    const std::string file = TornFile("a.c");
    const std::string copy = wren::LeftOverwritten().at(0).file;
    const std::string whole = Content(copy);
    for (const std::string& damaged :
         {std::string(), whole.substr(0, 10), whole.substr(0, whole.find('\n')), whole.substr(0, whole.size() - 1),
          whole + "more", "x" + whole, std::string(whole).replace(whole.find('/'), 1, "x")}) {
        home.Write(fs::relative(copy, home.Path()), damaged);
        EXPECT_THAT(Offered(), IsEmpty()) << damaged;
        EXPECT_TRUE(fs::exists(copy)) << damaged;
    }
    ASSERT_EQ(::mkfifo(InState("overwritten/pipe.copy").c_str(), 0600), 0);
    home.Write(fs::relative(copy, home.Path()), whole);
    EXPECT_THAT(Offered(), ElementsAre(file + ": old text"));
}

TEST_F(KilledSave, SeveralTextsAreOfferedTheOldestFirst)
{
    const std::string one = TornFile("one.c");
    const std::string torn = Content(one);
    for (int steps = 0; Content(one) == torn; ++steps)
        ASSERT_TRUE(SaveAndKill(one, "other new text", steps));
    const std::string two = TornFile("two.c");
    const std::vector<wren::OverwrittenText> left = wren::LeftOverwritten();
    ASSERT_THAT(left, SizeIs(3));
    EXPECT_TRUE(
        std::is_sorted(left.begin(), left.end(), [](const auto& a, const auto& b) { return a.savedAt < b.savedAt; }));
    EXPECT_THAT(Offered(), ::testing::UnorderedElementsAre(one + ": old text", one + ": " + torn, two + ": old text"));
}
