#include "wren/script/ScriptCommand.h"

#include "wren/script/RunScript.h"

#include <CLI/CLI.hpp>
#include <memory>

namespace wren {

void AddScriptCommand(CLI::App& app, int* status)
{
    CLI::App* command =
        app.add_subcommand("script", "Run the plug-in without a display, driven by JSON lines on standard input");
    auto options = std::make_shared<ScriptOptions>();
    command->add_option("--bundle", options->bundle, "The plug-in's bundle (default: the one beside this program)");
    command->add_option("--home", options->home, "The home directory (default: $HOME)");
    command->add_option("--settings", options->settings, "The file of stored settings (default: none)");
    command->add_flag("--guarded", options->guarded,
                      "Run the plug-in's command lines as the editor does, guarded against hostile trees and failures");
    command->callback([options, status] { *status = RunScript(*options); });
}

} // namespace wren
