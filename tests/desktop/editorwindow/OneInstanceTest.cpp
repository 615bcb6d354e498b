#include "wren/desktop/OneInstance.h"
#include "base/Hash.h"
#include "tests/desktop/editorwindow/EditorStory.h"
#include "tests/support/RunProgram.h"
#include "wren/core/Host.h"
#include "wren/desktop/MainWindow.h"
#include "wren/desktop/OpenRequests.h"

#include <QDialog>
#include <QTest>

#include <array>
#include <future>
#include <optional>
#include <sys/socket.h>
#include <sys/un.h>

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using wren::Answer;
using wren::InstanceDoor;
using wren::Place;

namespace {

constexpr std::chrono::seconds kLong(60);

// An editor that runs, and a second start that asks it.
class RunningEditor : public EditorStory {
protected:
    ~RunningEditor() override { requests.reset(); }

    void StartListening(const std::vector<std::string>& files)
    {
        Start(files);
        base::Result<std::optional<wren::Claim>> claim = wren::ClaimPlace(place);
        ASSERT_TRUE(claim && *claim);
        requests.emplace(TheEditor(), std::move(**claim));
    }

    std::future<Answer> Ask(const std::vector<Place>& places, bool waits)
    {
        return std::async(std::launch::async, [=, this] {
            return wren::AskRunning(place, {places, waits, ""}, kLong);
        });
    }
    Answer ResultOf(std::future<Answer>& answer)
    {
        Until([&] { return IsThere(answer); });
        return answer.get();
    }
    static bool IsThere(const std::future<Answer>& answer)
    {
        return answer.wait_for(std::chrono::seconds(0)) == std::future_status::ready;
    }

