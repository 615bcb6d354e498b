// Lines that send the plug-in raw events, and settings.
#include "vetch/interface/BView.h"
#include "wren/core/Event.h"
#include "wren/core/PluginBundle.h"
#include "wren/core/PreferencePanels.h"
#include "wren/script/LineHandlers.h"
#include "wren/script/MessageJson.h"

namespace wren::lines {

namespace {

// Fields of the event that the line leaves out are empty: the plug-in never reads a missing field.
EventRecord ReadRecord(ScriptSession& session, const Line& line)
{
    EventRecord record = session.TheHost().Events().RecordFor(line.Integer("event"));
    const Document* document = session.TheHost().Current();
    const std::string directory = document == nullptr ? "" : DirectoryOf(*document);
    record.name = line.OptionalText("name").value_or(record.event == Event::kFilesOfSymbol ? directory : "");
    record.symbol = line.OptionalText("symbol").value_or("");
    record.settingsWords = line.OptionalTexts("args");
    if (record.settingsWords.empty())
        record.settingsWords.emplace_back();
    record.panelIdentifier = line.OptionalText("panel").value_or("");
    if (!line.OptionalFlag("window").value_or(true))
        record.windowOf = 0;
    if (!line.OptionalFlag("document").value_or(true))
        record.document = 0;
    const std::optional<Line> message = line.OptionalObject("message");
    record.message = std::make_shared<BMessage>(message ? MessageFromJson(*message) : BMessage());
    return record;
}

Json WrittenMessage(const EventRecord& record, const Line& line)
{
    if (line.Has("message"))
        return MessageToJson(*record.message, line.Raw("message"));
    return record.event == Event::kFilesOfSymbol ? MessageToJson(*record.message, Json::object()) : Json();
}

} // namespace

void RawEvent(ScriptSession& session, const Line& line, Json& answer)
{
    EventRecord record = ReadRecord(session, line);
    Host& host = session.TheHost();
    std::unique_ptr<BView> panel;
    if (record.event == Event::kOpenPanel) {
        panel.reset(MakePanelView(host.Bundle().Directory(), host.Bundle().Identifier()));
        record.panelView = panel->Token();
    }
    const EventAnswer answered = host.Events().Send(record);
    answer["returned"] = answered.returned;
    answer["initReplyA"] = answered.initReplyA;
    answer["initReplyB"] = answered.initReplyB;
    answer["returnedValue"] = answered.returnedValue ? JsonText(*answered.returnedValue) : Json();
    answer["message"] = WrittenMessage(record, line);
}

void Setting(ScriptSession& session, const Line& line, Json& answer)
{
    const std::vector<std::string> words = SplitAtBlanks(line.Text("line"));
    if (words.empty())
        throw line.Error("line", "has no word");
    answer["returned"] = session.TheHost().Events().SettingsCommand(words);
}

void Save(ScriptSession& session, const Line&, Json&)
{
    std::string error;
    if (!session.TheHost().SaveSettings(&error))
        throw LineError{"settings cannot be written: " + JsonText(error).get<std::string>()};
}

} // namespace wren::lines
