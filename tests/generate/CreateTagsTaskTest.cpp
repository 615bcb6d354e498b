#include "generate/CreateTagsTask.h"

#include "tests/generate/Requests.h"
#include "tests/support/RefusedThreads.h"
#include "vetch/support/ShellCommand.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <condition_variable>
#include <cstdlib>
#include <mutex>
#include <unistd.h>

using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

using Commands = Requests::Commands;

// What a child would write itself, past this process's buffers.
int WriteAsAChild(const char* command, const vetch::ShellRequest&)
{
    const std::string text = std::string("[") + command + "]\n";
    return ::write(STDOUT_FILENO, text.data(), text.size()) > 0 ? 0 : -1;
}

TEST(CreateTagsTask, PrintsTheCommandBeforeItsOutput)
{
    vetch::SetShellRunner(WriteAsAChild);
    testing::internal::CaptureStdout();
    EXPECT_EQ(CreateTagsTask(new CreateParams{{"first", "\n# second\nsecond\n", "100% third"}}), nullptr);
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "executing first\n[first]\n"
                                                      "executing \n# second\nsecond\n\n[\n# second\nsecond\n]\n"
                                                      "executing 100% third\n[100% third]\n");
    vetch::SetShellRunner(nullptr);
}

TEST(CreateTagsTask, RunsEachCommandInTheProcessDirectory)
{
    testing::internal::CaptureStdout();
    CreateTagsTask(new CreateParams{{"pwd", "false; echo $((6 * 7))"}});
    char* const directory = ::getcwd(nullptr, 0);
    EXPECT_EQ(testing::internal::GetCapturedStdout(),
              "executing pwd\n" + std::string(directory) + "\nexecuting false; echo $((6 * 7))\n42\n");
    std::free(directory);
}

TEST(CreateTagsTask, RunsAllCommandsEvenAfterAFailure)
{
    Requests requests;
    requests.AnswerCommandsWith(256);
    StartCreateTagsTask({"fails", "fails too", "mv"});
    EXPECT_THAT(requests.Take(), ElementsAre(Commands{"fails", "fails too", "mv"}));
    requests.AnswerCommandsWith(-1);
    StartCreateTagsTask({"no process", "mv"});
    EXPECT_THAT(requests.Take(), ElementsAre(Commands{"no process", "mv"}));
}

// Where threads and the one that started them meet: each waits until 'expected' have arrived.
class Meeting {
public:
    explicit Meeting(int expected) : expected(expected) {}
    void Arrive()
    {
        std::unique_lock lock(mutex);
        ++arrived;
        changed.notify_all();
        changed.wait(lock, [this] { return arrived >= expected; });
    }

private:
    std::mutex mutex;
    std::condition_variable changed;
    const int expected;
    int arrived = 0;
};

// It ends only when all three are at work at the same time.
TEST(CreateTagsTask, RunsConcurrentlyWithItsCallerAndOtherTasks)
{
    Requests requests;
    Meeting meeting(3);
    requests.DuringCommands([&](const std::string&) { meeting.Arrive(); });
    StartCreateTagsTask({"one"});
    StartCreateTagsTask({"two"});
    meeting.Arrive();
    EXPECT_THAT(requests.Take(), ElementsAre(Commands{"one"}, Commands{"two"}));
}

TEST(CreateTagsTask, IsDroppedAndReportedWhenNoThreadStarts)
{
    Requests requests;
    Complaints complaints;
    requests.GiveNoThreads();
    StartCreateTagsTask({"command"}); // what it was given is deleted, or the leak is found when the tests end
    EXPECT_THAT(requests.Take(), IsEmpty());
    EXPECT_THAT(complaints.Take(), ElementsAre(NoThreadsFor("no tags are made")));
}

} // namespace
