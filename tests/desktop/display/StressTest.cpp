// Windows that come and go from every side while the GUI thread draws what is left of them.
#include "QtDesk.h"

#include <QListView>

namespace {

constexpr int kWindows = 1000;
constexpr int kMakers = 4;
constexpr uint32 kMake = FourCC("make");

std::atomic<int> gDied = 0;

class Passing : public ResultList {
public:
    explicit Passing(int number) : ResultList(number % 2 == 0 ? B_BORDERED_WINDOW_LOOK : B_FLOATING_WINDOW_LOOK) {}
    ~Passing() override { ++gDied; }
};

// Makes windows on its own thread, and quits them there or leaves it to their own.
class Maker : public BLooper {
public:
    void MessageReceived(BMessage* message) override
    {
        int32 number = 0;
        if (message->what != kMake || message->FindInt32("number", &number) != B_OK)
            return BLooper::MessageReceived(message);
        auto* window = new Passing(number);
        const bool locked = window->Lock();
        window->Fill(number % 12);
        window->SetSizeLimits(100, 400, 57, 300);
        window->Show();
        window->Fill(5);
        window->ResizeTo(window->list->StringWidth("item 10") + 21, 120);
        window->list->Select(3);
        window->Quit();
        if (locked)
            window->Unlock();
    }
};

class Stress : public QtDesk {
protected:
    void DrainUntil(int died)
    {
        while (gDied < died) {
            display.Drain();
            vetch::RunPending();
            QCoreApplication::processEvents();
            std::this_thread::yield();
        }
    }
};

TEST_F(Stress, AThousandWindowsOpenAndClose)
{
    gDied = 0;
    std::vector<Maker*> makers;
    for (int i = 0; i < kMakers; ++i) {
        makers.push_back(new Maker);
        makers.back()->Run();
    }
    for (int number = 0; number < kWindows; ++number) {
        BMessage message(kMake);
        message.AddInt32("number", number);
        makers[number % kMakers]->PostMessage(&message);
    }
    DrainUntil(kWindows);
    Settle();
    EXPECT_TRUE(Peers().empty());
}

TEST_F(Stress, AListThatIsRefilledAtEveryKeyShowsTheLastFill)
{
    auto* window = new ResultList(B_BORDERED_WINDOW_LOOK);
    window->Fill(201);
    window->Show();
    Settle();
    constexpr int kKeys = 50;
    for (int key = 1; key <= kKeys; ++key)
        Do(*window, [window, key] {
            window->Fill(201 - key);
            window->list->Select(0);
        });
    EXPECT_EQ(In<QListView>(window)->model()->rowCount(), 201 - kKeys);
    EXPECT_EQ(In<QListView>(window)->currentIndex().row(), 0);
}

} // namespace
