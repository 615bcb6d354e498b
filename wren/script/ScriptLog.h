// What happened while a line of the script ran, in order.
#pragma once

#include "vetch/display/HeadlessDisplay.h"
#include "wren/core/HostWitness.h"

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
class ScriptLog : public HostWitness, public vetch::DisplayWitness {
public:
    Json Take(); // what came since the last time

    void Add(Json entry);

    void UndoBegun(Document&, Selection before, const std::string& name) override;
    void TextInserted(Document&, const std::string& text, long offset) override;
    void TextDeleted(Document&, long offset, long length) override;
    void Selected(Document&, Selection selection) override;
    void CommandDone(long status) override;
    void SettingRegistered(const std::string& name) override;
    void CommandRegistered(const std::string& name, const std::string& help) override;
    void PluginFlagsSet(long flags) override;
    void ResourceIDsSet(long first, long second) override;
    void SettingsWritten(const std::string& text) override;
    void AppendedToWorksheet(const std::string& text, bool first, bool second, bool third) override;
    void MenuItemAdded(const std::string& menu, long index, const std::string& label, const std::string& command,
                       char key, uint32 modifiers) override;
    void PreferencePanelRegistered(const std::string& identifier, const std::string& title,
                                   const std::string& icon) override;

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
