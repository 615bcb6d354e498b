// A completion window with a list of the test's own.
#pragma once

#include "completion/CompletionWindow.h"
#include "completion/Completions.h"
#include "tags/Tags.h"
#include "tests/completion/NamedTags.h"
#include "tests/support/FakeHost.h"
#include "tests/support/Framework.h"
#include "vetch/interface/BListItem.h"

#include <gtest/gtest.h>

// What no user can do with the list.
class ListedWindow : public CompletionWindow {
public:
    using CompletionWindow::CompletionWindow;

    static ListedWindow* Of(CompletionWindow* window) { return static_cast<ListedWindow*>(window); }

    void Fill(const Lines& names)
    {
        AutoCompletionPopulator populator(&names);
        Tags tags(nullptr, nullptr, "", false);
        PopulateList(populator, tags, &AutoCompletionPopulator::Populate);
    }
    BListView* TheList() const { return List(); }
    void PostToList(const BMessage& message) { PostMessage(&message, List()); }
    void AddItemWithoutText()
    {
        const WindowSection section(*this);
        List()->AddItem(new BListItem);
    }
    void SelectNone()
    {
        const WindowSection section(*this);
        List()->Select(-1);
    }
};

// The host has bound Control-'.' to the completion command.
class ListedWindowTest : public testing::Test {
protected:
    ListedWindowTest() { host.shortcuts["SymbolCompletion"] = {'.', B_CONTROL_KEY}; }

    Framework framework;
    FakeHost host{"text|"};
    CompletionWindow* window = nullptr;

    static BMessage KeyDown(const std::string& bytes, int32 modifiers)
    {
        BMessage key(B_KEY_DOWN);
        for (const char byte : bytes)
            key.AddInt8("byte", byte);
        key.AddInt32("modifiers", modifiers);
        return key;
    }

    // Not shown yet: what is posted to it waits.
    void Make(long document = 7) { window = new ListedWindow(&host, document); }
    void Open(const Lines& names, long document = 7)
    {
        Make(document);
        ListedWindow::Of(window)->Fill(names);
        window->ShowAt(&host, 0);
        framework.Settle();
    }
    // Offers a key stroke as the document does, and lets the window do what it does.
    bool Route(char key, int32 modifiers = 0)
    {
        const BMessage message = KeyDown(std::string(1, key), modifiers);
        bool routed;
        {
            const vetch::PluginCall call;
            routed = CompletionWindow::RouteKeyboardEventIfNeeded(&host, &message) == 2;
        }
        framework.Settle();
        return routed;
    }

    vetch::HeadlessDisplay::WindowState Seen() const { return framework.Windows().at(0); }
    bool IsFocused() const { return Seen().list->colour == rgb_color{180, 200, 240, 255}; }
    bool IsUnfocused() const { return Seen().list->colour == rgb_color{200, 200, 200, 255}; }

    // What was sent to documents since it was last asked: "ksel 7: text".
    Lines Sent()
    {
        Lines sent;
        for (const auto& [document, message] : framework.application->toDocuments) {
            const char* completion = "(none)";
            message.FindString("completion", &completion);
            sent.push_back((message.what == FourCC("ksel") ? "ksel " : "other ") + std::to_string(document) + ": " +
                           completion);
        }
        framework.application->toDocuments.clear();
        return sent;
    }
};
