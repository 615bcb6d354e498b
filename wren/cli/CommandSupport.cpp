#include "wren/cli/CommandSupport.h"

#include "wren/core/ProgramOutput.h"
#include "wren/core/TerminalText.h"

#include <CLI/CLI.hpp>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <unistd.h>

namespace wren {

void Complain(const std::string& text)
{
    std::fprintf(stderr, "wren: %s\n", ShownOn(STDERR_FILENO, text).c_str());
}

bool WriteOrComplain(ProgramOutput& output, const std::string& text, const char* what)
{
    return WriteAsIsOrComplain(output, output.IsTerminal() ? ForTerminal(text) : text, what);
}

bool WriteAsIsOrComplain(ProgramOutput& output, const std::string& text, const char* what)
{
    if (output.Write(text))
        return true;
    if (!ProgramOutput::ReaderIsGone())
        Complain(std::string("cannot write ") + what + ": " + std::strerror(errno));
    return false;
}

void AddEditorOptions(CLI::App& command, EditorOptions& options)
{
    command.add_option("--system-tags", options.systemTags, "Use this file as the system's tags");
    command.add_option("--home", options.home, "The home directory (default: $HOME)");
    command.add_option("--bundle", options.bundle, "The plug-in's bundle (default: the one beside this program)");
}

} // namespace wren
