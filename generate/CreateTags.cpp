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
#include "vetch/support/ShellEscape.h"

#include <string>
#include <sys/stat.h>

namespace {

constexpr uint32 kDirectoryChosen = FourCC("gnlt");

bool Exists(const char* path)
{
    struct stat status;
    return ::stat(path, &status) == 0;
}

bool CTagsAreInstalled()
{
    return gTagsActions.exists("/usr/bin/cplustags");
}

// The command itself names the destination of the tags.
std::string MoveCommand(const std::string& command, const std::string& directory)
{
    if (command.find(kSystemTagsTemporary) != std::string::npos)
        return std::string("mv ") + kSystemTagsTemporary + " " + kSystemTags;
    return "mv " + EscapedPath(directory + "/tags.tmp") + " " + EscapedPath(directory + "/tags");
}

void Paste(PluginInterface* host, const std::string& text)
{
    host->AppendToWorksheet(text.c_str(), true, true, true);
}

void PasteCommand(PluginInterface* host, const BEntry& directory, bool installed, std::string command)
{
    BuildTagString(host, directory, installed, command);
    Paste(host, command);
}

void PasteInstallHint(PluginInterface* host)
{
    std::string command = kInstallCtags;
    ReplaceAll(command, "$(CTAGS_TO_INSTALL)", CTagsInWrenPath(host).c_str());
    Paste(host, command);
}

} // namespace

TagsActions gTagsActions = {.exists = Exists};

// All requests for one directory share one temporary file. Two at once interfere; the later one wins.
void CreateTags(PluginInterface* host, const BEntry& directory, const char* main, const char* second,
                const vetch::ShellRequest& request)
{
    const bool installed = CTagsAreInstalled();
    const std::string path = BPath(&directory).Path();
    std::vector<std::string> commands = {main};
    if (second != nullptr && *second != '\0')
        commands.push_back(second);
    for (std::string& command : commands) {
        BuildTagTmpLocationString(host, (path + "/tags.tmp").c_str(), command);
        BuildTagString(host, directory, installed, command);
    }
    commands.push_back(MoveCommand(commands[0], path));
    StartCreateTagsTask(std::move(commands), request);
}

void CreateTags(PluginInterface* host, const BEntry& directory, const char* main, const char* second)
{
    CreateTags(host, directory, main, second, vetch::ShellRequest());
}

void CreateTags(PluginInterface* host, bool system, bool local)
{
    BEntry directory;
    GetTargetParentDir(host, directory);
    if (system)
        CreateTags(host, directory, kGenerateSystemCtags, SecondSystemTemplate(host));
    if (local)
        CreateTags(host, directory, kGenerateLocalCtags, nullptr);
}

void HelpCreateTags(PluginInterface* host, const BEntry& directory, const char* main, const char* second, bool& hint)
{
    const bool installed = CTagsAreInstalled();
    // Checked again: a user who installs it now, after an earlier hint, gets no second hint. The commands still name
    // the bundle's copy, which works.
    if (!installed && hint && !CTagsAreInstalled())
        PasteInstallHint(host);
    hint = false; // also with nothing to paste: only the first command of a request may hint
    PasteCommand(host, directory, installed, main);
    if (second != nullptr)
        PasteCommand(host, directory, installed, second);
}

void HelpCreateTags(PluginInterface* host, bool system, bool local)
{
    BEntry directory;
    GetTargetParentDir(host, directory);
    bool hint = true;
    if (system)
        HelpCreateTags(host, directory, kGenerateSystemCtags, SecondSystemTemplate(host), hint);
    if (local)
        HelpCreateTags(host, directory, kGenerateLocalCtags, nullptr, hint);
}

void CreateLocalTags(PluginInterface* host)
{
    BEntry directory;
    GetTargetParentDir(host, directory);
    EntryRef start;
    directory.GetRef(&start);
    const BMessenger application(be_app);
    // It deletes itself when answered or closed; a second request opens another panel.
    auto* panel = new BFilePanel(B_OPEN_PANEL, &application, &start, B_DIRECTORY_NODE, false, nullptr, nullptr);
    panel->Window()->SetTitle("Select Directory To tag");
    const BMessage chosen(kDirectoryChosen);
    panel->SetMessage(&chosen);
    panel->Show();
}

void CreateOrUpdateLocalTags(PluginInterface* host)
{
    BEntry tags;
    GetTargetParentDir(host, tags);
    if (!FindTags(&tags))
        return CreateLocalTags(host);
    BEntry directory;
    tags.GetParent(&directory);
    CreateTags(host, directory, kGenerateLocalCtags, nullptr);
}

void HandleCreateTagsDirectorySelected(PluginInterface* host, const BMessage* message)
{
    EntryRef chosen;
    if (message->FindRef("refs", &chosen) == B_OK)
        CreateTags(host, BEntry(&chosen, true), kGenerateLocalCtags, nullptr);
}
