#include "tests/support/GitRepository.h"
#include "tests/support/WaitLimit.h"
#include "tests/symbols/IndexStory.h"

#include <gtest/gtest.h>

#include <condition_variable>
#include <functional>
#include <mutex>
#include <thread>

namespace symbols {

namespace {

namespace fs = std::filesystem;

// A tree whose index is kept current by a thread.
class WatchStory : public IndexStory {
public:
    using IndexStory::IndexStory;
    ~WatchStory() { Stop(); }

    // Returns after the first update.
    void Start()
    {
        thread = std::thread([this] {
            result = index->Watch(
                {nullptr, [this](const std::string& message) { Note(message); }},
                [this](const UpdateResult&) { Note(""); }, cancel);
            Note("ended");
        });
        WaitUntil([this] { return index->Current() != nullptr; });
    }

    void Stop()
    {
        cancel.Cancel();
        if (thread.joinable())
            thread.join();
    }

    // Looks again after each update; the limit ends the test.
    void WaitUntil(const std::function<bool()>& isTrue)
    {
        const WaitLimit limit("the index was as expected");
        std::unique_lock lock(mutex);
        changed.wait(lock, isTrue);
    }
    void WaitForAnswer(const std::string& name, const std::string& answer)
    {
        WaitUntil([&] { return AnswerFor(name) == name + ": " + answer; });
    }

    base::Result<void> result;
    std::string lastMessage; // under the lock

private:
    void Note(const std::string& message)
    {
        const std::lock_guard lock(mutex);
        if (!message.empty())
            lastMessage = message;
        changed.notify_all();
    }

    std::mutex mutex;
    std::condition_variable changed;
    std::thread thread;
};

} // namespace

TEST(Watch, SeesSavesNewFilesAndRemovedOnes)
{
    WatchStory story;
    story.Write("a.c", "int a;\n");
    story.Start();
    story.Write("a.c", "int a2;\n");
    story.WaitForAnswer("a2", "a.c:1 in a.c");
    story.Write("b.c", "int b;\n");
    story.WaitForAnswer("b", "b.c:1 in b.c");
    fs::rename(story.Write("b.c~", "int b2;\n"), story.Path("b.c"));
    story.WaitForAnswer("b2", "b.c:1 in b.c");
    story.Remove("a.c");
    story.WaitForAnswer("a2", "in");
    story.Stop();
    EXPECT_TRUE(story.result);
    story.ExpectAsFresh();
}

TEST(Watch, SeesNewMovedAndRemovedDirectories)
{
    WatchStory story;
    story.Start();
    story.Write("x/y/a.c", "int a;\n");
    story.WaitForAnswer("a", "x/y/a.c:1 in x/y/a.c");
    fs::rename(story.Path("x"), story.Path("z"));
    story.WaitForAnswer("a", "z/y/a.c:1 in z/y/a.c");
    story.Write("z/y/a.c", "int a2;\n");
    story.WaitForAnswer("a2", "z/y/a.c:1 in z/y/a.c");
    story.Remove("z");
    story.WaitForAnswer("a2", "in");
}

TEST(Watch, SeesWhatIgnoreFilesSay)
{
    WatchStory story;
    story.Write("a.c", "int a;\n");
    story.Start();
    story.Write(".wrenignore", "a.c\n");
    story.WaitForAnswer("a", "in");
    story.Remove(".wrenignore");
    story.WaitForAnswer("a", "a.c:1 in a.c");
}

TEST(Watch, SeesACheckoutOfAThousandFiles)
{
    if (!GitRepository::IsPossible())
        GTEST_SKIP() << "git is not installed";
    constexpr int kFiles = 1000;
    const GitRepository repository;
    const auto write = [&](const std::string& name) {
        for (int i = 0; i < kFiles; ++i)
            repository.Write("d" + std::to_string(i % 20) + "/f" + std::to_string(i) + ".c",
                             i % 100 == 0 ? "int " + name + std::to_string(i) + ";\n" : "");
        repository.Commit(name);
    };
    write("one");
    repository.Git({"checkout", "-q", "-b", "other"});
    write("two");
    WatchStory story(repository.Top());
    story.Start();
    EXPECT_EQ(story.AnswerFor("two500"), "two500: d0/f500.c:1 in d0/f500.c");
    repository.Git({"checkout", "-q", "main"});
    for (int i = 0; i < kFiles; i += 100) {
        const std::string path = "d" + std::to_string(i % 20) + "/f" + std::to_string(i) + ".c";
        story.WaitForAnswer("one" + std::to_string(i), path + ":1 in " + path);
    }
}

TEST(Watch, WaitsForARootThatIsGone)
{
    WatchStory story;
    story.Write("a.c", "int a;\n");
    story.Start();
    fs::rename(story.top, story.tree / "away");
    story.WaitUntil([&] { return story.lastMessage.starts_with("cannot read"); });
    EXPECT_EQ(story.AnswerFor("a"), "a: a.c:1 in a.c");
    std::ofstream(story.tree / "away/a.c") << "int a2;\n";
    fs::rename(story.tree / "away", story.top);
    story.WaitForAnswer("a2", "a.c:1 in a.c");
    story.Write("a.c", "int a3;\n");
    story.WaitForAnswer("a3", "a.c:1 in a.c");
}

TEST(Watch, RebuildsAnIndexWhoseFilesAreDeleted)
{
    WatchStory story;
    story.Write("a.c", "int a;\n");
    story.Start();
    fs::remove_all(story.Cache());
    story.WaitUntil([&] { return fs::exists(story.index->Directory() + "/manifest"); });
    story.WaitForAnswer("a", "a.c:1 in a.c");
    story.Write("a.c", "int a2;\n");
    story.WaitForAnswer("a2", "a.c:1 in a.c");
}

TEST(Watch, FailsWhenItCannotBegin)
{
    WatchStory story;
    story.Remove("");
    EXPECT_FALSE(story.index->Watch({}, nullptr, story.cancel));
}

} // namespace symbols
