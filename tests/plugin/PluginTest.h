// The plug-in in an editor that is not there: one document with a window of its own, on a display without a screen.
#pragma once

#include "plugin/PluginMain.h"
#include "tests/support/FakeHost.h"
#include "tests/support/Framework.h"
#include "tests/support/Seats.h"
#include "tests/support/TagLines.h"
#include "vetch/interface/BWindow.h"

#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <utility>
#include <vector>

// A search menu and a document window are there from the start; the window is active and was not activated just now.
// Settings are those of a new user. Generating tags and completing are recorded instead of done.
class PluginTest : public testing::Test {
protected:
    PluginTest()
    {
        framework.application->SetMenuBar(&bar);
        bar.AddItem(new BMenuItem(searchMenu));
        window = new BWindow({40, 60, 740, 660}, "a.cpp", B_TITLED_WINDOW_LOOK, B_NORMAL_WINDOW_FEEL, 0,
                             vetch::Service::Application, vetch::ShownBy::Host);
        window->Show();
        window->Activate(true);
        host.window = window;
        host.documentID = 1;
        UseDocument("src/a.cpp");
        NewUser();
    }
    ~PluginTest() override
    {
        NewUser();
        Send(308); // forgets what was typed and activated
        Send(207);
        framework.QuitWindows();
        framework.application->SetMenuBar(nullptr);
    }

    struct Witness : vetch::DisplayObserver {
        std::vector<vetch::AlertDescription> alerts;
        std::vector<vetch::MenuDescription> menus;
        void AlertAnswered(const vetch::AlertDescription& alert, long) override { alerts.push_back(alert); }
        void MenuAnswered(const vetch::MenuDescription& menu, std::optional<long>) override { menus.push_back(menu); }
    };
    Seats seats;
    Witness witness;
    TempHome home;
    BMenu* const searchMenu = new BMenu("Search");
    BMenuBar bar{"menus"};
    Framework framework{&witness};
    FakeHost host;
    BWindow* window = nullptr;

    long SendInCall(long event)
    {
        const vetch::PluginCall call;
        return PluginMain(event, &host);
    }
    // One event, and all that follows from it.
    long Send(long event)
    {
        const long result = SendInCall(event);
        framework.Settle();
        return result;
    }
    long SendCommand(const char* name)
    {
        host.name = name;
        return Send(103);
    }
    long SendMessage(const BMessage& message)
    {
        BMessage copy = message;
        host.message = &copy;
        const long result = Send(202);
        host.message = nullptr;
        return result;
    }
    long SendKeyDown(char key)
    {
        BMessage message(B_KEY_DOWN);
        message.AddInt8("byte", key);
        message.AddInt32("modifiers", 0);
        host.message = &message;
        const long result = Send(206);
        host.message = nullptr;
        return result;
    }
    long Set(const char* name, const char* value)
    {
        const char* words[] = {name, value, nullptr};
        const char** line = words;
        host.settingsArgs = &line;
        const long result = SendInCall(104);
        host.settingsArgs = nullptr;
        return result;
    }

    // The document is that file of the temporary home.
    void UseDocument(const std::string& leaf) { host.file = EntryRef(home.Write(leaf, "").c_str()); }
    // Tags beside the document, and the source files that they name.
    void UseTags(const std::string& lines)
    {
        home.Write("src/tags", lines);
        std::istringstream stream(lines);
        for (std::string line; std::getline(stream, line);) {
            const size_t start = line.find('\t') + 1;
            home.Write("src/" + line.substr(start, line.find('\t', start) - start), "a source of more than nine bytes");
        }
    }
    // "draw" is declared and defined, "once" only declared, "body" only defined.
    void UseSomeTags()
    {
        UseTags(TagLine("body", "view.cpp", 7, 'f') + TagLine("draw", "view.h", 12, 'p') +
                TagLine("draw", "view.cpp", 34, 'f') + TagLine("once", "view.h", 3, 'p'));
    }
    std::string Source(const std::string& leaf) const { return home / ("src/" + leaf); }

    // What is open: "list: a, b" or the window's title, one entry a visible window.
    std::vector<std::string> Open() const
    {
        std::vector<std::string> open;
        for (const auto& shown : framework.VisibleWindows()) {
            std::string text = shown.title;
            if (shown.list) {
                text = "list:";
                for (const std::string& item : shown.list->items)
                    text += " " + item + ";";
            }
            open.push_back(text);
        }
        return open;
    }
    // A list of results, open on the screen; every palette that an event closes is one like it.
    void OpenResults()
    {
        UseSomeTags();
        host.SetMarked("draw|");
        Send(100);
        ASSERT_EQ(Open().size(), 1u);
    }
    bool ResultsAreOpen() const { return !Open().empty(); }

    std::vector<std::string> TakeLog() { return std::exchange(host.log, {}); }

private:
    void NewUser()
    {
        for (const char* name : {"DeclOptionClickToFindDeclaration", "DeclCtrlOptionClickToFindDefinition",
                                 "DeclAutomaticallyRebuild", "DeclAutoComplete"})
            Set(name, "on");
        Set("DeclScanSystemDirectories", "/System/Library/Frameworks /usr/include");
    }
};

using Calls = std::vector<std::string>;
using Opened = std::vector<RecordingApplication::Opened>;
