#include "wren/desktop/Arguments.h"

#include "base/ExitStatus.h"
#include "wren/core/PluginBundle.h"
#include "wren/core/UserDirectories.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <filesystem>

namespace wren {

namespace {

constexpr const char* kFooter =
    R"(Files are opened in the editor that is running, if there is one. Without files, what was open last
time is opened again. The settings are plain lines in ~/.config/wren/settings.)";

// The line and column of "+LINE" or "+LINE:COLUMN", without a file.
std::optional<Place> JumpFrom(const std::string& word)
{
    std::error_code unknown;
    std::string error;
    if (!word.starts_with('+') || std::filesystem::exists(word, unknown))
        return std::nullopt;
    std::optional<Place> place = ParsePlace("+:" + word.substr(1), &error);
    if (place && place->file != "+")
        return std::nullopt;
    return place;
}

void TakeFolder(DesktopArguments* arguments)
{
    std::error_code unknown;
    const auto folder = std::ranges::find_if(
        arguments->places, [&](const Place& place) { return std::filesystem::is_directory(place.file, unknown); });
    if (folder == arguments->places.end())
        return;
    arguments->options.folder = std::filesystem::canonical(folder->file, unknown);
    arguments->places.erase(folder);
}

// Beside this program in a build, and where programs are when it is installed.
std::string CommandLineProgram()
{
    namespace fs = std::filesystem;
    std::error_code unknown;
    const fs::path here = fs::read_symlink("/proc/self/exe", unknown).parent_path();
    const fs::path beside = here / "wren";
    return fs::exists(beside, unknown) ? beside : here.parent_path().parent_path() / "bin/wren";
}

} // namespace

std::optional<DesktopArguments> ParseArguments(int count, char** words, int* status)
{
    CLI::App app("Opens files in the editor.", "wren");
    app.footer(kFooter);
    app.set_version_flag("--version", std::string("wren ") + WREN_VERSION);
    DesktopArguments arguments;
    const std::string configuration = ConfigDirectory();
    arguments.options.bundle = PluginBundle::DefaultDirectory();
    arguments.options.program = CommandLineProgram();
    arguments.options.settingsFile = configuration.empty() ? "" : configuration + "/settings";
    std::vector<std::string> files;
    bool fresh = false;
    bool plain = false;
    app.add_option("FILE", files,
                   "a file, or FILE:LINE or FILE:LINE:COLUMN; +LINE before or behind it goes there too; or a "
                   "directory, which opens with the files and panels that it had last time");
    app.add_flag("--wait", arguments.waits, "end when the files are closed");
    app.add_flag("--new-instance", arguments.isOnItsOwn, "open an editor of its own, even if one is running");
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
    arguments.places = PlacesFrom(files);
    TakeFolder(&arguments);
    // A running editor could not follow these.
    for (const char* option : {"--bundle", "--settings", "--no-index", "--new"})
        arguments.isOnItsOwn = arguments.isOnItsOwn || app.count(option) != 0;
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

std::vector<Place> PlacesFrom(const std::vector<std::string>& words)
{
    std::vector<Place> places;
    std::optional<Place> jump;
    for (const std::string& word : words) {
        if (const std::optional<Place> read = JumpFrom(word)) {
            jump = read;
            continue;
        }
        places.push_back(PlaceFrom(word));
        if (jump)
            places.back() = {word, jump->line, jump->column};
        jump.reset();
    }
    if (jump && !places.empty() && places.back().line == 0)
        places.back() = {places.back().file, jump->line, jump->column};
    return places;
}

} // namespace wren
