#include "wren/instance/Instance.h"
#include "tests/support/TempDirectory.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <future>
#include <sys/socket.h>
#include <sys/stat.h>

namespace fs = std::filesystem;
using ::testing::HasSubstr;
using ::testing::StartsWith;
using wren::Answer;
using wren::AskRunning;
using wren::Claim;
using wren::ClaimPlace;
using wren::MeetingPlace;
using wren::OpenRequest;

namespace {

constexpr std::chrono::milliseconds kSoon(20);
constexpr std::chrono::seconds kLong(30);

// What the test changes in the environment goes with it.
class Instance : public ::testing::Test {
protected:
    Instance()
    {
        Set("XDG_RUNTIME_DIR", home.Path());
        Set("XDG_STATE_HOME", home / "state");
        Set("DISPLAY", ":1");
        Set("WAYLAND_DISPLAY", "");
    }
    ~Instance() override
    {
        for (const auto& [name, value] : before)
            value ? ::setenv(name.c_str(), value->c_str(), 1) : ::unsetenv(name.c_str());
    }

    void Set(const char* name, const std::string& value)
    {
        const char* was = std::getenv(name);
        before.emplace(name, was == nullptr ? std::nullopt : std::optional<std::string>(was));
        ::setenv(name, value.c_str(), 1);
    }

    std::string Place() const { return home / "place"; }
    Claim Claimed() const
    {
        base::Result<std::optional<Claim>> claim = ClaimPlace(Place());
        return claim && *claim ? std::move(**claim) : Claim();
    }

    // Takes one request and answers it with these lines.
    static void AnswerOne(const Claim& claim, const std::string& lines)
    {
        base::Descriptor visitor;
        while (!visitor.IsOpen())
            visitor = base::Descriptor(::accept4(claim.listener.Number(), nullptr, nullptr, SOCK_CLOEXEC));
        std::string form;
        for (char each = 0; !form.ends_with(wren::kEndOfRequest) && ::read(visitor.Number(), &each, 1) == 1;)
            form.push_back(each);
        ASSERT_TRUE(wren::RequestFrom(form));
        ASSERT_EQ(::send(visitor.Number(), lines.data(), lines.size(), MSG_NOSIGNAL),
                  static_cast<ssize_t>(lines.size()));
    }

    const TempDirectory home;

private:
    std::map<std::string, std::optional<std::string>> before;
};

const OpenRequest kWaiting{{{"/a.c", 0, 0}}, true, ""};

} // namespace

TEST_F(Instance, MeetsInADirectoryOfTheUserAlone)
{
    const base::Result<std::string> place = MeetingPlace();
    ASSERT_TRUE(place);
    EXPECT_THAT(*place, StartsWith(home / "wren/"));
    struct stat status;
    ASSERT_EQ(::stat((home / "wren").c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777, 0700u);
}

TEST_F(Instance, MeetsElsewhereForAnotherStateDirectoryOrScreen)
{
    const std::string place = *MeetingPlace();
    EXPECT_EQ(*MeetingPlace(), place);
    EXPECT_NE(*MeetingPlace("/folder"), place);
    EXPECT_NE(*MeetingPlace("/folder"), *MeetingPlace("/other"));
    Set("DISPLAY", ":2");
    EXPECT_NE(*MeetingPlace(), place);
    Set("DISPLAY", ":1");
    Set("XDG_STATE_HOME", home / "other");
    EXPECT_NE(*MeetingPlace(), place);
}

TEST_F(Instance, MeetsInTheStateDirectoryWithoutARuntimeDirectory)
{
    Set("XDG_RUNTIME_DIR", "");
    const base::Result<std::string> place = MeetingPlace();
    ASSERT_TRUE(place);
    EXPECT_THAT(*place, StartsWith(home / "state/wren/"));
}

TEST_F(Instance, MeetsNowhereThatOthersCanEnter)
{
    fs::create_directory(home / "wren");
    fs::permissions(home / "wren", fs::perms(0755));
    EXPECT_FALSE(MeetingPlace());
    fs::remove(home / "wren");
    fs::create_directory(home / "own");
    fs::permissions(home / "own", fs::perms(0700));
    fs::create_directory_symlink(home / "own", home / "wren");
    EXPECT_FALSE(MeetingPlace()) << "a link";
}

TEST_F(Instance, MeetsNowhereThatIsTooLongForASocket)
{
    Set("XDG_RUNTIME_DIR", home / std::string(90, 'a'));
    const base::Result<std::string> place = MeetingPlace();
    ASSERT_FALSE(place);
    EXPECT_THAT(place.Failure().Message(), HasSubstr("too long"));
}

TEST_F(Instance, OneAtATimeHasThePlace)
{
    {
        const Claim claim = Claimed();
        ASSERT_TRUE(claim.listener.IsOpen());
        const base::Result<std::optional<Claim>> second = ClaimPlace(Place());
        ASSERT_TRUE(second);
        EXPECT_FALSE(*second);
    }
    ASSERT_TRUE(fs::exists(Place())) << "the socket of the one that has gone";
    EXPECT_TRUE(Claimed().listener.IsOpen());
}

TEST_F(Instance, ASocketThatCannotBeReplacedIsAnError)
{
    fs::create_directories(Place() + "/full");
    EXPECT_FALSE(ClaimPlace(Place()));
}

TEST_F(Instance, NobodyAnswersWhereNoEditorRuns)
{
    EXPECT_EQ(AskRunning(Place(), kWaiting, kSoon), Answer::Nobody);
    Claimed();
    EXPECT_EQ(AskRunning(Place(), kWaiting, kSoon), Answer::Nobody) << "a socket was left behind";
    const Claim claim = Claimed();
    EXPECT_EQ(AskRunning(Place(), kWaiting, kSoon), Answer::Nobody) << "an editor that hangs";
}

TEST_F(Instance, TellsWhatBecameOfTheRequest)
{
    struct Case {
        const char* lines;
        Answer answer;
    };
    const Case cases[] = {
        {"taken\nclosed\n", Answer::Closed},
        {"taken\nfailed\n", Answer::Failed},
        {"failed\n", Answer::Failed},
        {"taken\n", Answer::Ended},
        {"taken\nclo", Answer::Ended},
        {"hello\n", Answer::Nobody},
        {"", Answer::Nobody},
    };
    const Claim claim = Claimed();
    for (const Case& each : cases) {
        auto answer = std::async(std::launch::async, [&] { return AskRunning(Place(), kWaiting, kLong); });
        AnswerOne(claim, each.lines);
        EXPECT_EQ(answer.get(), each.answer) << each.lines;
    }
}

TEST_F(Instance, DoesNotWaitWhenItNeedNot)
{
    const Claim claim = Claimed();
    auto answer = std::async(std::launch::async, [&] { return AskRunning(Place(), {}, kLong); });
    AnswerOne(claim, "taken\n");
    EXPECT_EQ(answer.get(), Answer::Taken);
}
