// What the tests of windows share: an application, a display without a screen that writes down what its user would
// notice, and a window with a list.
#pragma once

#include "vetch/app/BApplication.h"
#include "vetch/app/Loop.h"
#include "vetch/display/HeadlessDisplay.h"
#include "vetch/interface/BListView.h"
#include "vetch/interface/BScrollView.h"
#include "vetch/interface/BWindow.h"

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>
#include <vector>

class Diary : public vetch::DisplayObserver {
public:
    std::vector<std::string> lines;

    void Beeped() override { lines.push_back("beep"); }
    void AlertAnswered(const vetch::AlertDescription& alert, long answer) override
    {
        lines.push_back("alert " + alert.title + " " + std::to_string(answer));
    }
    void MenuAnswered(const vetch::MenuDescription& menu, std::optional<long> choice) override
    {
        lines.push_back("menu " + menu.name + " " + (choice ? std::to_string(*choice) : "dismissed"));
    }
    void PanelOpened(const vetch::PanelDescription& panel) override { lines.push_back("panel " + panel.title); }
    void WindowShown(long window) override { Note("show", window); }
    void WindowHidden(long window) override { Note("hide", window); }
    void WindowMoved(long window, BRect) override { Note("move", window); }
    void WindowClosed(long window) override { Note("close", window); }

private:
    void Note(const char* what, long window) { lines.push_back(what + (" " + std::to_string(window))); }
};

// A window with a scrolled list that fills it, as result windows have. Invoking an item sends it 'Look'; a message with
// work in it does that work on the window's own thread.
class ListWindow : public BWindow {
public:
    static constexpr uint32 kLook = FourCC("Look");

    explicit ListWindow(uint32 flags = B_AVOID_FOCUS)
        : BWindow({100, 100, 400, 200}, "List", B_FLOATING_WINDOW_LOOK, B_NORMAL_WINDOW_FEEL, flags)
    {
        list = new BListView({0, 0, 289, 100}, "list", B_SINGLE_SELECTION_LIST, B_FOLLOW_ALL_SIDES, 13);
        AddChild(new BScrollView("scroll_view", list, B_FOLLOW_ALL_SIDES, 1, false, true, 1, true));
        list->SetInvocationMessage(new BMessage(kLook));
    }
    ~ListWindow() override
    {
        if (died)
            died();
    }

    void Add(const std::string& text)
    {
        items.push_back(std::make_unique<BStringItem>(text.c_str()));
        list->AddItem(items.back().get());
    }
    void Clear()
    {
        while (list->CountItems() > 0)
            list->RemoveItem(list->CountItems() - 1);
        items.clear();
    }
    void Refill(long count)
    {
        Clear();
        for (long i = 0; i < count; ++i)
            Add("item " + std::to_string(i));
    }

    void MessageReceived(BMessage* message) override
    {
        int32 index = -1;
        if (message->what != kLook)
            return BLooper::MessageReceived(message);
        message->FindInt32("index", &index);
        looks.push_back(index);
        if (looked)
            looked();
    }

    BListView* list = nullptr;
    std::vector<std::unique_ptr<BStringItem>> items;
    std::vector<int32> looks;     // "index" of each 'Look', -1 for one without
    std::function<void()> looked; // called after each
    std::function<void()> died;
};

// Each test has a fresh application and display, and leaves no looper behind.
class Desk : public testing::Test {
protected:
    Desk() { vetch::SetDisplay(&display); }
    ~Desk() override
    {
        QuitAll();
        EXPECT_TRUE(display.Windows().empty());
        vetch::SetDisplay(nullptr);
    }

    void QuitAll()
    {
        vetch::Settle();
        for (const vetch::LooperToken token : vetch::Loopers())
            if (BLooper* looper = vetch::FindLooper(token); looper != nullptr && looper != &application)
                looper->Quit();
        vetch::Settle();
    }

    // The only window that there is, as the display has it.
    vetch::HeadlessDisplay::WindowState Only() const
    {
        const auto windows = display.Windows();
        EXPECT_EQ(windows.size(), 1u);
        return windows.empty() ? vetch::HeadlessDisplay::WindowState() : windows.front();
    }

    Diary diary;
    vetch::HeadlessDisplay display{&diary};
    BApplication application;
};

inline std::vector<std::string> Lines(std::initializer_list<std::string> lines)
{
    return lines;
}
