#include "wren/cli/ShellCommands.h"

#include "vetch/support/ShellCommand.h"
#include "wren/cli/Interruption.h"

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <string_view>
#include <sys/wait.h>

namespace wren {

namespace {

constexpr int kCannotRun = 127; // a shell's status for a program that it cannot start

ShellCommands* gCommands = nullptr;

int ShellStatus(int status)
{
    return WIFEXITED(status) ? WEXITSTATUS(status) : WIFSIGNALED(status) ? 128 + WTERMSIG(status) : kCannotRun;
}

bool IsPlain(char c)
{
    return std::isalnum(static_cast<unsigned char>(c)) || std::string_view("_./-+").find(c) != std::string_view::npos;
}

} // namespace

ShellCommands::ShellCommands(Interruption* interruption) : interruption(interruption)
{
    if (interruption != nullptr)
        interruption->Hold();
    gCommands = this;
    vetch::SetShellRunner(RunForPlugin);
}

ShellCommands::~ShellCommands()
{
    vetch::SetShellRunner(nullptr);
    gCommands = nullptr;
    if (interruption != nullptr)
        interruption->Release();
}

std::vector<ShellCommands::Command> ShellCommands::All() const
{
    const std::lock_guard guard(mutex);
    return commands;
}

int ShellCommands::RunForPlugin(const char* command)
{
    return gCommands->Take(command);
}

int ShellCommands::Take(const char* text)
{
    const std::lock_guard guard(mutex);
    Command command{text, std::nullopt};
    int status = 0;
    if (interruption != nullptr && GoesOn()) {
        status = AppendsNothing(text) ? 0 : interruption->Run(text);
        command.status = ShellStatus(status);
    }
    commands.push_back(command);
    return status;
}

bool ShellCommands::GoesOn() const
{
    return interruption->Signal() == 0 &&
           std::all_of(commands.begin(), commands.end(), [](const Command& command) { return command.status == 0; });
}

bool AppendsNothing(const std::string& command)
{
    constexpr std::string_view kFind = "find ";
    if (!command.starts_with(kFind) || command.find(" --append=yes") == std::string::npos)
        return false;
    const auto start = command.begin() + kFind.size();
    const auto end = std::find_if_not(start, command.end(), IsPlain);
    std::error_code unknown;
    return std::string_view(end, command.end()).starts_with(" | ") &&
           !std::filesystem::exists(std::filesystem::symlink_status(std::string(start, end), unknown));
}

} // namespace wren
