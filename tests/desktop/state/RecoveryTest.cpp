#include "wren/desktop/state/Recovery.h"

#include "tests/desktop/state/StateDirectoryFixture.h"

#include <filesystem>
#include <functional>
#include <gmock/gmock.h>
#include <sys/wait.h>
#include <unistd.h>

namespace fs = std::filesystem;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using wren::UnsavedText;

namespace {

class Recovery : public StateDirectoryFixture {
protected:
    // What an editor does that is killed afterwards.
    void InAKilledEditor(const std::function<void(wren::Recovery&)>& what)
    {
        const pid_t child = ::fork();
        if (child == 0) {
            wren::Recovery editor([](long, const std::string& problem) {
                if (!problem.empty())
                    ::_exit(1);
            });
            what(editor);
            editor.Finish();
            ::_exit(editor.Problem().empty() ? 0 : 1);
        }
        int status = -1;
        ::waitpid(child, &status, 0);
        EXPECT_EQ(status, 0);
    }
    size_t Directories() const
    {
        return std::distance(fs::directory_iterator(InState("recovery")), fs::directory_iterator());
    }
};

std::vector<std::string> Described(const std::vector<UnsavedText>& texts)
{
    std::vector<std::string> described;
    for (const UnsavedText& text : texts)
        described.push_back(text.path + ": " + text.text);
    return described;
}

} // namespace

TEST_F(Recovery, FindsTheTextsOfAKilledEditor)
{
    InAKilledEditor([](wren::Recovery& editor) {
        editor.Keep(1, "/odd \xff.c", "first");
        editor.Keep(1, "/odd \xff.c", std::string("a\n\0\xfe", 4));
        editor.Keep(2, "", "no file");
        editor.Keep(3, "/c.c", "saved since");
        editor.Forget(3);
        editor.Forget(9);
    });
    const wren::Recovery next;
    EXPECT_EQ(next.Problem(), "");
    EXPECT_THAT(Described(next.Left()), ElementsAre(std::string("/odd \xff.c: a\n\0\xfe", 14), ": no file"));
    EXPECT_THAT(next.Left().front().savedAt, ::testing::MatchesRegex("20..-..-.. ..:..:.."));
    EXPECT_EQ(next.Left().size(), 2u) << "reading removes nothing";
}

