#include "wren/desktop/Arguments.h"

#include "base/ExitStatus.h"
#include "wren/core/PluginBundle.h"
#include "wren/core/UserDirectories.h"

#include <CLI/CLI.hpp>

#include <filesystem>

namespace wren {

namespace {

constexpr const char* kFooter =
    R"(Without files, what was open last time is opened again. The settings are plain lines in
~/.config/wren/settings.)";

} // namespace

std::optional<DesktopArguments> ParseArguments(int count, char** words, int* status)
{
    CLI::App app("Opens files in the editor.", "wren");
    app.footer(kFooter);
    app.set_version_flag("--version", std::string("wren ") + WREN_VERSION);
    DesktopArguments arguments;
    const std::string configuration = ConfigDirectory();
    arguments.options.bundle = PluginBundle::DefaultDirectory();
    arguments.options.settingsFile = configuration.empty() ? "" : configuration + "/settings";
    std::vector<std::string> files;
    bool fresh = false;
    bool plain = false;
    app.add_option("FILE", files, "a file, or FILE:LINE or FILE:LINE:COLUMN");
    app.add_option("--bundle", arguments.options.bundle, "the plug-in's bundle")->type_name("DIR");
    app.add_option("--settings", arguments.options.settingsFile, "the file with the settings")->type_name("FILE");
    app.add_flag("--new", fresh, "leave what was open last time closed");
    app.add_flag("--no-index", plain, "make no index of names: the plug-in alone answers, from tags files");
    try {
        app.parse(count, words);
    } catch (const CLI::ParseError& error) {
        *status = app.exit(error) == 0 ? base::exit_status::kDone : base::exit_status::kUnusable;
        return std::nullopt;
    }
    arguments.options.restoresSession = !fresh;
    arguments.options.understandsNames = !plain;
    for (const std::string& file : files)
        arguments.places.push_back(PlaceFrom(file));
    return arguments;
}

Place PlaceFrom(const std::string& word)
{
    std::error_code unknown;
    std::string error;
    if (!std::filesystem::exists(word, unknown))
        if (const std::optional<Place> place = ParsePlace(word, &error))
            return *place;
    return {word, 0, 0};
}

} // namespace wren
