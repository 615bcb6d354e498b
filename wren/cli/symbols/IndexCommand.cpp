#include "wren/cli/symbols/SymbolCommands.h"

#include "wren/cli/symbols/IndexRun.h"

#include <CLI/CLI.hpp>
#include <memory>
#include <string>

namespace wren {

namespace {

constexpr const char* kIndexHelp =
    R"(Makes the index of the project that DIR belongs to, or brings it up to date: only changed files
are parsed. The project is the nearest directory at or above DIR with "tags", ".git", ".hg",
".jj", "compile_commands.json" or ".wren" in it; otherwise DIR itself. Other commands do the
same when they need it.

In a git work tree, git's own list of files counts. A file ".wrenignore", in the format of
".gitignore", excludes more.

Indexes are in ~/.cache/declaration, a directory for each project, and contain names, kinds
and line numbers of your sources. They can be removed at any time.

A server can make an index for all users of a project: --export writes it to a file, and with
--import, only sources that differ from those on the server are parsed.

Exit status: 0 all went well, 1 there is no index (--status, --remove) or it could not be
made, 2 wrong usage, or a directory that cannot be used. An interrupted run ends by the
signal; the index is then as before. What a first run has parsed is kept for the next one; a
second signal ends it at once.

Examples:
    wren index
    wren index ~/src/project --status
    wren index --watch
    wren index --system
    wren index --export project.index
    wren index --import project.index
    wren index --remove)";

} // namespace

void AddIndexCommand(CLI::App& app, int* status)
{
    CLI::App* command = app.add_subcommand("index", "Make the index of a project's symbols, or bring it up to date");
    auto words = std::make_shared<IndexWords>();
    command->add_option("DIR", words->directory, "A directory of the project (default: the current one)");
    command->add_flag("--system", words->system, "The index of the system's headers instead");
    CLI::Option* show = command->add_flag("--status", words->status, "Only print what the index holds");
    CLI::Option* watch = command->add_flag("--watch", words->watch, "Keep it up to date until interrupted");
    CLI::Option* remove = command->add_flag("--remove", words->remove, "Remove its files");
    CLI::Option* out = command->add_option("--export", words->exportTo, "Then write the index to this file");
    CLI::Option* in = command->add_option("--import", words->importFrom, "First take over the index in this file");
    out->type_name("FILE");
    in->type_name("FILE");
    show->excludes(watch)->excludes(remove)->excludes(out)->excludes(in);
    remove->excludes(watch)->excludes(out)->excludes(in);
    watch->excludes(out);
    command->footer(kIndexHelp);
    command->callback([words, status] { *status = RunIndex(*words); });
}

} // namespace wren
