#include "wren/core/PluginEvents.h"

#include "vetch/storage/BEntry.h"
#include "vetch/storage/BPath.h"
#include "wren/core/Documents.h"
#include "wren/core/Event.h"
#include "wren/core/KeyMessage.h"
#include "wren/core/PluginCalls.h"
#include "wren/core/SettingsStore.h"

namespace wren {

PluginEvents::PluginEvents(PluginCalls& calls, const Documents& documents) : calls(calls), documents(documents) {}

EventRecord PluginEvents::RecordFor(long event) const
{
    EventRecord record;
    record.event = event;
    if (const Document* current = documents.Current())
        record.document = record.windowOf = current->Id();
    return record;
}

EventAnswer PluginEvents::Send(const EventRecord& event)
{
    return calls.Send(event);
}

long PluginEvents::SendPlain(long event)
{
    return Send(RecordFor(event)).returned;
}

void PluginEvents::FirstContact()
{
    SendPlain(Event::kFirstContact);
}

void PluginEvents::Register()
{
    SendPlain(Event::kRegister);
}

bool PluginEvents::SettingsLine(const std::string& line)
{
    return SettingsCommand(SplitAtBlanks(line)) != 0;
}

long PluginEvents::SettingsCommand(const std::vector<std::string>& words)
{
    EventRecord record = RecordFor(Event::kSettingsCommand);
    record.settingsWords = words;
    return Send(record).returned;
}

void PluginEvents::MenuBarBuilt()
{
    SendPlain(Event::kMenuBarBuilt);
}

void PluginEvents::ResourceIDs()
{
    SendPlain(Event::kResourceIDs);
}

void PluginEvents::OfferPanels()
{
    SendPlain(Event::kOfferPanels);
}

void PluginEvents::Unload()
{
    SendPlain(Event::kUnload);
}

void PluginEvents::MenusShowing()
{
    SendPlain(Event::kMenusShowing);
}

long PluginEvents::ButtonClicked()
{
    return SendPlain(Event::kButtonClicked);
}

long PluginEvents::ButtonPopUp()
{
    return SendPlain(Event::kButtonPopUp);
}

long PluginEvents::Command(const std::string& name)
{
    EventRecord record = RecordFor(Event::kCommand);
    record.name = name;
    return Send(record).returned;
}

long PluginEvents::MouseDown()
{
    return SendPlain(Event::kMouseDown);
}

long PluginEvents::KeyDown(const KeyStroke& key)
{
    EventRecord record = RecordFor(Event::kKeyDown);
    record.message = std::make_shared<BMessage>(KeyMessage(key));
    return Send(record).returned;
}

long PluginEvents::KeyTyped()
{
    return SendPlain(Event::kKeyTyped);
}

long PluginEvents::PrimitiveDone()
{
    return SendPlain(Event::kPrimitiveDone);
}

long PluginEvents::Activated()
{
    return SendPlain(Event::kActivated);
}

long PluginEvents::Deactivated()
{
    return SendPlain(Event::kDeactivated);
}

long PluginEvents::DocumentChanged()
{
    return SendPlain(Event::kDocumentChanged);
}

long PluginEvents::Dismissed()
{
    return SendPlain(Event::kDismissed);
}

long PluginEvents::Obscured()
{
    return SendPlain(Event::kObscured);
}

long PluginEvents::MessageFor(long document, const BMessage& message)
{
    EventRecord record;
    record.event = Event::kDocumentMessage;
    record.document = record.windowOf = document;
    record.message = std::make_shared<BMessage>(message);
    return Send(record).returned;
}

void PluginEvents::SaveSettings()
{
    SendPlain(Event::kSaveSettings);
}

std::optional<std::string> PluginEvents::Setting(const std::string& name)
{
    EventRecord record = RecordFor(Event::kQuerySetting);
    record.name = name;
    return Send(record).returnedValue;
}

long PluginEvents::OpenPanel(const std::string& identifier, vetch::HandlerToken view)
{
    EventRecord record = RecordFor(Event::kOpenPanel);
    record.panelIdentifier = identifier;
    record.panelView = view;
    return Send(record).returned;
}

std::vector<EntryRef> PluginEvents::FilesOfSymbol(const Document& document, const std::string& symbol)
{
    EventRecord record = RecordFor(Event::kFilesOfSymbol);
    record.name = DirectoryOf(document);
    record.symbol = symbol;
    record.message = std::make_shared<BMessage>();
    Send(record);
    std::vector<EntryRef> files;
    EntryRef ref;
    while (record.message->FindRef("refs", static_cast<int32>(files.size()), &ref) == B_OK)
        files.push_back(ref);
    return files;
}

std::string DirectoryOf(const Document& document)
{
    BEntry directory;
    BEntry(&document.Ref()).GetParent(&directory);
    return BPath(&directory).Path();
}

} // namespace wren
