// The log of a script's line, in order.
#pragma once

#include "vetch/display/HeadlessDisplay.h"
#include "wren/core/HostObserver.h"

#include <mutex>
#include <nlohmann/json.hpp>
#include <string>

namespace wren {

using Json = nlohmann::ordered_json;

// The JSON forms in the script's answers.
Json JsonText(const std::string& text); // with U+FFFD for invalid UTF-8
Json JsonKey(char key);                 // a text of one character, "" for none
Json JsonNumber(float number);          // an integer when it has no fraction
Json JsonPoint(BPoint point);
Json JsonRect(BRect rect);

// Any thread.
class ScriptLog : public HostObserver, public vetch::DisplayObserver {
public:
    Json Take(); // the entries since the last call

    void Add(Json entry);

    void Changed(const HostChange& change) override;

    // A match of a lookup, about to be shown.
    void MatchOpened(const std::string& path, long line);

    void Beeped() override;
    void AlertAnswered(const vetch::AlertDescription& alert, long answer) override;
    void MenuAnswered(const vetch::MenuDescription& menu, std::optional<long> choice) override;
    void PanelOpened(const vetch::PanelDescription& panel) override;
    void WindowShown(long window) override;
    void WindowHidden(long window) override;
    void WindowMoved(long window, BRect frame) override;
    void WindowClosed(long window) override;

private:
    std::mutex mutex; // guards the entries; no other lock is taken while it is held
    Json entries = Json::array();
};

} // namespace wren