    const std::string place = home / "place";
    std::optional<wren::OpenRequests> requests;
};

// The program itself, twice.
class TwoStarts : public EditorStory {
protected:
    TwoStarts()
    {
        std::filesystem::create_directory(home / "run");
        std::filesystem::permissions(home / "run", std::filesystem::perms(0700));
        environment = {{"HOME", home.Path()},   {"QT_QPA_PLATFORM", "offscreen"},   {"XDG_STATE_HOME", ""},
                       {"XDG_CONFIG_HOME", ""}, {"XDG_CACHE_HOME", home / "cache"}, {"XDG_RUNTIME_DIR", home / "run"}};
    }
    static bool UntilOutside(const std::function<bool()>& holds) { return QTest::qWaitFor(holds, 120'000); }

    std::string SessionIn() const { return Content(InState("session.json")); }

    // The editor that has the socket; 0 for none.
    pid_t Listening() const
    {
        std::error_code none;
        for (const auto& entry : std::filesystem::directory_iterator(home / "run/wren", none)) {
            if (!entry.is_socket())
                continue;
            const base::Descriptor socket(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0));
            sockaddr_un address{};
            address.sun_family = AF_UNIX;
            entry.path().string().copy(address.sun_path, sizeof(address.sun_path) - 1);
            ucred peer{};
            socklen_t size = sizeof(peer);
            if (::connect(socket.Number(), reinterpret_cast<const sockaddr*>(&address), sizeof(address)) == 0 &&
                ::getsockopt(socket.Number(), SOL_SOCKET, SO_PEERCRED, &peer, &size) == 0)
                return peer.pid;
        }
        return 0;
    }

    std::map<std::string, std::string> environment;
};

} // namespace

TEST_F(RunningEditor, OpensWhatALaterStartAsksFor)
{
    StartListening({home.Write("a.c", "int a;\n")});
    auto answer = Ask({{home.Write("b.c", "int a;\nint b;\n"), 2, 5}, {home / "new.c", 0, 0}}, false);
    EXPECT_EQ(ResultOf(answer), Answer::Taken);
    Until([&] { return requests->IsIdle() && Tabs().size() == 3; });
    EXPECT_THAT(Tabs(), ElementsAre("a.c", "b.c", "new.c"));
    TheEditor().Actions().documents.Open(home / "b.c");
    EXPECT_EQ(View().Caret(), 11);
    EXPECT_TRUE(TheEditor().Window().isActiveWindow());
    Until([&] { return requests->Door().Visitors() == 0; });
}

TEST_F(RunningEditor, ThoseWhoWaitHearThatTheirTextsWereClosed)
{
    StartListening({home.Write("a.c", "int a;\n")});
    auto answer = Ask({{home.Write("b.c", "b"), 0, 0}, {home.Write("c.c", "c"), 0, 0}}, true);
    Until([&] { return Tabs().size() == 3; });
    CloseTab(1);
    CloseTab(0);
    EXPECT_THAT(Tabs(), ElementsAre("c.c"));
    EXPECT_EQ(requests->Door().Visitors(), 1u);
    EXPECT_FALSE(IsThere(answer));
    CloseTab(0);
    EXPECT_EQ(ResultOf(answer), Answer::Closed);
}

TEST_F(RunningEditor, ThoseWhoWaitHearThatTheEditorEnds)
{
    StartListening({});
    auto answer = Ask({{home.Write("b.c", "b"), 0, 0}}, true);
    Until([&] { return CurrentTab() == "b.c"; });
    requests.reset();
    EXPECT_EQ(ResultOf(answer), Answer::Closed);
}

TEST_F(RunningEditor, WhatCannotBeOpenedIsSaid)
{
    StartListening({});
    hands.AnswerNextAlert("OK");
    auto answer = Ask({{home / "nowhere/b.c", 0, 0}}, true);
    EXPECT_EQ(ResultOf(answer), Answer::Failed);
    EXPECT_THAT(hands.TakeHeard(), ElementsAre(HasSubstr("nowhere")));
}

TEST_F(RunningEditor, ARequestWaitsForTheAnswerToAQuestion)
{
    StartListening({home.Write("a.c", "int a;\n")});
    QDialog question(&TheEditor().Window());
    question.setModal(true);
    question.show();
    auto answer = Ask({{home.Write("b.c", "b"), 0, 0}}, false);
    EXPECT_EQ(ResultOf(answer), Answer::Taken);
    EXPECT_THAT(Tabs(), ElementsAre("a.c"));
    EXPECT_FALSE(requests->IsIdle());
    question.close();
    Until([&] { return requests->IsIdle(); });
    EXPECT_THAT(Tabs(), ElementsAre("a.c", "b.c"));
}

TEST_F(RunningEditor, AVisitorThatSaysTooMuchTooLittleOrNonsenseIsSentAway)
{
    const std::string nonsense = "hello" + std::string(wren::kEndOfRequest);
    const std::string much(wren::OpenRequest::kMostBytes + 1, 'a');
    for (const std::string& said : {std::string("wren-open-1"), nonsense, much}) {
        base::Result<std::optional<wren::Claim>> claim = wren::ClaimPlace(place);
        ASSERT_TRUE(claim && *claim);
        InstanceDoor door(std::move((*claim)->listener), std::chrono::milliseconds(200));
        auto heard = std::async(std::launch::async, [&] {
            const base::Descriptor socket(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0));
            sockaddr_un address{};
            address.sun_family = AF_UNIX;
            place.copy(address.sun_path, sizeof(address.sun_path) - 1);
            EXPECT_EQ(::connect(socket.Number(), reinterpret_cast<const sockaddr*>(&address), sizeof(address)), 0);
            for (size_t sent = 0; sent < said.size();) {
                const ssize_t more = ::send(socket.Number(), said.data() + sent, said.size() - sent, MSG_NOSIGNAL);
                if (more <= 0)
                    break;
                sent += static_cast<size_t>(more);
            }
            std::array<char, 64> answer{};
            const ssize_t size = ::recv(socket.Number(), answer.data(), answer.size(), 0);
            return std::string(answer.data(), size > 0 ? static_cast<size_t>(size) : 0);
        });
        EXPECT_TRUE(QTest::qWaitFor(
            [&] { return heard.wait_for(std::chrono::seconds(0)) == std::future_status::ready; }, 120'000));
        EXPECT_EQ(heard.get(), wren::kFailed) << said.substr(0, 20);
        EXPECT_EQ(door.Visitors(), 0u);
    }
}

TEST_F(TwoStarts, TheSecondOneOpensInTheFirst)
{
    const std::string first = home.Write("first.c", "1");
    const std::string second = home.Write("second.c", "1\n2\n3\n");
    RunningProgram editor({WREN_DESKTOP, first}, home.Path(), environment);
    ASSERT_TRUE(UntilOutside([&] { return Listening() != 0 && SessionIn().find(first) != std::string::npos; }));
    const ProgramRun run = RunProgram({WREN_DESKTOP, "second.c", "+3"}, home.Path(), environment);
    EXPECT_EQ(run.status, 0) << run.errors;
    EXPECT_TRUE(UntilOutside([&] { return SessionIn().find(second) != std::string::npos; }));
    EXPECT_EQ(Listening(), editor.Process());
}

TEST_F(TwoStarts, AfterAKillTheNextOneIsTheEditor)
{
    {
        RunningProgram editor({WREN_DESKTOP, home.Write("a.c", "1")}, home.Path(), environment);
        ASSERT_TRUE(UntilOutside([&] { return Listening() == editor.Process(); }));
    }
    EXPECT_EQ(Listening(), 0);
    RunningProgram next({WREN_DESKTOP, home.Write("b.c", "1")}, home.Path(), environment);
    EXPECT_TRUE(UntilOutside([&] { return Listening() == next.Process(); }));
}

TEST_F(TwoStarts, WaitingStartsAnEditorThatLivesOnAndTellsOfItsEnd)
{
    RunningProgram waiting({WREN_DESKTOP, "--wait", home.Write("a.c", "1")}, home.Path(), environment);
    ASSERT_TRUE(UntilOutside([&] { return SessionIn().find("a.c") != std::string::npos; }));
    const std::string process = std::to_string(waiting.Process());
    const std::string editor = Content("/proc/" + process + "/task/" + process + "/children");
    ASSERT_FALSE(editor.empty());
    ::kill(std::stoi(editor), SIGKILL);
    const ProgramRun run = waiting.Wait();
    EXPECT_EQ(run.status, 1);
    EXPECT_THAT(run.errors, HasSubstr("ended before the text was closed"));
}

TEST_F(TwoStarts, FilesOpenInTheEditorOfTheirFolder)
{
    const std::string inside = home.Write("folder/deep/a.c", "1");
    const std::string outside = home.Write("b.c", "1");
    const std::string session = "session-" + base::Fnv1aDigits(home / "folder") + ".json";
    const auto sessionOf = [&](const std::string& leaf) { return Content(InState(leaf)); };
    RunningProgram editor({WREN_DESKTOP, "folder"}, home.Path(), environment);
    ASSERT_TRUE(UntilOutside([&] { return Listening() == editor.Process(); }));
    EXPECT_EQ(RunProgram({WREN_DESKTOP, inside}, home.Path(), environment).status, 0);
    EXPECT_TRUE(UntilOutside([&] { return sessionOf(session).find(inside) != std::string::npos; }));
    RunningProgram other({WREN_DESKTOP, outside}, home.Path(), environment);
    EXPECT_TRUE(UntilOutside([&] { return sessionOf("session.json").find(outside) != std::string::npos; }));
    EXPECT_EQ(sessionOf(session).find(outside), std::string::npos);
}

TEST_F(TwoStarts, OneOfItsOwnIsNotFound)
{
    const std::string file = home.Write("a.c", "1");
    RunningProgram editor({WREN_DESKTOP, "--new-instance", file}, home.Path(), environment);
    ASSERT_TRUE(UntilOutside([&] { return SessionIn().find(file) != std::string::npos; }));
    EXPECT_EQ(Listening(), 0);
}

TEST(PlacesFrom, Cases)
{
    const TempDirectory home;
    const std::string plus = home.Write("+4", "");
    struct Case {
        std::vector<std::string> words;
        std::vector<std::string> places;
    };
    const Case cases[] = {
        {{"a.c"}, {"a.c:0:0"}},
        {{"a.c:7"}, {"a.c:7:0"}},
        {{"+12", "a.c"}, {"a.c:12:0"}},
        {{"a.c", "+12:3"}, {"a.c:12:3"}},
        {{"a.c", "+12", "b.c"}, {"a.c:0:0", "b.c:12:0"}},
        {{"a.c:7", "+12"}, {"a.c:7:0"}},
        {{"+12"}, {}},
        {{"+x"}, {"+x:0:0"}},
        {{"+"}, {"+:0:0"}},
        {{plus}, {plus + ":0:0"}},
    };
    for (const Case& each : cases) {
        std::vector<std::string> places;
        for (const Place& place : wren::PlacesFrom(each.words))
            places.push_back(place.file + ':' + std::to_string(place.line) + ':' + std::to_string(place.column));
        EXPECT_EQ(places, each.places) << each.words.front();
    }
}
