#include "wren/core/HostRecord.h"

#include "vetch/interface/BMenu.h"
#include "vetch/interface/BView.h"
#include "wren/core/CommandTable.h"
#include "wren/core/Documents.h"
#include "wren/core/Face.h"
#include "wren/core/HostObserver.h"
#include "wren/core/Menus.h"
#include "wren/core/PluginBundle.h"
#include "wren/core/PreferencePanels.h"
#include "wren/core/SettingsStore.h"
#include "wren/core/Worksheet.h"

#include <cstdarg>
#include <cstdio>
#include <cstring>
#include <memory>

namespace wren {

namespace {

const EntryRef kNoRef;

const char* TextOf(const char* text)
{
    return text == nullptr ? "" : text;
}

// The formatted text, of any length.
std::string Formatted(const char* format, va_list arguments)
{
    va_list again;
    va_copy(again, arguments);
    const int length = std::vsnprintf(nullptr, 0, format, again);
    va_end(again);
    if (length <= 0)
        return "";
    std::string text(length + 1, '\0');
    std::vsnprintf(text.data(), text.size(), format, arguments);
    text.pop_back();
    return text;
}

char* NewArray(const std::string& text)
{
    char* copy = new char[text.size() + 1];
    std::memcpy(copy, text.c_str(), text.size() + 1);
    return copy;
}

} // namespace

HostRecord::HostRecord(const HostParts& parts, const EventRecord& event)
    : parts(parts), document(parts.documents.Find(event.document))
{
    window = parts.documents.WindowOf(event.windowOf);
    message = event.message.get();
    name = event.name.c_str();
    symbol = event.symbol.c_str();
    documentID = document == nullptr ? 0 : document->Id();
    panelView = dynamic_cast<BView*>(vetch::FindHandler(event.panelView));
    panelIdentifier = event.panelIdentifier.c_str();
    bundle = parts.bundle.Directory();
    for (const std::string& word : event.settingsWords)
        words.push_back(word.c_str());
    words.push_back(nullptr);
    wordList = words.data();
    settingsArgs = &wordList;
}

HostRecord::~HostRecord()
{
    delete[] returnedValue;
    if (document != nullptr)
        document->CloseUndo();
}

EventAnswer HostRecord::TakeAnswer(long returned)
{
    EventAnswer answer{returned, initReplyA, initReplyB, {}};
    if (returnedValue != nullptr)
        answer.returnedValue = returnedValue;
    return answer;
}

void HostRecord::SetResourceIDs(long first, long second)
{
    parts.observer.Changed(ResourceIDsSet{first, second});
}

void HostRecord::GetSelection(long* start, long* end)
{
    const Selection selected = document == nullptr ? Selection() : document->Selected();
    *start = selected.start;
    *end = selected.end;
}

long HostRecord::TextLength()
{
    return document == nullptr ? 0 : document->Length();
}

void HostRecord::GetText(char* buffer, long offset, long length)
{
    if (document != nullptr)
        document->GetText(buffer, offset, length);
}

char HostRecord::CharAt(long offset)
{
    return document == nullptr ? '\0' : document->CharAt(offset);
}

void HostRecord::GetMouse(BPoint* where, uint32* buttons, bool)
{
    const MouseState mouse = parts.face.Mouse();
    *where = mouse.where;
    *buttons = mouse.buttons;
}

long HostRecord::OffsetAt(const BPoint* where)
{
    return document == nullptr ? 0 : parts.face.OffsetAt(*document, *where);
}

BPoint HostRecord::PointAt(long offset) const
{
    return document == nullptr ? BPoint() : parts.face.PointAt(*document, offset);
}

BRect HostRecord::TextBounds()
{
    return document == nullptr ? BRect() : parts.face.TextBounds(*document);
}

BRect HostRecord::ButtonFrame()
{
    return document == nullptr ? BRect() : parts.face.ButtonFrame(*document);
}

void HostRecord::RegisterSetting(const char* settingName)
{
    parts.settings.Register(TextOf(settingName));
    parts.observer.Changed(SettingRegistered{TextOf(settingName)});
}

void HostRecord::RegisterCommand(const char* command, const char* help)
{
    parts.commands.Register(TextOf(command), TextOf(help));
    parts.observer.Changed(CommandRegistered{TextOf(command), TextOf(help)});
}

void HostRecord::SetPluginFlags(long flags)
{
    parts.observer.Changed(PluginFlagsSet{flags});
}

void HostRecord::CommandDone(long status)
{
    parts.observer.Changed(wren::CommandDone{status});
}

const EntryRef* HostRecord::DocumentRef()
{
    return document == nullptr ? &kNoRef : &document->Ref();
}

bool HostRecord::InputPending()
{
    return parts.face.InputPending();
}

bool HostRecord::IsWorksheet()
{
    return document != nullptr && document->IsWorksheet();
}

void HostRecord::WriteSettings(const char* format, ...)
{
    va_list arguments;
    va_start(arguments, format);
    const std::string text = Formatted(format, arguments);
    va_end(arguments);
    parts.settings.Write(text);
    if (!parts.settings.OnlyListens())
        parts.observer.Changed(SettingsWritten{text});
}

long HostRecord::LineAt(long offset)
{
    return document == nullptr ? 0 : document->LineAt(offset);
}

void HostRecord::BeginUndo(long selStart, long selEnd, const char* actionName)
{
    if (document == nullptr)
        return;
    document->BeginUndo({selStart, selEnd}, TextOf(actionName));
    parts.observer.Changed(UndoBegun{document->Id(), {selStart, selEnd}, TextOf(actionName)});
}

void HostRecord::InsertText(const char* text, long length, long offset)
{
    if (document == nullptr || length < 0)
        return;
    const std::string inserted(TextOf(text), text == nullptr ? 0 : length);
    document->Insert(offset, inserted);
    parts.observer.Changed(TextInserted{document->Id(), inserted, offset});
}

void HostRecord::DeleteText(long offset, long length)
{
    if (document == nullptr)
        return;
    document->Delete(offset, length);
    parts.observer.Changed(TextDeleted{document->Id(), offset, length});
}

void HostRecord::Select(long start, long end)
{
    if (document == nullptr)
        return;
    document->Select(start, end);
    parts.observer.Changed(TextSelected{document->Id(), {start, end}});
}

char* HostRecord::ExpandVariables(const char* text, long length)
{
    if (text == nullptr)
        return nullptr;
    const std::string source = length < 0 ? std::string(text) : std::string(text, length);
    return NewArray(wren::ExpandVariables(source, parts.worksheet));
}

void HostRecord::AppendToWorksheet(const char* text, bool first, bool second, bool third)
{
    parts.worksheet.Append(TextOf(text));
    parts.observer.Changed(WorksheetAppended{TextOf(text), first, second, third});
}

void HostRecord::GetCommandShortcut(const char* command, char* key, uint32* modifiers)
{
    const KeyBinding binding = parts.commands.BindingOf(TextOf(command));
    *key = binding.key;
    *modifiers = binding.modifiers;
}

BMenuItem* HostRecord::AddMenuItem(BMenu* menu, long index, const char* label, const char* command, char key,
                                   uint32 modifiers)
{
    BMenuItem* item = parts.menus.AddItem(menu, index, TextOf(label), TextOf(command), key, modifiers);
    if (item != nullptr)
        parts.observer.Changed(MenuItemAdded{menu->Name(), index, TextOf(label), TextOf(command), key, modifiers});
    return item;
}

void HostRecord::RegisterPreferencePanel(const char* identifier, const char* title, const char* iconFile)
{
    parts.panels.Register({TextOf(identifier), TextOf(title), TextOf(iconFile)});
    parts.observer.Changed(PreferencePanelRegistered{TextOf(identifier), TextOf(title), TextOf(iconFile)});
}

} // namespace wren
