#include "wren/cli/AskedEditor.h"

#include "vetch/app/Loop.h"

#include <cstdlib>
#include <filesystem>

namespace wren {

namespace fs = std::filesystem;

bool AskedEditor::Start(const EditorOptions& options, std::string* error)
{
    if (!options.home.empty())
        ::setenv("HOME", fs::absolute(options.home).c_str(), 1);
    home.emplace(options.systemTags, error);
    if (!error->empty())
        return false;
    bundle = PluginBundle::Load(options.bundle.empty() ? PluginBundle::DefaultDirectory() : options.bundle, error);
    if (bundle == nullptr)
        return false;
    vetch::SetDisplay(&display);
    vetch::SetTurns(true);
    host.emplace(*bundle, face, face, "");
    host->Start();
    // A question changes nothing on the disk.
    host->Events().SettingsCommand({"DeclAutomaticallyRebuild", "off"});
    return true;
}

Document* AskedEditor::OpenAt(const Place& place, WithoutColumn withoutColumn, std::string* error)
{
    Document* document = host->Open(fs::absolute(place.file), std::nullopt, false, error);
    if (document == nullptr)
        return nullptr;
    const std::optional<long> offset = OffsetOf(place, withoutColumn, document->Text(), error);
    if (!offset)
        return nullptr;
    document->Select(*offset, *offset);
    return document;
}

} // namespace wren
