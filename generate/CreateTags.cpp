#include "generate/CreateTags.h"

#include "generate/CreateTagsTask.h"
#include "generate/TagTemplates.h"
#include "plugin/PluginInterface.h"
#include "tags/TagDiscovery.h"
#include "tags/TargetDirectory.h"
#include "vetch/interface/BFilePanel.h"
#include "vetch/interface/BWindow.h"
#include "vetch/storage/BEntry.h"
#include "vetch/storage/BPath.h"
#include "vetch/support/Strings.h"

#include <string>
#include <sys/stat.h>

namespace {

constexpr uint32 kDirectoryChosen = FourCC("gnlt");

bool CTagsAreInstalled()
{
    struct stat status;
    return ::stat("/usr/bin/cplustags", &status) == 0;
}

// Which file the tags are moved to is read off the command itself.
std::string MoveCommand(const std::string& command, const std::string& directory)
{
    if (command.find(kSystemTagsTemporary) != std::string::npos)
        return std::string("mv ") + kSystemTagsTemporary + " " + kSystemTags;
    return "mv " + EscapedPath(directory + "/tags.tmp") + " " + EscapedPath(directory + "/tags");
}

void Paste(PluginInterface* pi, const std::string& text)
{
    pi->AppendToWorksheet(text.c_str(), true, true, true);
}

void PasteCommand(PluginInterface* pi, const BEntry& directory, bool installed, std::string command)
{
    BuildTagString(pi, directory, installed, command);
    Paste(pi, command);
}

void PasteInstallHint(PluginInterface* pi)
{
    std::string command = kInstallCtags;
    ReplaceAll(command, "$(CTAGS_TO_INSTALL)", CTagsInWrenPath(pi).c_str());
    Paste(pi, command);
}

} // namespace

// All requests for one directory share one temporary file. Two at once get into each other's way; whoever is last has
// the last word.
void CreateTags(PluginInterface* pi, const BEntry& directory, const char* main, const char* second,
                const vetch::ShellRequest& request)
{
    const bool installed = CTagsAreInstalled();
    const std::string path = BPath(&directory).Path();
    std::vector<std::string> commands = {main};
    if (second != nullptr && *second != '\0')
        commands.push_back(second);
    for (std::string& command : commands) {
        BuildTagTmpLocationString(pi, (path + "/tags.tmp").c_str(), command);
        BuildTagString(pi, directory, installed, command);
    }
    commands.push_back(MoveCommand(commands[0], path));
    StartCreateTagsTask(std::move(commands), request);
}

void CreateTags(PluginInterface* pi, const BEntry& directory, const char* main, const char* second)
{
    CreateTags(pi, directory, main, second, vetch::ShellRequest());
}

void CreateTags(PluginInterface* pi, bool system, bool local)
{
    BEntry directory;
    GetTargetParentDir(pi, directory);
    if (system)
        CreateTags(pi, directory, kGenerateSystemCtags, SecondSystemTemplate(pi));
    if (local)
        CreateTags(pi, directory, kGenerateLocalCtags, nullptr);
}

void HelpCreateTags(PluginInterface* pi, const BEntry& directory, const char* main, const char* second, bool& hint)
{
    const bool installed = CTagsAreInstalled();
    // Looked for once more: whoever installs it right now, as an earlier hint said, is not told to. The commands then
    // name the bundle's copy all the same, which does no harm.
    if (!installed && hint && !CTagsAreInstalled())
        PasteInstallHint(pi);
    hint = false; // also when there was nothing to paste: a request hints with its first command or not at all
    PasteCommand(pi, directory, installed, main);
    if (second != nullptr)
        PasteCommand(pi, directory, installed, second);
}

void HelpCreateTags(PluginInterface* pi, bool system, bool local)
{
    BEntry directory;
    GetTargetParentDir(pi, directory);
    bool hint = true;
    if (system)
        HelpCreateTags(pi, directory, kGenerateSystemCtags, SecondSystemTemplate(pi), hint);
    if (local)
        HelpCreateTags(pi, directory, kGenerateLocalCtags, nullptr, hint);
}

void CreateLocalTags(PluginInterface* pi)
{
    BEntry directory;
    GetTargetParentDir(pi, directory);
    EntryRef start;
    directory.GetRef(&start);
    const BMessenger application(be_app);
    // It deletes itself when it has been answered or closed; asking again meanwhile opens another one.
    auto* panel = new BFilePanel(B_OPEN_PANEL, &application, &start, B_DIRECTORY_NODE, false, nullptr, nullptr);
    panel->Window()->SetTitle("Select Directory To tag");
    const BMessage chosen(kDirectoryChosen);
    panel->SetMessage(&chosen);
    panel->Show();
}

void CreateOrUpdateLocalTags(PluginInterface* pi)
{
    BEntry tags;
    GetTargetParentDir(pi, tags);
    if (!FindTags(&tags))
        return CreateLocalTags(pi);
    BEntry directory;
    tags.GetParent(&directory);
    CreateTags(pi, directory, kGenerateLocalCtags, nullptr);
}

void HandleCreateTagsDirectorySelected(PluginInterface* pi, const BMessage* message)
{
    EntryRef chosen;
    if (message->FindRef("refs", &chosen) == B_OK)
        CreateTags(pi, BEntry(&chosen, true), kGenerateLocalCtags, nullptr);
}
