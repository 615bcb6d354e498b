#include "wren/cli/symbols/Dot.h"

#include "base/Descriptor.h"
#include "base/FindProgram.h"
#include "base/NewFile.h"
#include "base/Paths.h"
#include "base/Process.h"
#include "base/Utf8.h"

#include <optional>
#include <sys/mman.h>
#include <unistd.h>

namespace wren {

namespace {

constexpr int kPatience = 60'000; // milliseconds

std::string NodeLine(size_t number, const GraphNode& node, bool isStart)
{
    std::string line = "    n" + std::to_string(number) + " [label=" + DotQuoted(node.label);
    if (!node.detail.empty())
        line += ", tooltip=" + DotQuoted(node.detail);
    return line + (isStart ? ", style=\"filled,bold\"];\n" : "];\n");
}

// A file in memory: with it as input and output, neither side ever waits for the other.
base::Result<base::Descriptor> MemoryFile(std::string_view content)
{
    base::Descriptor file(::memfd_create("graph", MFD_CLOEXEC));
    if (!file.IsOpen())
        return base::SystemError("no memory for a graph");
    if (const base::Result<void> written = base::WriteAll(file.Number(), content); !written)
        return written.Failure();
    ::lseek(file.Number(), 0, SEEK_SET);
    return file;
}

base::Result<std::string> Content(const base::Descriptor& file)
{
    std::string content(static_cast<size_t>(::lseek(file.Number(), 0, SEEK_END)), '\0');
    for (size_t done = 0; done < content.size();) {
        const ssize_t count =
            ::pread(file.Number(), content.data() + done, content.size() - done, static_cast<off_t>(done));
        if (count <= 0)
            return base::SystemError("the picture cannot be read");
        done += static_cast<size_t>(count);
    }
    return content;
}

} // namespace

std::string DotQuoted(std::string_view text)
{
    const std::string valid = base::ValidUtf8(text);
    std::string quoted = "\"";
    for (std::string_view rest = valid; !rest.empty();) {
        const std::string_view character = base::FirstCharacter(rest);
        rest.remove_prefix(character.size());
        if (character == "\"" || character == "\\")
            quoted += '\\';
        quoted += base::IsControl(character) ? "?" : character;
    }
    return quoted + "\"";
}

std::string DotText(const Graph& graph, const std::string& title, bool reversed)
{
    std::string text = "digraph " + DotQuoted(title) +
                       " {\n    rankdir=LR;\n"
                       "    node [shape=box, fontname=\"sans-serif\", fontsize=11, fillcolor=\"#e8eef7\"];\n";
    for (size_t number = 0; number < graph.nodes.size(); ++number)
        text += NodeLine(number, graph.nodes[number], number < graph.starts);
    for (const auto& [from, to] : graph.edges)
        text += "    n" + std::to_string(reversed ? to : from) + " -> n" + std::to_string(reversed ? from : to) + ";\n";
    return text + "}\n";
}

base::Result<std::string> DrawDot(const std::string& dot, const std::string& format)
{
    const std::optional<std::string> program = base::FindProgram("dot", base::CurrentDirectory());
    if (!program)
        return base::Error{"Graphviz is not installed (apt install graphviz); --format dot needs none"};
    const base::Result<base::Descriptor> input = MemoryFile(dot);
    const base::Result<base::Descriptor> output = MemoryFile("");
    if (!input || !output)
        return (input ? output : input).Failure();
    base::Program run;
    run.path = *program;
    run.words = {"dot", "-T" + format};
    run.descriptors = {input->Number(), output->Number(), STDERR_FILENO};
    run.diesWithThread = true;
    base::Result<base::Process> process = base::Process::Start(run);
    if (!process)
        return process.Failure();
    if (const int status = process->WaitOrKill(kPatience); base::ShellStatus(status) != 0)
        return base::Error{"Graphviz could not draw the graph: it ended with status " +
                           std::to_string(base::ShellStatus(status))};
    return Content(*output);
}

} // namespace wren