TEST_F(Recovery, KnowsTheOriginalFileOfACopy)
{
    const wren::FileMark was = {base::FileIdentity{0, 7, 3, {1'700'000'000, 123'456'789}}, "digest"};
    InAKilledEditor([&](wren::Recovery& editor) { editor.Keep(1, "/a.c", "text", was); });
    const std::string directory = fs::directory_iterator(InState("recovery"))->path();
    const std::string name = fs::path(directory).filename();
    home.Write(".local/state/wren/recovery/" + name + "/2.copy",
               "{\"path\": \"/b.c\", \"savedAt\": \"9\", \"size\": 4}\ntext");
    const wren::Recovery next;
    ASSERT_THAT(Described(next.Left()), ElementsAre("/a.c: text", "/b.c: text"));
    EXPECT_EQ(next.Left()[0].was, was);
    EXPECT_EQ(next.Left()[1].was, wren::FileMark()) << "one that does not say";
}

TEST_F(Recovery, ForgetsDiscardedTexts)
{
    InAKilledEditor([](wren::Recovery& editor) {
        editor.Keep(1, "/a.c", "one");
        editor.Keep(2, "/b.c", "two");
    });
    wren::Recovery next;
    const std::vector<UnsavedText> left = next.Left();
    next.Discard(left.at(0));
    EXPECT_THAT(Described(next.Left()), ElementsAre("/b.c: two"));
    next.Discard(left.at(1));
    next.Discard(left.at(1));
    EXPECT_THAT(next.Left(), IsEmpty());
    EXPECT_EQ(Directories(), 1u) << "its own";
}

TEST_F(Recovery, LeavesTheTextsOfARunningEditorAlone)
{
    wren::Recovery running;
    running.Keep(1, "/a.c", "text");
    const wren::Recovery next;
    EXPECT_THAT(next.Left(), IsEmpty());
    EXPECT_THAT(running.Left(), IsEmpty());
}

TEST_F(Recovery, LeavesNothingAfterARegularQuit)
{
    {
        wren::Recovery editor;
        editor.Keep(1, "/a.c", "text");
        EXPECT_EQ(Directories(), 1u);
    }
    EXPECT_EQ(Directories(), 0u);
}

TEST_F(Recovery, RemovesLeftoversOfKilledEditorsWithoutCopies)
{
    InAKilledEditor([](wren::Recovery&) {});
    EXPECT_EQ(Directories(), 1u);
    {
        const wren::Recovery next;
    }
    EXPECT_EQ(Directories(), 0u);
}

TEST_F(Recovery, SkipsDamagedCopiesAndNeverRemovesThem)
{
    InAKilledEditor([](wren::Recovery& editor) { editor.Keep(1, "/a.c", "good"); });
    const std::string directory = fs::directory_iterator(InState("recovery"))->path();
    const std::string name = fs::path(directory).filename();
    const char* const kDamaged[] = {
        "",
        "no line",
        "no JSON\ntext",
        "{}\ntext",
        "{\"path\": \"/b\", \"savedAt\": \"x\", \"size\": 5}\ncut",
        "{\"path\": 7, \"savedAt\": \"x\", \"size\": 4}\ntext",
        "{\"path\": \"/b\", \"savedAt\": 7, \"size\": 4}\ntext",
        "{\"path\": \"/b\", \"savedAt\": \"x\", \"size\": \"4\"}\ntext",
        "{\"path\": \"/b\", \"savedAt\": \"x\", \"size\": 4, \"was\": 7}\ntext",
    };
    int number = 100;
    for (const char* damaged : kDamaged)
        home.Write(".local/state/wren/recovery/" + name + "/" + std::to_string(++number) + ".copy", damaged);
    {
        wren::Recovery next;
        EXPECT_THAT(Described(next.Left()), ElementsAre("/a.c: good"));
        next.Discard(next.Left().front());
        EXPECT_THAT(next.Left(), IsEmpty());
    }
    for (; number > 100; --number)
        EXPECT_TRUE(fs::exists(directory + "/" + std::to_string(number) + ".copy")) << kDamaged[number - 101];
}

TEST_F(Recovery, SaysWhyNothingCanBeKept)
{
    home.Write(".local/state/wren/recovery", "in the way");
    wren::Recovery blocked;
    EXPECT_THAT(blocked.Problem(), HasSubstr("recovery: "));
    blocked.Keep(1, "/a.c", "text");
    EXPECT_THAT(blocked.Left(), IsEmpty());

    ::unsetenv("HOME");
    wren::Recovery homeless;
    EXPECT_THAT(homeless.Problem(), HasSubstr("no home directory"));
    homeless.Keep(1, "/a.c", "text");
    EXPECT_THAT(homeless.Left(), IsEmpty());
}

TEST_F(Recovery, ReportsTheOutcomeOfEachCopy)
{
    std::vector<std::string> told;
    wren::Recovery editor(
        [&](long document, const std::string& problem) { told.push_back(std::to_string(document) + ": " + problem); });
    editor.Keep(12, "/a.c", "text");
    editor.Finish();
    EXPECT_TRUE(editor.Holds(12, "text"));
    EXPECT_FALSE(editor.Holds(12, "another"));
    EXPECT_FALSE(editor.Holds(7, "text"));
    fs::remove_all(InState("recovery"));
    editor.Keep(7, "/a.c", "text");
    editor.Finish();
    EXPECT_FALSE(editor.Holds(7, "text"));
    EXPECT_THAT(told, ElementsAre("12: ", "7: No such file or directory"));
}

TEST_F(Recovery, RetriesOnceTheObstacleIsGone)
{
    const std::string inTheWay = home.Write(".local/state/wren/recovery", "in the way");
    wren::Recovery editor;
    EXPECT_FALSE(editor.Retry());
    EXPECT_THAT(editor.Problem(), HasSubstr("recovery: "));
    fs::remove(inTheWay);
    EXPECT_TRUE(editor.Retry());
    EXPECT_EQ(editor.Problem(), "");
    editor.Keep(1, "/a.c", "text");
    editor.Finish();
    EXPECT_TRUE(editor.Holds(1, "text"));
    EXPECT_FALSE(editor.Retry()) << "nothing is wrong with it";
}

TEST_F(Recovery, RecreatesItsRemovedDirectory)
{
    wren::Recovery editor;
    editor.Keep(1, "/a.c", "text");
    editor.Finish();
    fs::remove_all(InState("recovery"));
    EXPECT_TRUE(editor.Retry());
    EXPECT_FALSE(editor.Holds(1, "text"));
    editor.Keep(1, "/a.c", "text");
    editor.Finish();
    EXPECT_TRUE(editor.Holds(1, "text"));
}
