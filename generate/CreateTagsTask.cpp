#include "generate/CreateTagsTask.h"

#include "vetch/support/FThread.h"

#include <cstdio>
#include <memory>
#include <utility>

void* CreateTagsTask(void* untyped)
{
    const std::unique_ptr<const CreateParams> params(static_cast<CreateParams*>(untyped));
    for (const std::string& command : params->commands) {
        std::printf("executing %s\n", command.c_str());
        std::fflush(stdout); // before the command's own output
        // The next command runs even after a failure. A program that fails on one source has made the tags of all
        // others, and the last command moves the file to its place.
        vetch::RunShellCommand(command.c_str(), params->request);
    }
    return nullptr;
}

void StartCreateTagsTask(std::vector<std::string> commands, vetch::ShellRequest request)
{
    auto params = std::make_unique<CreateParams>(CreateParams{std::move(commands), std::move(request)});
    if (vetch::StartDetached(kNoTagsAreMade, [given = params.get()] { CreateTagsTask(given); }))
        static_cast<void>(params.release()); // the thread's own
}
