// A user at the keyboard: each key goes through the plug-in as the editor sends it.
#pragma once

#include "plugin/PluginMain.h"
#include "tests/completion/CompletionTest.h"

#include <utility>

// A key goes down (206); when the plug-in leaves it, the text changes, and then the key was typed (207) or has edited
// or moved (208). Messages for the document (202) come when all is quiet.
class TypingTest : public CompletionTest {
protected:
    TypingTest() { CompleteWhileTyping(true); }
    ~TypingTest() override
    {
        CompleteWhileTyping(true);
        host.SetMarked("|");
        Press(kEscape); // forgets what was typed
    }

    static constexpr char kEscape = 0x1b;
    static constexpr char kLeftArrow = 0x1c;
    static constexpr char kBackspace = 0x08;

    // One after the other; answers how many of them the plug-in took.
    int Type(const std::string& keys)
    {
        int taken = 0;
        for (const char key : keys)
            taken += Press(key);
        return taken;
    }
    bool Press(char key, int32 modifiers = 0)
    {
        const bool taken = Stroke(key, modifiers);
        framework.Settle();
        DeliverMessages();
        return taken;
    }
    // The same without waiting for the window.
    bool Stroke(char key, int32 modifiers = 0)
    {
        BMessage message(B_KEY_DOWN);
        message.AddInt8("byte", key);
        message.AddInt32("modifiers", modifiers);
        if (SendMessage(206, message) == 2)
            return true;
        if (key == '.' && modifiers == B_CONTROL_KEY)
            RunCommand("SymbolCompletion");
        else
            Apply(key);
        return false;
    }
    bool PressShortcut() { return Press('.', B_CONTROL_KEY); }
    void DoubleClick(long index)
    {
        ASSERT_TRUE(framework.display.InvokeItem(Shown()->number, index));
        framework.Settle();
        DeliverMessages();
    }
    void RunCommand(const char* name)
    {
        host.name = name;
        Send(103);
        Send(208);
    }
    void DeliverMessages()
    {
        for (auto& [document, message] : std::exchange(framework.application->toDocuments, {}))
            if (document == host.documentID) {
                EXPECT_EQ(SendMessage(202, message), 2);
            }
        framework.Settle();
    }

    long Send(long event)
    {
        const vetch::PluginCall call;
        return PluginMain(event, &host);
    }
    long SendMessage(long event, BMessage message)
    {
        host.message = &message;
        const long result = Send(event);
        host.message = nullptr;
        return result;
    }
    void CompleteWhileTyping(bool on)
    {
        const char* words[] = {"DeclAutoComplete", on ? "on" : "off", nullptr};
        const char** line = words;
        host.settingsArgs = &line;
        EXPECT_EQ(Send(104), 1);
        host.settingsArgs = nullptr;
    }

private:
    void Apply(char key)
    {
        switch (key) {
        case kEscape:
            return;
        case kLeftArrow:
        case B_UP_ARROW:
        case B_DOWN_ARROW:
            host.Select(std::max(0L, host.selectionStart - 1), std::max(0L, host.selectionStart - 1));
            Send(208);
            return;
        case kBackspace:
            host.selectionStart = std::max(0L, host.selectionStart - 1);
            Replace("");
            Send(208);
            return;
        default:
            Replace(std::string(1, key));
            Send(207);
        }
    }
    void Replace(const std::string& text)
    {
        host.text.replace(host.selectionStart, host.selectionEnd - host.selectionStart, text);
        host.selectionStart += static_cast<long>(text.length());
        host.selectionEnd = host.selectionStart;
    }
};
