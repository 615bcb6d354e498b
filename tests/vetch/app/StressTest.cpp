#include "vetch/app/BLooper.h"

#include "tests/support/CallFunction.h"
#include "vetch/app/BApplication.h"
#include "vetch/app/Loop.h"

#include <atomic>
#include <gtest/gtest.h>

namespace {

constexpr uint32 kRefill = 1;

// What all loopers of the test share.
struct Totals {
    std::atomic<int> made = 0;
    std::atomic<int> accepted = 0;
    std::atomic<int> destroyed = 0;
    std::atomic<int> destroyedElsewhere = 0;
    std::atomic<int> unguarded = 0; // somebody else was in a looper while its lock was held
};

class ListWindow;
// The newest one made by a worker, as a plug-in keeps its search window: set before it runs, cleared by its destructor.
std::atomic<ListWindow*> newest = nullptr;

// A list that is filled under the lock, as a window's is.
class ListWindow : public BLooper {
public:
    explicit ListWindow(Totals& totals) : totals(totals) { ++totals.made; }
    ~ListWindow() override
    {
        ListWindow* self = this;
        newest.compare_exchange_strong(self, nullptr);
        ++totals.destroyed;
        totals.destroyedElsewhere += !vetch::OnDocumentThread();
    }

    // By its maker before it runs, or under its lock.
    void Fill(int count)
    {
        const int before = inside++;
        items.clear();
        for (int i = 0; i < count; ++i)
            items.push_back(i);
        totals.unguarded += before != 0;
        --inside;
    }
    void MessageReceived(BMessage* message) override
    {
        if (message->what == kRefill)
            Fill(3);
        else
            BLooper::MessageReceived(message);
    }

protected:
    void QuitAccepted() override { ++totals.accepted; }

private:
    Totals& totals;
    int inside = 0;
    std::vector<int> items;
};

void FillLocked(ListWindow* window, int count)
{
    if (!window->Lock())
        return;
    window->Fill(count);
    window->Unlock();
}

// The document thread's loopers: opened, filled, refilled from both sides, and quit in turn from each of them.
void OpenAndQuit(Totals& totals, int round)
{
    auto* window = new ListWindow(totals);
    const vetch::HandlerToken token = window->Token();
    window->Fill(5);
    if (round % 10 != 0)
        window->Run();
    window->PostMessage(kRefill);
    FillLocked(window, 4);
    switch (round % 5) {
    case 0:
        window->Quit();
        break;
    case 1:
        window->PostMessage(B_QUIT_REQUESTED);
        FillLocked(window, 2); // before or after it has quit
        break;
    case 2:
        window->PostMessage(B_QUIT_REQUESTED);
        window->Quit();
        break;
    case 3:
        RunOnThread([token] { vetch::PostToHandler(token, BMessage(B_QUIT_REQUESTED)); });
        vetch::PostToHandler(token, BMessage(kRefill));
        break;
    case 4:
        RunOnThread([window] { window->Quit(); }); // nobody else quits it, so it lives until then
        break;
    }
}

// A worker's loopers. From when one is published the document thread may quit it at any time, also before it has run.
void MakeAndLeave(Totals& totals, int round)
{
    auto* window = new ListWindow(totals);
    const vetch::HandlerToken token = window->Token();
    window->Fill(5);
    if (round % 16 == 0) {
        window->Quit();
        return;
    }
    newest = window;
    // The lock keeps it from being destroyed while it is shown and filled.
    const bool locked = window->Lock();
    const bool runs = window->Run() > 0;
    if (!locked) {
        EXPECT_FALSE(runs) << "only an accepted quit refuses the lock";
        return;
    }
    window->Fill(3);
    if (round % 3 == 0)
        window->Quit();
    window->Unlock();
    vetch::PostToHandler(token, BMessage(kRefill));
    vetch::PostToHandler(token, BMessage(B_QUIT_REQUESTED));
}

TEST(Stress, TenThousandLoopersSurviveConcurrentUse)
{
    constexpr int kWorkers = 2, kWorkersRounds = 2500, kRounds = 5000;
    Totals totals;
    {
        BApplication application;
        for (int worker = 0; worker < kWorkers; ++worker)
            RunOnThread([&] {
                for (int round = 0; round < kWorkersRounds; ++round)
                    MakeAndLeave(totals, round);
            });
        for (int round = 0; round < kRounds; ++round) {
            OpenAndQuit(totals, round);
            if (ListWindow* window = newest) {
                FillLocked(window, 1);
                window->Quit();
            }
            vetch::RunPending();
        }
        while (!vetch::ThreadsAreIdle())
            vetch::RunPending();
        vetch::JoinThreads();
        vetch::Settle();
        EXPECT_EQ(vetch::Loopers().size(), 1u) << "only the application is left";
    }
    EXPECT_EQ(totals.made, kRounds + kWorkers * kWorkersRounds);
    EXPECT_EQ(totals.accepted, totals.made.load());
    EXPECT_EQ(totals.destroyed, totals.made.load());
    EXPECT_EQ(totals.destroyedElsewhere, 0);
    EXPECT_EQ(totals.unguarded, 0);
}

} // namespace
