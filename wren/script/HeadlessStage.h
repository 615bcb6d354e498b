// The stage of "wren script": a host without a display.
#pragma once

#include "wren/core/Host.h"
#include "wren/script/DeterministicMode.h"
#include "wren/script/GridFace.h"
#include "wren/script/ScriptLog.h"
#include "wren/script/Stage.h"

namespace wren {

class PluginBundle;

// The script's face: it opens no match but logs it.
class ScriptFace : public GridFace {
public:
    explicit ScriptFace(ScriptLog& log) : log(log) {}

    void OpenMatch(const std::string& path, long line) override;
    void Warn(const std::string& text) override; // on standard error

private:
    ScriptLog& log;
};

// Makes and starts everything that a host without a display needs. One at a time in a process; document thread, which
// is the thread that makes it.
class HeadlessStage : public Stage {
public:
    HeadlessStage(PluginBundle& bundle, const std::string& settingsFile); // borrows the bundle

    MenuChoosingDisplay& Display() { return display; }

    Host& TheHost() override { return host; }
    ScriptLog& Log() override { return log; }
    void Settle() override;
    Document* Open(const std::string& path, const std::optional<std::string>& text, bool worksheet,
                   std::string* error) override;
    long PressKey(const std::string& key, const KeyStroke& stroke) override;
    long Click(const TextClick& click) override;
    std::optional<std::string> Undo() override;
    long RunCommand(const std::string& name) override;
    long ClickButton(uint32 modifiers) override;
    long ChooseFromButton(const std::optional<MenuChoice>& choice) override;
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
    // While it lives, it is the framework's display.
    class InUse {
    public:
        explicit InUse(vetch::Display& display) { vetch::SetDisplay(&display); }
        ~InUse() { vetch::SetDisplay(nullptr); }
        InUse(const InUse&) = delete;
        InUse& operator=(const InUse&) = delete;
    };

    ScriptLog log;
    MenuChoosingDisplay display;
    const DeterministicMode deterministic;
    const InUse inUse;
    ScriptFace face;
    Host host;
};

} // namespace wren
