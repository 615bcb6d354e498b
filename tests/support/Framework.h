// The framework for a unit test: an application, a headless display, and a stopped clock.
#pragma once

#include "tests/support/WaitLimit.h"
#include "vetch/app/BApplication.h"
#include "vetch/app/Loop.h"
#include "vetch/app/Modifiers.h"
#include "vetch/display/HeadlessDisplay.h"
#include "vetch/interface/BMenuBar.h"
#include "vetch/support/Clock.h"
#include "vetch/support/FThread.h"

#include <memory>
#include <optional>
#include <string>
#include <vector>

// The editor's application, reduced to the messages that it receives.
class RecordingApplication : public BApplication {
public:
    struct Opened {
        std::string path; // "" for an empty reference
        int32 line = -1;  // -1 when the message had none

        bool operator==(const Opened&) const = default;
    };
    struct ToDocument {
        long documentID = 0;
        BMessage message;
    };
    std::vector<Opened> opened;
    std::vector<ToDocument> toDocuments; // messages from windows to documents
    std::vector<uint32> others;          // codes of all messages but 'opened', including those to documents

    void MessageReceived(BMessage* message) override
    {
        EntryRef file;
        KeepForDocument(*message);
        if (message->what != B_REFS_RECEIVED || message->FindRef("refs", &file) != B_OK) {
            others.push_back(message->what);
            return;
        }
        Opened match = {file.Path(), -1};
        message->FindInt32("be:line", &match.line);
        opened.push_back(match);
    }

private:
    void KeepForDocument(const BMessage& envelope)
    {
        ToDocument sent;
        int32 documentID = 0;
        if (envelope.what != FourCC("plgp") || envelope.FindInt32("documentID", &documentID) != B_OK ||
            envelope.FindMessage("message", &sent.message) != B_OK)
            return;
        sent.documentID = documentID;
        toDocuments.push_back(sent);
    }
};

// Construct it first in a test. Its destructor quits open windows, waits for threads, and then removes the application.
class Framework {
public:
    static constexpr bigtime_t kStart = 1000000;

    explicit Framework(vetch::DisplayObserver* witness = nullptr) : display(witness)
    {
        vetch::SetDisplay(&display);
        vetch::UseVirtualClock(kStart);
        vetch::SetModifiers(0);
        application = std::make_unique<RecordingApplication>();
    }
    ~Framework()
    {
        QuitWindows();
        JoinThreads();
        application.reset();
        vetch::UseRealClock();
    }
    Framework(const Framework&) = delete;
    Framework& operator=(const Framework&) = delete;

    vetch::HeadlessDisplay display;
    std::unique_ptr<RecordingApplication> application;

    void Settle()
    {
        const WaitLimit limit("the windows had nothing more to do");
        vetch::Settle();
    }
    void QuitWindows()
    {
        const WaitLimit limit("the windows had quit");
        for (const vetch::LooperToken token : vetch::Loopers())
            if (BLooper* looper = vetch::FindLooper(token); looper != nullptr && looper != be_app)
                looper->Quit();
        vetch::Settle(); // also destroys windows that the last message of a quit window was making
    }

    // The plug-in's windows, as a user sees them.
    std::vector<vetch::HeadlessDisplay::WindowState> Windows() const { return display.Windows(); }
    std::vector<vetch::HeadlessDisplay::WindowState> VisibleWindows() const
    {
        std::vector<vetch::HeadlessDisplay::WindowState> visible;
        for (const auto& window : display.Windows())
            if (window.visible)
                visible.push_back(window);
        return visible;
    }
};
