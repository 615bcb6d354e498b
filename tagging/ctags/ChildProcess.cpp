#include "tagging/ctags/ChildProcess.h"

#include "base/Pipe.h"

#include <csignal>
#include <fcntl.h>
#include <unistd.h>

namespace tagging {

base::Result<ChildProcess> StartChild(const Command& command)
{
    base::Result<base::Pipe> in = base::OpenPipe();
    base::Result<base::Pipe> out = base::OpenPipe();
    base::Result<base::Pipe> err = base::OpenPipe();
    for (const base::Result<base::Pipe>* pipe : {&in, &out, &err})
        if (!*pipe)
            return base::Error{"cannot start " + command.words[0], pipe->Failure().number};
    base::Program program;
    program.path = command.words[0];
    program.words = command.words;
    program.directory = command.directory;
    if (!command.temporaries.empty())
        program.variables = {{"TMPDIR", command.temporaries}};
    program.descriptors = {in->reading.Number(), out->writing.Number(), err->writing.Number()};
    program.group = base::Program::Group::Own;
    program.defaultSignals = {SIGPIPE, SIGXFSZ, SIGINT, SIGTERM, SIGHUP};
    program.diesWithThread = true;
    program.dumpsCore = false; // it would be put beside the tags file
    base::Result<base::Process> process = base::Process::Start(program);
    if (!process)
        return process.Failure();
    for (const base::Descriptor* end : {&in->writing, &out->reading, &err->reading})
        ::fcntl(end->Number(), F_SETFL, O_NONBLOCK);
    return ChildProcess{std::move(in->writing), std::move(out->reading), std::move(err->reading), std::move(*process)};
}

std::string OutputOf(const std::vector<std::string>& words)
{
    base::Result<ChildProcess> child = StartChild({words, "", ""});
    if (!child)
        return "";
    child->input.Close();
    ::fcntl(child->output.Number(), F_SETFL, 0);
    std::string output;
    char text[4096];
    for (ssize_t size; (size = ::read(child->output.Number(), text, sizeof text)) > 0;)
        output.append(text, static_cast<size_t>(size));
    return output;
}

} // namespace tagging
