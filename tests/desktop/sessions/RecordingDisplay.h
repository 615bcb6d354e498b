// The desktop's display, with a record of what goes to it.
#pragma once

#include "tests/desktop/hands/QuestionHands.h"
#include "vetch/display/HeadlessDisplay.h"
#include "wren/script/ScriptLog.h"

#include <deque>
#include <optional>
#include <utility>

// Whatever the framework shows goes to the screen, and to a headless display whose log and window numbers are those of
// scripts. Questions are the screen's to answer; the user's answers to them are queued.
class RecordingDisplay final : public vetch::Display {
public:
    RecordingDisplay(vetch::Display& shown, wren::ScriptLog& log, QuestionHands& hands); // borrowed

    const vetch::HeadlessDisplay& Record() const { return record; }
    void AnswerAlert(long button) { alertAnswers.push_back(button); }
    void AnswerPanel(const std::optional<std::string>& path) { panelAnswers.push_back(path); }
    bool TakeAnswered() { return std::exchange(answered, false); } // whether an alert was, since the last time
    void SetScreen(BRect frame) { screen = frame; }                // in place of the real one

    void Apply(vetch::Update update) override;
    float StringWidth(const std::string& text, float fontSize) const override;
    vetch::FontMetrics Metrics(float fontSize) const override;
    float MiniScrollBarWidth() const override;
    BRect ScreenFrame(BPoint where) const override;
    long RunAlert(const vetch::AlertDescription& alert) override;
    std::optional<long> RunMenu(const vetch::MenuDescription& menu) override;

private:
    void Keep(const vetch::Update& update);

    vetch::Display& shown;
    wren::ScriptLog& log;
    QuestionHands& hands;
    vetch::HeadlessDisplay record;
    bool answered = false;
    std::optional<BRect> screen; // set while everything is settled
    std::deque<long> alertAnswers;
    std::deque<std::optional<std::string>> panelAnswers;
};
