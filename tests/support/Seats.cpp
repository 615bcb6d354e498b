#include "tests/support/Seats.h"

#include "generate/TagTemplates.h"
#include "vetch/app/BMessage.h"
#include "vetch/storage/BEntry.h"
#include "vetch/storage/BPath.h"
#include "vetch/support/ShellCommand.h"

#include <cstring>

class PluginInterface;

std::vector<std::string> Seats::calls;
long Seats::routed = 0;

namespace {

void Record(const std::string& call)
{
    Seats::calls.push_back(call);
}

std::string Flags(bool system, bool local)
{
    return std::string(system ? " system" : "") + (local ? " local" : "");
}

// Templates by name: only the choice matters here, their texts have their own tests.
std::string TemplateName(const char* text)
{
    if (text == nullptr)
        return "none";
    if (std::strcmp(text, kGenerateLocalCtags) == 0)
        return "local";
    if (std::strcmp(text, kGenerateSystemCtags) == 0)
        return "system";
    return std::strcmp(text, kIncludeSpecificCompiler) == 0 ? "compiler" : text;
}

} // namespace

#define WRAPS(symbol) __asm__("__wrap_" symbol)

void CreateTagsIn(PluginInterface*, const BEntry& directory, const char* main, const char* second,
                  const vetch::ShellRequest&)
    WRAPS("_Z10CreateTagsP15PluginInterfaceRK6BEntryPKcS5_RKN5vetch12ShellRequestE");
void CreateTagsOf(PluginInterface*, bool system, bool local) WRAPS("_Z10CreateTagsP15PluginInterfacebb");
void HelpCreateTagsOf(PluginInterface*, bool system, bool local) WRAPS("_Z14HelpCreateTagsP15PluginInterfacebb");
void CreateLocal(PluginInterface*) WRAPS("_Z15CreateLocalTagsP15PluginInterface");
void CreateOrUpdateLocal(PluginInterface*) WRAPS("_Z23CreateOrUpdateLocalTagsP15PluginInterface");
void DirectorySelected(PluginInterface*, const BMessage* message)
    WRAPS("_Z33HandleCreateTagsDirectorySelectedP15PluginInterfacePK8BMessage");
void Suggest(PluginInterface*) WRAPS("_Z27SelectionSuggestCompletionsP15PluginInterface");
void AutoSuggest(PluginInterface*) WRAPS("_Z31SelectionAutoSuggestCompletionsP15PluginInterface");
void Selected(PluginInterface*, const BMessage* message) WRAPS("_Z18CompletionSelectedP15PluginInterfacePK8BMessage");
long Route(PluginInterface*, const BMessage* keyDown)
    WRAPS("_ZN16CompletionWindow26RouteKeyboardEventIfNeededEP15PluginInterfacePK8BMessage");

void CreateTagsIn(PluginInterface*, const BEntry& directory, const char* main, const char* second,
                  const vetch::ShellRequest&)
{
    Record(std::string("CreateTags in ") + BPath(&directory).Path() + ": " + TemplateName(main) + ", " +
           TemplateName(second));
}

void CreateTagsOf(PluginInterface*, bool system, bool local)
{
    Record("CreateTags" + Flags(system, local));
}

void HelpCreateTagsOf(PluginInterface*, bool system, bool local)
{
    Record("HelpCreateTags" + Flags(system, local));
}

void CreateLocal(PluginInterface*)
{
    Record("CreateLocalTags");
}

void CreateOrUpdateLocal(PluginInterface*)
{
    Record("CreateOrUpdateLocalTags");
}

void DirectorySelected(PluginInterface*, const BMessage* message)
{
    EntryRef directory;
    message->FindRef("refs", &directory);
    Record("HandleCreateTagsDirectorySelected " + directory.Path());
}

void Suggest(PluginInterface*)
{
    Record("SelectionSuggestCompletions");
}

void AutoSuggest(PluginInterface*)
{
    Record("SelectionAutoSuggestCompletions");
}

void Selected(PluginInterface*, const BMessage* message)
{
    const char* completion = "";
    message->FindString("completion", &completion);
    Record(std::string("CompletionSelected ") + completion);
}

long Route(PluginInterface*, const BMessage* keyDown)
{
    int8 byte = 0;
    if (keyDown != nullptr)
        keyDown->FindInt8("byte", 0, &byte);
    Record(std::string("RouteKeyboardEventIfNeeded ") + static_cast<char>(byte));
    return Seats::routed;
}
