// Users are fast, windows have threads of their own and names are loaded meanwhile: nothing is lost, doubled or torn,
// whichever comes first. Run with ThreadSanitizer these say more.
#include "tests/completion/TypingTest.h"
#include "tests/support/Gate.h"

#include <set>
#include <thread>

namespace {

class CompletionThreads : public TypingTest {
protected:
    const Lines names = {"goods", "goodness", "goodnight"};

    // What the windows have sent to the document, which is not told.
    Lines TakeChoices()
    {
        Lines choices;
        for (auto& [document, message] : std::exchange(framework.application->toDocuments, {})) {
            const char* completion = "(none)";
            message.FindString("completion", &completion);
            choices.push_back(completion);
        }
        return choices;
    }
    bool IsKnown(const std::string& name) const { return std::find(names.begin(), names.end(), name) != names.end(); }
};

// The user types on without waiting for the window that has a key of theirs.
TEST_F(CompletionThreads, TypingWhileTheWindowChoosesIsSafe)
{
    UseLocalNames(names);
    LoadNames();
    for (int round = 0; round < 100; ++round) {
        host.SetMarked("x = |;");
        for (const char key : std::string("good\x1f\x1f\n"))
            Stroke(key);
        for (int i = 0; i < round % 7; ++i)
            Stroke(i % 2 == 0 ? 'n' : '\x1f');
        framework.Settle();
        const Lines choices = TakeChoices();
        EXPECT_LE(choices.size(), 1u) << "an entry is chosen once, or not any more";
        for (const std::string& choice : choices)
            EXPECT_TRUE(IsKnown(choice)) << choice;
        framework.QuitWindows();
        EXPECT_EQ(CompletionWindow::gCompletionWindow, nullptr);
    }
}

// What is chosen is an entry of the list as it was before or after.
TEST_F(CompletionThreads, RefillingWhileAnEntryIsInvokedIsSafe)
{
    UseLocalNames(names);
    LoadNames();
    Gate start;
    std::atomic<bool> done = false;
    std::thread user([&] {
        start.Wait();
        while (!done)
            for (const auto& window : framework.VisibleWindows())
                for (long index = 2; index >= 0; --index)
                    framework.display.InvokeItem(window.number, index);
    });
    start.Open();
    size_t chosen = 0;
    const WaitLimit limit("an entry had been chosen");
    for (int round = 0; round < 300 || chosen == 0; ++round) {
        host.SetMarked(round % 2 == 0 ? "x = good|;" : "x = goodn|;");
        {
            const vetch::PluginCall call;
            SelectionAutoSuggestCompletions(&host);
        }
        vetch::RunPending();
        for (const std::string& choice : TakeChoices()) {
            EXPECT_TRUE(IsKnown(choice)) << choice;
            ++chosen;
        }
    }
    done = true;
    user.join();
    framework.Settle();
    EXPECT_GT(chosen, 0u);
}

// A user who clicks while keys are offered to the list: both change who has the keys.
TEST_F(CompletionThreads, ClickingWhileKeysAreRoutedIsSafe)
{
    UseLocalNames(names);
    LoadNames();
    AutoSuggest("good|");
    ASSERT_TRUE(Shown());
    const long number = Shown()->number;
    std::thread user([&] {
        for (int i = 0; i < 300; ++i)
            framework.display.ClickItem(number, i % 3);
    });
    for (int i = 0; i < 300; ++i) {
        BMessage key(B_KEY_DOWN);
        key.AddInt8("byte", "\x1f\x1e"
                            "a"[i % 3]);
        key.AddInt32("modifiers", 0);
        SendMessage(206, key);
    }
    user.join();
    framework.Settle();
    ASSERT_TRUE(Shown()) << "none of them chooses";
    EXPECT_EQ(Candidates().size(), 3u);
    EXPECT_GE(Shown()->list->selected, 0);
}

// Tags files change while the user types. Whatever is listed is what one state of the files has, and once they are
// quiet it is what they have now.
TEST_F(CompletionThreads, LoadsMayRaceKeyStrokes)
{
    const Lines before = Numbered("good_before", 40);
    const Lines after = Numbered("good_after", 60);
    UseLocalNames(before);
    UseSystemNames({"goods"});
    LoadNames();
    std::set<Lines> seen;
    for (int round = 0; round < 200; ++round) {
        if (round % 3 == 0)
            UseLocalNames(round % 2 == 0 ? after : before);
        if (round % 5 == 0)
            UseSystemNames(round % 2 == 0 ? Lines{"goods"} : Lines{"goodness"});
        host.SetMarked(round % 4 == 0 ? "goo|" : "good|");
        {
            const vetch::PluginCall call;
            SelectionAutoSuggestCompletions(&host);
        }
        vetch::RunPending();
        if (round % 11 == 0)
            Send(301); // the user goes elsewhere
        seen.insert(Candidates());
    }
    Lines possible[] = {before, before, after, after};
    for (size_t i = 0; i < 4; ++i)
        possible[i].push_back(i % 2 == 0 ? "goods" : "goodness");
    for (Lines& lines : possible)
        std::sort(lines.begin(), lines.end());
    for (const Lines& listed : seen)
        EXPECT_TRUE(listed.empty() || std::find(possible, possible + 4, listed) != possible + 4) << listed.size();

    UseLocalNames({"goodbye"});
    UseSystemNames({"goods"});
    JoinThreads();
    LoadNames();
    AutoSuggest("good|");
    EXPECT_EQ(Candidates(), (Lines{"goodbye", "goods"}));
}

// The window is being closed by its own choice as the document closes it, fills it or offers it keys.
TEST_F(CompletionThreads, BothSidesMayCloseTheList)
{
    UseLocalNames(names);
    LoadNames();
    for (int round = 0; round < 100; ++round) {
        host.SetMarked("good|");
        {
            const vetch::PluginCall call;
            SelectionAutoSuggestCompletions(&host);
        }
        ASSERT_NE(CompletionWindow::gCompletionWindow, nullptr);
        CompletionWindow::gCompletionWindow->PostMessage(B_QUIT_REQUESTED);
        if (round % 3 == 0)
            Send(301);
        else if (round % 3 == 1)
            Stroke('\x1f');
        else
            Stroke('n');
        framework.Settle();
        EXPECT_EQ(CompletionWindow::gCompletionWindow == nullptr, framework.Windows().empty());
        Send(301);
        framework.Settle();
        EXPECT_EQ(CompletionWindow::gCompletionWindow, nullptr);
        EXPECT_TRUE(framework.Windows().empty());
    }
}

} // namespace
