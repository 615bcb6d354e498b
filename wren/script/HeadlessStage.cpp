#include "wren/script/HeadlessStage.h"

#include "vetch/app/Loop.h"
#include "vetch/interface/BWindow.h"
#include "wren/core/HeldModifiers.h"
#include "wren/core/TerminalText.h"
#include "wren/headless/PressKey.h"

#include <cstdio>
#include <unistd.h>

namespace wren {

void ScriptFace::OpenMatch(const std::string& path, long line)
{
    log.MatchOpened(path, line);
}

void ScriptFace::Warn(const std::string& text)
{
    std::fprintf(stderr, "wren: %s\n", ShownOn(STDERR_FILENO, text).c_str());
}

HeadlessStage::HeadlessStage(PluginBundle& bundle, const std::string& settingsFile)
    : display(&log), inUse(display), face(log), host(bundle, face, log, settingsFile)
{
    host.Start();
}

void HeadlessStage::Settle()
{
    vetch::Settle();
}

Document* HeadlessStage::Open(const std::string& path, const std::optional<std::string>& text, bool worksheet,
                              std::string* error)
{
    return host.Open(path, text, worksheet, error);
}

long HeadlessStage::PressKey(const std::string& key, const KeyStroke& stroke)
{
    const HeldModifiers held(stroke.modifiers);
    return wren::PressKey(host, key, stroke);
}

long HeadlessStage::Click(const TextClick& click)
{
    const HeldModifiers held(click.modifiers);
    face.mouse = {click.at ? *click.at : face.CellCentre(*host.Current(), click.offset), click.buttons};
    const long returned = host.Events().MouseDown();
    face.mouse.buttons = 0;
    return returned;
}

std::optional<std::string> HeadlessStage::Undo()
{
    return host.Undo();
}

long HeadlessStage::RunCommand(const std::string& name)
{
    return host.Events().Command(name);
}

long HeadlessStage::ClickButton(uint32 modifiers)
{
    const HeldModifiers held(modifiers);
    return host.Events().ButtonClicked();
}

long HeadlessStage::ChooseFromButton(const std::optional<MenuChoice>& choice)
{
    display.ChooseNext(choice);
    const long returned = host.Events().ButtonPopUp();
    display.ChooseNext(std::nullopt);
    return returned;
}

std::optional<bool> HeadlessStage::ChooseFromMenu(const std::string& label)
{
    return host.ChooseFromSearchMenu(label);
}

void HeadlessStage::AnswerAlert(long button)
{
    display.AnswerAlert(button);
}

void HeadlessStage::AnswerPanel(const std::optional<std::string>& path)
{
    display.AnswerPanel(path);
}

std::vector<Stage::WindowState> HeadlessStage::Windows() const
{
    return display.Windows();
}

bool HeadlessStage::InvokeItem(long window, long index)
{
    return display.InvokeItem(window, index);
}

bool HeadlessStage::ClickItem(long window, long index)
{
    return display.ClickItem(window, index);
}

bool HeadlessStage::Press(long window, long item)
{
    return display.Press(window, item);
}

bool HeadlessStage::Enter(long window, long item, const std::string& text)
{
    return display.Enter(window, item, text);
}

bool HeadlessStage::Check(long window, long item, bool on)
{
    return display.Check(window, item, on);
}

bool HeadlessStage::Close(long window)
{
    return display.Close(window);
}

vetch::LooperToken HeadlessStage::OpenPanel(const std::string& identifier, long* returned)
{
    return host.OpenPreferences(identifier, returned)->LooperToken();
}

void HeadlessStage::SetScreen(BRect frame)
{
    display.SetScreen(frame);
}

void HeadlessStage::SetInputPending(bool pending)
{
    face.inputPending = pending;
}

} // namespace wren
