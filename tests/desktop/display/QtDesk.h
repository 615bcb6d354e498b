// What the tests of the desktop display share: an application, the display, a user's hands, and two windows as the
// plug-in's are.
#pragma once

#include "vetch/app/BApplication.h"
#include "vetch/app/Loop.h"
#include "vetch/interface/BButton.h"
#include "vetch/interface/BCheckBox.h"
#include "vetch/interface/BListItem.h"
#include "vetch/interface/BListView.h"
#include "vetch/interface/BScrollBar.h"
#include "vetch/interface/BScrollView.h"
#include "vetch/interface/BTextControl.h"
#include "vetch/interface/BWindow.h"
#include "wren/desktop/display/QtDisplay.h"
#include "wren/desktop/display/WindowPeer.h"

#include <QApplication>
#include <QTest>

#include <gtest/gtest.h>

#include <atomic>
#include <functional>
#include <memory>
#include <string>
#include <vector>

constexpr uint32 kWork = FourCC("work");

// Does what it is asked to on its own thread, and writes down what the user does to it.
class DiaryWindow : public BWindow {
public:
    std::vector<std::string> diary; // read it when settled
    std::function<void()> work;     // done at 'work'

    using BWindow::BWindow;

    void MessageReceived(BMessage* message) override
    {
        if (message->what == kWork)
            work();
        else
            BLooper::MessageReceived(message);
    }
    void FrameMoved(BPoint where) override { Note("at", where.x, where.y); }
    void FrameResized(float width, float height) override { Note("size", width, height); }
    bool QuitRequested() override
    {
        diary.push_back("asked to quit");
        return false;
    }

private:
    void Note(const std::string& what, float x, float y)
    {
        diary.push_back(what + " " + std::to_string(static_cast<int>(x)) + " " + std::to_string(static_cast<int>(y)));
    }
};

// A list that fills its window, as completions (look 3) and results (look 6) have it.
class ResultList : public DiaryWindow {
public:
    static constexpr uint32 kLook = FourCC("Look");

    explicit ResultList(long look = B_FLOATING_WINDOW_LOOK, const char* title = "Results")
        : DiaryWindow({100, 100, 300, 200}, title, look, B_NORMAL_WINDOW_FEEL, B_AVOID_FOCUS)
    {
        BRect frame = Bounds();
        frame.right -= BScrollBar::MiniScrollBarWidth();
        list = new BListView(frame, "list", B_SINGLE_SELECTION_LIST, B_FOLLOW_ALL_SIDES, 13);
        AddChild(new BScrollView("scroll_view", list, B_FOLLOW_ALL_SIDES, 1, false, true, 1, true));
        list->SetInvocationMessage(new BMessage(kLook));
        list->MakeFocus();
    }

    void Fill(const std::vector<std::string>& texts)
    {
        while (list->CountItems() > 0)
            list->RemoveItem(list->CountItems() - 1);
        items.clear();
        for (const std::string& text : texts) {
            items.push_back(std::make_unique<BStringItem>(text.c_str()));
            list->AddItem(items.back().get());
        }
    }
    void Fill(int count)
    {
        std::vector<std::string> texts;
        for (int i = 0; i < count; ++i)
            texts.push_back("item " + std::to_string(i));
        Fill(texts);
    }

    void MessageReceived(BMessage* message) override
    {
        int32 index = -1;
        if (message->what != kLook)
            return DiaryWindow::MessageReceived(message);
        message->FindInt32("index", &index);
        diary.push_back("look at " + std::to_string(index));
    }

    BListView* list = nullptr;
    std::vector<std::unique_ptr<BStringItem>> items;
};

// Waits for quiet on both sides: nothing to be drained, dispatched or handled by Qt.
class QtDesk : public testing::Test {
protected:
    QtDesk()
    {
        display.SetWakeUp([this] { woken = true; });
        vetch::SetDisplay(&display);
    }
    ~QtDesk() override
    {
        QuitAll();
        EXPECT_TRUE(Peers().empty());
        vetch::SetDisplay(nullptr);
    }

    void Settle()
    {
        do {
            woken = false;
            vetch::Settle();
            display.Drain();
            QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
            QCoreApplication::processEvents();
            vetch::Settle();
        } while (woken);
    }
    void QuitAll()
    {
        Settle();
        for (const vetch::LooperToken token : vetch::Loopers())
            if (BLooper* looper = vetch::FindLooper(token); looper != nullptr && looper != &application)
                looper->Quit();
        Settle();
    }
    // Lets the window's own thread do it.
    void Do(DiaryWindow& window, std::function<void()> work)
    {
        window.work = std::move(work);
        window.PostMessage(kWork);
        Settle();
    }

    // What is on the screen.
    static std::vector<wren::WindowPeer*> Peers()
    {
        std::vector<wren::WindowPeer*> peers;
        for (QWidget* widget : QApplication::topLevelWidgets())
            if (auto* peer = dynamic_cast<wren::WindowPeer*>(widget))
                peers.push_back(peer);
        return peers;
    }
    static wren::WindowPeer* PeerOf(const BWindow* window)
    {
        for (wren::WindowPeer* peer : Peers())
            if (peer->Token() == window->LooperToken())
                return peer;
        return nullptr;
    }
    template <class Widget>
    static Widget* In(const BWindow* window, int place = 0)
    {
        const wren::WindowPeer* peer = PeerOf(window);
        const QList<Widget*> found = peer == nullptr ? QList<Widget*>() : peer->findChildren<Widget*>();
        return place < found.size() ? found[place] : nullptr;
    }

    std::atomic<bool> woken = false;
    BApplication application;
    wren::QtDisplay display;
};
