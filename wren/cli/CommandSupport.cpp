#include "wren/cli/CommandSupport.h"

#include "wren/core/OutputAside.h"

#include <CLI/CLI.hpp>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <unistd.h>

namespace wren {

namespace {

bool IsControl(unsigned char byte)
{
    return (byte < 0x20 && byte != '\t' && byte != '\n') || byte == 0x7f;
}

} // namespace

std::string ForTerminal(std::string text)
{
    // Those of the upper half come in two bytes, of which the second alone tells them from letters.
    for (size_t i = 0; i < text.size(); ++i) {
        const unsigned char before = i == 0 ? 0 : static_cast<unsigned char>(text[i - 1]);
        const unsigned char byte = static_cast<unsigned char>(text[i]);
        if (IsControl(byte))
            text[i] = '?';
        else if (before == 0xc2 && byte >= 0x80 && byte < 0xa0)
            text.replace(i - 1, 2, "?");
    }
    return text;
}

void Complain(const std::string& text)
{
    std::fprintf(stderr, "wren: %s\n", ::isatty(STDERR_FILENO) ? ForTerminal(text).c_str() : text.c_str());
}

bool WriteOrComplain(OutputAside& output, const std::string& text, const char* what)
{
    if (output.Write(text))
        return true;
    if (!OutputAside::ReaderIsGone())
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
