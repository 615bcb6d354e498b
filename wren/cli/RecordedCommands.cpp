#include "wren/cli/RecordedCommands.h"

namespace wren {

namespace {

RecordedCommands* gCommands = nullptr;

} // namespace

RecordedCommands::RecordedCommands()
{
    gCommands = this;
    vetch::SetShellRunner(Record);
}

RecordedCommands::~RecordedCommands()
{
    vetch::SetShellRunner(nullptr);
    gCommands = nullptr;
}

std::vector<std::string> RecordedCommands::All() const
{
    const std::lock_guard guard(mutex);
    return commands;
}

int RecordedCommands::Record(const char* command, const vetch::ShellRequest&)
{
    const std::lock_guard guard(gCommands->mutex);
    gCommands->commands.push_back(command);
    return 0;
}

} // namespace wren
