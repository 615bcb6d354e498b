// wren: looks symbols up in source code, and opens it in the editor.
#include "base/ExitStatus.h"
#include "vetch/support/Complaint.h"
#include "wren/cli/CommandSupport.h"
#include "wren/cli/Commands.h"
#include "wren/cli/OpenEditor.h"
#include "wren/cli/symbols/SymbolCommands.h"
#include "wren/core/Interruption.h"
#include "wren/core/ProgramOutput.h"
#include "wren/core/TerminalText.h"
#include "wren/lsp/LspCommand.h"
#include "wren/script/ScriptCommand.h"

#include <CLI/CLI.hpp>

#include <csignal>
#include <cstdio>
#include <filesystem>
#include <string>
#include <unistd.h>

namespace {

constexpr const char* kFooter =
    R"(Without a command, wren FILE... opens the files in the editor, in the one that runs if there is one.

Examples:
    wren src/main.cpp:12                opens the file at line 12; wren +12 src/main.cpp as well
    wren --wait notes.txt               opens it, and ends when it is closed: for EDITOR
    wren definition src/main.cpp:12:8   where the name at line 12, column 8 is defined
    wren references src/main.cpp:12:8   where it is used
    wren find shp                       the symbols with these letters
    wren outline src/main.cpp           the symbols of a file
    wren tags                           makes the tags of the current directory
    wren tags --system                  makes the tags of the system's headers
    wren lookup src/main.cpp:12:8       what the tags know of the name at a place
    wren complete src/main.cpp:12:8     what completes the name that ends before column 8

"lookup" and "complete" answer from tags files, the other commands from an index of the project,
which they make when it is missing.

Each command explains itself: wren lookup --help. The exit status is 0 when all went well, 2 for
wrong usage; what others there are, the commands say.)";

} // namespace

int main(int count, char** words)
{
    // The parent process may ignore SIGCHLD, and a program that inherits that cannot wait for its children.
    std::signal(SIGCHLD, SIG_DFL);
    if (wren::AsksForEditor(count, words))
        return wren::OpenEditor(words);
    // A write without a reader has to fail, so that the command can clean up. SIGPIPE is caught and not ignored:
    // programs that this one starts then get the default action.
    std::signal(SIGPIPE, [](int) {});
    vetch::SetComplaintReporter(wren::Complain);
    CLI::App app("Looks symbols up in source code.", "wren");
    app.footer(kFooter);
    app.set_version_flag("--version", std::string("wren ") + WREN_VERSION);
    // The editor's; they are here for --help. Words that begin with one of them never get here.
    bool unused = false;
    app.add_flag("--wait", unused, "with files: end when they are closed in the editor");
    app.add_flag("--new-instance", unused, "open an editor of its own, even if one is running");
    app.require_subcommand(1);
    int status = 0;
    wren::AddPlaceCommands(app, &status);
    wren::AddFindCommand(app, &status);
    wren::AddOutlineCommand(app, &status);
    wren::AddGraphCommand(app, &status);
    wren::AddExplainCommand(app, &status);
    wren::AddIndexCommand(app, &status);
    wren::AddLookupCommand(app, &status);
    wren::AddTagsCommand(app, &status);
    wren::AddCompleteCommand(app, &status);
    wren::lsp::AddLspCommand(app, &status);
    wren::AddScriptCommand(app, &status);
    try {
        app.parse(count, words);
    } catch (const CLI::ParseError& error) {
        return app.exit(error) == 0 ? base::exit_status::kDone : base::exit_status::kUnusable;
    } catch (const std::filesystem::filesystem_error& error) { // the current directory was removed
        const std::string name = error.path1().empty() ? "the current directory" : error.path1().string();
        std::fprintf(stderr, "wren: %s cannot be used: %s\n", wren::ShownOn(STDERR_FILENO, name).c_str(),
                     error.code().message().c_str());
        return base::exit_status::kUnusable;
    }
    if (wren::ProgramOutput::ReaderIsGone())
        wren::DieBySignal(SIGPIPE);
    return status;
}
