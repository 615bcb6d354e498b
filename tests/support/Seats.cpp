#include "tests/support/Seats.h"

#include "completion/CompletionCommands.h"
#include "generate/CreateTags.h"
#include "generate/TagTemplates.h"
#include "vetch/app/BMessage.h"
#include "vetch/storage/BEntry.h"
#include "vetch/storage/BPath.h"
#include "vetch/support/ShellCommand.h"

#include <cstring>

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

} // namespace

void Seats::Reset()
{
    calls.clear();
    routed = 0;
}

Seats::Seats()
{
    Reset();
    gTagsActions.createIn = CreateTagsIn;
    gTagsActions.create = CreateTagsOf;
    gTagsActions.helpCreate = HelpCreateTagsOf;
    gTagsActions.createLocal = CreateLocal;
    gTagsActions.createOrUpdateLocal = CreateOrUpdateLocal;
    gTagsActions.directorySelected = DirectorySelected;
    gCompletionActions = {Suggest, AutoSuggest, Selected, Route};
}

Seats::~Seats()
{
    gTagsActions = tags;
    gCompletionActions = completion;
}
