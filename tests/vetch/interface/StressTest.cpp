// Ten thousand windows, opened, filled, refilled and quit from every side, some of them from several at once.
#include "Desk.h"
#include "vetch/interface/BScreen.h"

#include <atomic>

namespace {

constexpr int kWindows = 10000;
constexpr int kRound = 50; // windows made between two moments of quiet

constexpr uint32 kRefill = FourCC("rfil");
constexpr uint32 kOpen = FourCC("open");

std::atomic<int> gLiving = 0;
std::atomic<int> gDied = 0;

// The newest window, if it lives. Read on the document thread, it stays good there.
class Result;
std::atomic<Result*> gNewest = nullptr;

class Result : public ListWindow {
public:
    Result()
    {
        ++gLiving;
        gNewest = this;
    }
    ~Result() override
    {
        gNewest = nullptr;
        --gLiving;
        ++gDied;
    }
    void MessageReceived(BMessage* message) override
    {
        if (message->what == kRefill)
            return Refill(8);
        if (message->what == kLook)
            PostMessage(B_QUIT_REQUESTED);
        BLooper::MessageReceived(message);
    }
    // What is done to a shown window by anyone: false once it is quitting.
    bool RefillUnderLock(long count)
    {
        if (!Lock())
            return false;
        Refill(count);
        ResizeTo(list->StringWidth("item 10") + 21, 18 * static_cast<float>(count) + 3);
        MoveTo(BScreen::MaxWindowFrameWithHint({}).left + static_cast<float>(count), 40);
        list->MakeFocus();
        Unlock();
        return true;
    }
};

Result* Open(int number)
{
    auto* window = new Result;
    window->Refill(number % 12);
    window->SetSizeLimits(100, 400, 57, 300);
    return window;
}

// Opens windows of its own, as a dialog does that looks names up.
class Foreigner : public BLooper {
public:
    void MessageReceived(BMessage* message) override
    {
        int32 number = 0;
        if (message->what != kOpen || message->FindInt32("number", &number) != B_OK)
            return BLooper::MessageReceived(message);
        Result* window = Open(number);
        switch (number % 5) {
        case 0:
            return ShowAndQuit(window);
        case 1: // never shown
            return window->Quit();
        case 2: // quits itself
            window->PostMessage(kRefill);
            window->PostMessage(B_QUIT_REQUESTED);
            return window->Show();
        default: // left to the document thread and to the user
            return window->Show();
        }
    }

private:
    // Once shown it is anyone's to quit: a lock taken before keeps it alive here.
    static void ShowAndQuit(Result* window)
    {
        const bool locked = window->Lock();
        window->Show();
        if (!locked)
            return;
        window->Refill(5);
        window->Quit();
        window->Unlock();
    }
};

class Stress : public Desk {
protected:
    void OpenHere(int number)
    {
        Result* window = Open(number);
        if (number % 7 == 0)
            return window->Quit(); // never shown
        window->Show();
        window->PostMessage(kRefill);
        window->RefillUnderLock(number % 9);
        if (number % 3 == 0)
            window->PostMessage(B_QUIT_REQUESTED);
        window->RefillUnderLock(3);
        if (number % 2 == 0)
            window->Quit(); // perhaps while its own thread quits too
    }
    void OpenThere(int number)
    {
        BMessage message(kOpen);
        message.AddInt32("number", number);
        foreigner->PostMessage(&message);
        // Any of the windows over there may be the newest now, shown or not, quitting or not.
        if (Result* window = gNewest; window != nullptr && number % 4 == 0)
            window->Quit();
    }
    void QuitTheRest()
    {
        int number = 0;
        for (const auto& window : display.Windows()) {
            if (!window.visible)
                continue; // still its maker's
            if (++number % 2 == 0 && display.InvokeItem(window.number, 0))
                continue;
            if (BLooper* looper = vetch::FindLooper(window.token))
                looper->Quit();
        }
    }

    Foreigner* const foreigner = new Foreigner;
};

TEST_F(Stress, TenThousandWindowsOpenAndClose)
{
    gDied = 0;
    foreigner->Run();
    for (int number = 0; number < kWindows; ++number) {
        if (number % 2 == 0)
            OpenHere(number / 2);
        else
            OpenThere(number / 2);
        vetch::RunPending();
        if (number % kRound == kRound - 1) {
            QuitTheRest();
            vetch::Settle();
        }
    }
    QuitAll();
    EXPECT_EQ(gDied, kWindows);
    EXPECT_EQ(gLiving, 0);
    EXPECT_EQ(vetch::Loopers().size(), 1u);
}

} // namespace
