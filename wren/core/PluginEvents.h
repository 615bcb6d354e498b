// The events of the plug-in, one operation each.
#pragma once

#include "vetch/storage/EntryRef.h"
#include "wren/core/EventRecord.h"
#include "wren/core/KeyMessage.h"

#include <optional>
#include <string>
#include <vector>

namespace wren {

class Document;
class Documents;
class PluginCalls;

// Sends each event with the current document and its window, unless another is named; without either when there is
// none. The answers are the plug-in's. Document thread.
class PluginEvents {
public:
    PluginEvents(PluginCalls& calls, const Documents& documents); // borrowed

    void FirstContact();
    void Register();
    bool SettingsLine(const std::string& line);                  // whether it was accepted
    long SettingsCommand(const std::vector<std::string>& words); // at least one word
    void MenuBarBuilt();
    void ResourceIDs();
    void OfferPanels();
    void Unload();

    void MenusShowing();
    long ButtonClicked();
    long ButtonPopUp();
    long Command(const std::string& name);
    long MouseDown();

    long KeyDown(const KeyStroke& key);
    long KeyTyped();
    long PrimitiveDone();

    long Activated();
    long Deactivated();
    long DocumentChanged();
    long Dismissed();
    long Obscured();

    long MessageFor(long document, const BMessage& message); // 0 for none
    void SaveSettings();
    std::optional<std::string> Setting(const std::string& name); // nullopt when the plug-in has no such setting
    long OpenPanel(const std::string& identifier, vetch::HandlerToken view);

    // The files that declare 'symbol', an include-style name, according to the tags that serve the document's
    // directory.
    std::vector<EntryRef> FilesOfSymbol(const Document& document, const std::string& symbol);

    EventRecord RecordFor(long event) const; // with the current document and its window
    EventAnswer Send(const EventRecord& event);

private:
    long SendPlain(long event);

    PluginCalls& calls;
    const Documents& documents;
};

// The directory of a document's file; "" without a file.
std::string DirectoryOf(const Document& document);

} // namespace wren
