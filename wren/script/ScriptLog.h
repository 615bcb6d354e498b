// What happened while a line of the script ran, in order.
#pragma once

#include "vetch/display/HeadlessDisplay.h"
#include "wren/core/HostObserver.h"

#include <mutex>
#include <nlohmann/json.hpp>
#include <string>

namespace wren {

using Json = nlohmann::ordered_json;

// The ways in which the script's answers write things.
Json JsonText(const std::string& text); // with U+FFFD for bytes that are no text
Json JsonKey(char key);                 // a text of one character, "" for none
Json JsonNumber(float number);          // a whole number where it is one
Json JsonPoint(BPoint point);
Json JsonRect(BRect rect);

// Any thread.
class ScriptLog : public HostObserver, public vetch::DisplayObserver {
public:
    Json Take(); // what came since the last time

    void Add(Json entry);

    void Changed(const HostChange& change) override;

    // A match of a lookup, on its way to being shown.
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
    std::mutex mutex; // guards the entries; a leaf
    Json entries = Json::array();
};

} // namespace wren
