#include "wren/desktop/state/SessionState.h"

#include "tests/desktop/state/StateDirectoryFixture.h"

#include <gmock/gmock.h>

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using wren::SessionState;

namespace {

class Session : public StateDirectoryFixture {};

SessionState Full()
{
    SessionState state;
    state.files = {{"/a/b.c", 12, 3, false}, {"/odd \xff\"\n", 0, 0, false}, {"/W", 5, 1, true, {0, 4}}};
    state.current = 2;
    state.recentFiles = {"/new", "/odd \xff"};
    state.geometry = "AdnQywAD";
    state.layout = "AAAA/wAA";
    state.panels = {"outline", "files"};
    state.marked = {{"/odd \xff", {{3, "0123456789abcdef"}, {9, ""}}}};
    return state;
}

} // namespace

TEST_F(Session, IsEmptyWhenNoneWasSaved)
{
    EXPECT_EQ(wren::LoadSession(), SessionState());
}

TEST_F(Session, KeepsPathsOfAnyBytes)
{
    std::string error;
    ASSERT_TRUE(wren::SaveSession(Full(), &error)) << error;
    EXPECT_EQ(wren::LoadSession(), Full());
    ASSERT_TRUE(wren::SaveSession(SessionState(), &error)) << error;
    EXPECT_EQ(wren::LoadSession(), SessionState());
}

TEST_F(Session, IsEmptyWhenItsFileIsDamaged)
{
    const char* const kDamaged[] = {"",
                                    "{",
                                    "[]",
                                    "7",
                                    "{\"files\": 7}",
                                    "{\"files\": [{}]}",
                                    "{\"files\": [{\"path\": {}}]}",
                                    "{\"files\": [], \"recentFiles\": [1]}",
                                    "{\"files\": [{\"path\": \"/a\", \"bookmarks\": \"x\"}]}",
                                    "{\"marked\": [{\"lines\": [1]}]}",
                                    "{\"marked\": [{\"path\": \"/a\", \"signs\": [1]}]}",
                                    "{\"geometry\": 1}",
                                    "{\"layout\": 1}",
                                    "{\"panels\": [1]}",
                                    "{\"current\": \"x\"}"};
    for (const char* damaged : kDamaged) {
        home.Write(".local/state/wren/session.json", damaged);
        EXPECT_EQ(wren::LoadSession(), SessionState()) << damaged;
    }
}

TEST_F(Session, EachFolderHasItsOwn)
{
    std::string error;
    ASSERT_TRUE(wren::SaveSession(Full(), &error, "/a")) << error;
    EXPECT_EQ(wren::LoadSession("/a"), Full());
    EXPECT_EQ(wren::LoadSession(), SessionState());
    EXPECT_EQ(wren::LoadSession("/b"), SessionState());
}

TEST_F(Session, HasNoCurrentFileBeyondItsFiles)
{
    home.Write(".local/state/wren/session.json",
               R"({"files": [{"path": "/a", "caret": -5, "firstLine": -1}], "current": 1})");
    const SessionState state = wren::LoadSession();
    EXPECT_EQ(state.current, -1);
    EXPECT_THAT(state.files, ElementsAre(SessionState::OpenFile{"/a", 0, 0, false}));
}

TEST_F(Session, HasNoMoreBookmarksThanItTakes)
{
    SessionState many;
    many.files = {{"/a", 0, 0, false, std::vector<long>(SessionState::kMostBookmarks + 1, 7)}};
    std::string error;
    ASSERT_TRUE(wren::SaveSession(many, &error)) << error;
    many.files.front().bookmarks.pop_back();
    EXPECT_EQ(wren::LoadSession(), many);
}

TEST_F(Session, SaysWhyItCannotBeSaved)
{
    home.Write(".local/state/wren", "in the way");
    std::string error;
    EXPECT_FALSE(wren::SaveSession(Full(), &error));
    EXPECT_THAT(error, HasSubstr(".local/state/wren: "));
    ::unsetenv("HOME");
    EXPECT_FALSE(wren::SaveSession(Full(), &error));
    EXPECT_THAT(error, HasSubstr("home"));
}

TEST(RecentFiles, ListTheNewestFirstWithoutDuplicates)
{
    SessionState state;
    for (const char* path : {"/a", "/b", "/a"})
        state.Opened(path);
    EXPECT_THAT(state.recentFiles, ElementsAre("/a", "/b"));
    for (size_t number = 0; number < 2 * SessionState::kMostRecent; ++number)
        state.Opened("/" + std::to_string(number));
    EXPECT_EQ(state.recentFiles.size(), SessionState::kMostRecent);
    EXPECT_EQ(state.recentFiles.front(), "/" + std::to_string(2 * SessionState::kMostRecent - 1));
}

TEST_F(Session, HasTheBookmarksOfAsManyFilesAsItTakes)
{
    SessionState state;
    for (size_t number = 0; number <= SessionState::kMostMarked; ++number)
        EXPECT_TRUE(state.SetBookmarks("/" + std::to_string(number), {{7, "a"}}));
    EXPECT_EQ(state.marked.size(), SessionState::kMostMarked);
    EXPECT_TRUE(state.BookmarksOf("/0").empty()) << "the first to come is the first to go";
    EXPECT_EQ(state.BookmarksOf("/1").size(), 1u);
    EXPECT_FALSE(state.SetBookmarks("/1", {{7, "a"}})) << "it had these";
    EXPECT_TRUE(state.SetBookmarks("/1", {}));
    EXPECT_TRUE(state.BookmarksOf("/1").empty());
    std::string error;
    ASSERT_TRUE(wren::SaveSession(state, &error)) << error;
    EXPECT_EQ(wren::LoadSession(), state);
}

TEST_F(Session, LeavesOutBookmarksThatNoTextHas)
{
    home.Write(".local/state/wren/session.json",
               "{\"marked\": [{\"path\": \"/a\", \"lines\": [-1, 3, 9e17, 5], \"signs\": [\"x\", \"y\", \"z\"]}]}");
    EXPECT_EQ(wren::LoadSession().BookmarksOf("/a"), (std::vector<wren::KeptBookmark>{{3, "y"}}));
}
