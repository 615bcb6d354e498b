// The list of completions after its document is closed, with the real plug-in.
#include "tests/support/TempDirectory.h"
#include "wren/core/PluginBundle.h"
#include "wren/script/HeadlessStage.h"
#include "wren/script/ScriptSession.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <memory>
#include <optional>
#include <string>

using wren::Json;

namespace {

// The plug-in starts once in a process, so all tests share one session.
class ClosedDocument : public testing::Test {
protected:
    static void SetUpTestSuite()
    {
        home.emplace();
        ::setenv("HOME", home->Path().c_str(), 1);
        std::string error;
        bundle = wren::PluginBundle::Load(DECLARATION_BUNDLE, &error);
        ASSERT_NE(bundle, nullptr) << error;
        stage.emplace(*bundle, "");
        session.emplace(*stage);
    }
    static void TearDownTestSuite()
    {
        session.reset();
        stage.reset();
        bundle.reset();
        home.reset();
    }

    ClosedDocument() { folder.Write("tags", "plotter\tplot.c\t1;\"\tf\nplotting\tplot.c\t1;\"\tf\n"); }
    ~ClosedDocument() override { session->TheHost().AllDocuments().CloseAll(); }

    // Executes a line of a script; see tests/scripts.
    Json Answer(const Json& line)
    {
        const Json answer = session->Answer(line.dump());
        EXPECT_EQ(answer.value("ok", false), true) << line << answer;
        return answer;
    }
    long Open(const char* name)
    {
        return Answer({{"do", "document"}, {"path", folder.Write(name, "")}}).at("document");
    }
    // Afterwards the list with both names is open.
    long TypeUntilListed()
    {
        Answer({{"do", "type"}, {"text", "plo"}});
        Answer({{"do", "settle"}}); // loads the names
        Answer({{"do", "key"}, {"key", "t"}});
        const Json windows = Windows();
        EXPECT_EQ(windows.size(), 1u);
        EXPECT_EQ(windows.at(0).at("list").at("items"), (Json{"plotter", "plotting"}));
        return windows.at(0).at("window");
    }
    Json Windows() { return Answer({{"do", "state"}}).at("state").at("windows"); }
    void Close(long document) { session->TheHost().AllDocuments().Close(document); }
    std::string Text(long document) { return session->TheHost().AllDocuments().Find(document)->Text(); }

    static inline std::optional<TempDirectory> home;
    static inline std::unique_ptr<wren::PluginBundle> bundle;
    static inline std::optional<wren::HeadlessStage> stage;
    static inline std::optional<wren::ScriptSession> session;
    TempDirectory folder;
};

TEST_F(ClosedDocument, AnEntryChosenAfterwardsIsDropped)
{
    const long document = Open("a.c");
    const long list = TypeUntilListed();
    Close(document);
    Answer({{"do", "invoke"}, {"window", list}, {"index", 1}});
    EXPECT_EQ(Windows(), Json::array()) << "the list closes as after any choice";
}

TEST_F(ClosedDocument, AnEntryOnItsWayIsDropped)
{
    const long document = Open("a.c");
    const long list = TypeUntilListed();
    ASSERT_TRUE(stage->Display().InvokeItem(list, 1));
    Close(document);
    stage->Settle();
    EXPECT_EQ(Windows(), Json::array());
}

TEST_F(ClosedDocument, AnEntryIsNotWrittenIntoTheNewFrontDocument)
{
    const long other = Open("b.c");
    Answer({{"do", "type"}, {"text", "x = plo"}});
    const long document = Open("a.c");
    const long list = TypeUntilListed();
    Close(document);
    session->TheHost().MakeCurrent(*session->TheHost().AllDocuments().Find(other));
    Answer({{"do", "invoke"}, {"window", list}, {"index", 1}});
    EXPECT_EQ(Text(other), "x = plo");
    EXPECT_EQ(Windows(), Json::array());
}

TEST_F(ClosedDocument, AReopenedFileIsAnotherDocument)
{
    const long document = Open("a.c");
    const long left = TypeUntilListed();
    Close(document);
    const long again = Open("a.c");
    EXPECT_NE(again, document);
    const long list = TypeUntilListed();
    EXPECT_NE(list, left) << "the first letters close what the other has left";
    Answer({{"do", "invoke"}, {"window", list}, {"index", 1}});
    EXPECT_EQ(Text(again), "plotting");
}

} // namespace
