// wren: looks symbols up in source code.
#include "wren/cli/Commands.h"

#include <CLI/CLI.hpp>

namespace {

constexpr int kWrongUsage = 2;

} // namespace

int main(int argc, char** argv)
{
    CLI::App app("Looks symbols up in source code, with the tags files that serve it.", "wren");
    app.set_version_flag("--version", std::string("wren ") + WREN_VERSION);
    app.require_subcommand(1);
    int status = 0;
    wren::AddLookupCommand(app, &status);
    wren::AddCompleteCommand(app, &status);
    wren::AddScriptCommand(app, &status);
    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        return app.exit(error) == 0 ? 0 : kWrongUsage;
    }
    return status;
}
