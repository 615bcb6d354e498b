// The whole editor, its window and the real plug-in, in front of a user who has a home of their own.
#pragma once

#include "tests/desktop/hands/QuestionHands.h"
#include "tests/desktop/hands/WindowManager.h"
#include "tests/support/TempDirectory.h"
#include "wren/desktop/Editor.h"
#include "wren/desktop/editor/CodeView.h"
#include "wren/script/DeterministicMode.h"

#include <QKeySequence>

#include <functional>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <vector>

// A question that a test did not answer was closed, and fails the test unless it takes what was heard.
class EditorStory : public ::testing::Test {
protected:
    EditorStory();
    ~EditorStory() override;

    // Starts it with these files, as its program does. A second start finds what the first has left.
    void Start(const std::vector<std::string>& files = {});
    bool Quit(); // the user closes the window; false when the editor goes on
    std::string SettingsFile() const { return home / ".config/wren/settings"; }
    std::string InState(const std::string& leaf) const { return (home / ".local/state/wren/") + leaf; }

    // Until everything that was posted has come and was shown; with the background, what loads in it too.
    void Settle();
    void SettleBackground();
    // Lets the editor run until it is so; false, and the test has failed, when it never becomes so.
    bool Until(const std::function<bool()>& holds);

    void Press(const char* keys); // "Ctrl+S", in the current text
    void Type(const std::string& text);
    void Choose(const char* menu, const char* item);                      // by their labels without "&"
    void RunCommand(const char* name);                                    // of the plug-in, as its key does
    void CloseTab(int index);                                             // by its button
    void InPreferences(const std::function<void(QWidget& dialog)>& what); // opens them, and closes them afterwards
    void ClickText(long offset, Qt::KeyboardModifiers held);              // the character behind the offset
    void ComeBack();                                                      // from another program's window

    static void ChooseIn(QWidget& dialog, const char* name, const char* item); // in the box of choices of that name
    static void Tick(QWidget& dialog, const char* label);                      // clicks on that box

    wren::Editor& TheEditor() { return *editor; }
    wren::CodeView& View() const; // the current text's
    std::string Text() const;
    std::vector<std::string> Tabs() const; // as they read, in their order
    std::string CurrentTab() const;
    static std::vector<std::string> PluginWindows(); // titles of those that are seen; completions have none
    std::string Notice() const;                      // "" when none is shown
    std::string Status() const;                      // the message in the line of status

    static std::string Content(const std::string& file); // "" when there is none

    const TempDirectory home;
    std::string bundle; // the real one, unless a test says otherwise before the start
    QuestionHands hands;
    std::string folder;            // that is opened at the start; "" for none
    std::string program;           // that keeps tags current; "" for none
    bool understandsNames = false; // else the plug-in alone answers; at the start

private:
    void End();
    std::string FreshBundle();

    const wren::DeterministicMode deterministic; // the plug-in's clock stands still, except from place to place
    const TempDirectory plugins;
    int starts = 0;
    std::unique_ptr<wren::Editor> editor;
    std::unique_ptr<WindowManager> manager;
};
