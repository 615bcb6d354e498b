#include "HeadlessEditor.h"

#include "vetch/app/Loop.h"
#include "wren/core/SystemTags.h"

#include <cstdio>
#include <cstdlib>
#include <filesystem>

namespace fs = std::filesystem;

void Fail(const std::string& error)
{
    std::fprintf(stderr, "%s\n", error.c_str());
    std::exit(1);
}

HeadlessEditor::~HeadlessEditor()
{
    host.reset();
    std::error_code ignored;
    if (!home.empty())
        fs::remove_all(home, ignored);
}

void HeadlessEditor::Start(const std::string& systemTags)
{
    std::error_code problem;
    const fs::path file = fs::canonical(systemTags, problem);
    if (problem)
        Fail(systemTags + ": " + problem.message());
    home = (fs::temp_directory_path() / "bench-home-XXXXXX").string();
    if (::mkdtemp(home.data()) == nullptr)
        Fail(home + " cannot be made");
    fs::create_directories(wren::SystemTagsDirectory(home));
    fs::create_symlink(file, wren::SystemTagsFile(home));
    ::setenv("HOME", home.c_str(), 1);

    std::string error;
    bundle = wren::PluginBundle::Load(wren::PluginBundle::DefaultDirectory(), &error);
    if (bundle == nullptr)
        Fail(error);
    vetch::SetDisplay(&display);
    vetch::SetTurns(true);
    host.emplace(*bundle, face, face, "");
    host->Start();
    host->Events().SettingsCommand({"DeclAutomaticallyRebuild", "off"}); // nothing but the lookup is measured
}
