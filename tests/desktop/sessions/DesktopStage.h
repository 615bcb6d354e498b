// The editor that a person sits at as a stage for scripts: keys, clicks and choices are Qt's own events, and the
// windows' states are read off what is on the screen.
#pragma once

#include "tests/desktop/hands/QuestionHands.h"
#include "tests/desktop/hands/WindowManager.h"
#include "tests/desktop/sessions/DesktopLog.h"
#include "tests/desktop/sessions/RecordingDisplay.h"
#include "wren/desktop/Editor.h"
#include "wren/script/DeterministicMode.h"
#include "wren/script/Stage.h"

#include <map>
#include <memory>
#include <string>

class QWidget;

namespace wren {
class CodeView;
class PreferencesDialog;
} // namespace wren

// A match is recorded and not opened, and the Worksheet does not come to the front, as with scripts: the document stays
// what the script takes it for. One at a time in a process.
class DesktopStage final : public wren::Stage {
public:
    DesktopStage(const std::string& bundle, const std::string& settingsFile, bool guarded);
    ~DesktopStage() override;

    wren::Host& TheHost() override;
    wren::ScriptLog& Log() override { return log; }
    void Settle() override;
    wren::Document* Open(const std::string& path, const std::optional<std::string>& text, bool worksheet,
                         std::string* error) override;
    long PressKey(const std::string& key, const wren::KeyStroke& stroke) override;
    long Click(const wren::TextClick& click) override;
    std::optional<std::string> Undo() override;
    long RunCommand(const std::string& name) override;
    long ClickButton(uint32 modifiers) override;
    long ChooseFromButton(const std::optional<wren::MenuChoice>& choice) override;
    std::optional<bool> ChooseFromMenu(const std::string& label) override;
    void AnswerAlert(long button) override;
    void AnswerPanel(const std::optional<std::string>& path) override;
    std::vector<WindowState> Windows() const override;
    bool InvokeItem(long window, long index) override;
    bool ClickItem(long window, long index) override;
    bool Press(long window, long item) override;
    bool Enter(long window, long item, const std::string& text) override;
    bool Check(long window, long item, bool on) override;
    bool Close(long window) override;
    vetch::LooperToken OpenPanel(const std::string& identifier, long* returned) override;
    void SetScreen(BRect frame) override;
    void SetInputPending(bool pending) override;

private:
    bool OpenText(const std::string& path, const std::string& text);
    bool OpenWorksheet(const std::string& path, const std::optional<std::string>& text, std::string* error);
    long AnswerTo(long event, const std::function<void()>& doing);
    QPoint PlaceOf(const wren::TextClick& click, wren::CodeView& view) const;
    QWidget* ContentOf(long window) const; // null when it is not to be seen

    template <class Widget>
    Widget* ItemOf(long window, long item) const;

    DesktopLog log;
    const wren::DeterministicMode deterministic;
    QuestionHands hands;
    bool keysWait = false; // what the script says of it
    std::unique_ptr<wren::Editor> editor;
    std::unique_ptr<WindowManager> manager;
    std::unique_ptr<RecordingDisplay> display;
    std::map<vetch::LooperToken, std::unique_ptr<wren::PreferencesDialog>> panels;
};
