#include "tagging/ctags/CtagsBatch.h"

#include "tagging/ctags/CtagsWords.h"

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <poll.h>
#include <unistd.h>
#include <unordered_map>

namespace tagging {

namespace {

using Clock = CtagsProcess::Clock;

// An empty file in memory, which ctags accepts as its output file. Destruction removes it.
class OutputFile {
public:
    explicit OutputFile(const std::string& directory) : path(directory + "/batch-XXXXXX")
    {
        const base::Descriptor made(::mkstemp(path.data()));
        exists = made.IsOpen();
    }
    ~OutputFile()
    {
        if (exists)
            ::unlink(path.c_str());
    }
    OutputFile(const OutputFile&) = delete;
    OutputFile& operator=(const OutputFile&) = delete;

    bool Exists() const { return exists; }
    const std::string& Path() const { return path; }
    std::string Content() const
    {
        std::ifstream file(path, std::ios::binary | std::ios::ate);
        std::string content(file ? static_cast<size_t>(file.tellg()) : 0, '\0');
        file.seekg(0);
        file.read(content.data(), static_cast<std::streamsize>(content.size()));
        return content;
    }

private:
    std::string path;
    bool exists;
};

base::Command CommandFor(const CtagsSettings& settings, Parser parser, const OutputFile& output)
{
    std::vector<std::string> words = CtagsWords(settings, parser);
    words.insert(words.end(), {"-L", "-", "-f", output.Path()});
    return {words, settings.directory + "/", settings.temporaries};
}

std::string NamesOf(const std::vector<Source>& sources)
{
    std::string names;
    for (const Source& source : sources)
        names += source.name + '\n';
    return names;
}

void WriteNames(base::ChildProcess& child, std::string& names)
{
    const ssize_t count = ::write(child.input.Number(), names.data(), names.size());
    if (count > 0)
        names.erase(0, static_cast<size_t>(count));
    else if (count < 0 && errno != EAGAIN && errno != EINTR)
        names.clear(); // it has died, as its status will show
    if (names.empty())
        child.input.Close();
}

// Discards ctags' complaints; false at the end.
bool PassOver(const base::Descriptor& errors)
{
    char read[4096];
    const ssize_t count = ::read(errors.Number(), read, sizeof read);
    return count > 0 || (count < 0 && (errno == EAGAIN || errno == EINTR));
}

// Writes the names to ctags and waits until it has ended; false when it is stopped or takes too long.
bool Attend(base::ChildProcess& child, std::string names, std::span<const int> stops, Clock::time_point end)
{
    while (true) {
        std::vector<pollfd> places = {{names.empty() ? -1 : child.input.Number(), POLLOUT, 0},
                                      {child.errors.Number(), POLLIN, 0}};
        for (const int stop : stops)
            places.push_back({stop, POLLIN, 0});
        const auto left = std::chrono::ceil<std::chrono::milliseconds>(end - Clock::now());
        if (left.count() <= 0)
            return false;
        ::poll(places.data(), places.size(), static_cast<int>(left.count()));
        if (std::any_of(places.begin() + 2, places.end(), [](const pollfd& place) { return place.revents != 0; }))
            return false;
        if (places[0].revents != 0)
            WriteNames(child, names);
        if (places[1].revents != 0 && !PassOver(child.errors))
            return true;
    }
}

// The part of a line that contains the file name.
std::string_view NameInLine(std::string_view line)
{
    const size_t start = line.find('\t') + 1;
    return start == 0 ? std::string_view() : line.substr(start, line.find('\t', start) - start);
}

// Divides the output into the lines of each source; false when these are not contiguous.
bool Divide(std::string_view output, const std::vector<Source>& sources, std::vector<std::string_view>& parts)
{
    std::unordered_map<std::string_view, size_t> numbers;
    for (size_t number = 0; number < sources.size(); ++number)
        numbers.emplace(sources[number].name, number);
    parts.assign(sources.size(), {});
    std::string_view name;
    std::string_view* part = nullptr;
    while (!output.empty()) {
        const std::string_view line = output.substr(0, std::min(output.find('\n'), output.size() - 1) + 1);
        if (const std::string_view next = NameInLine(line); part == nullptr || next != name) {
            name = next;
            const auto source = numbers.find(name);
            part = source == numbers.end() ? nullptr : &parts[source->second];
            if (part != nullptr && !part->empty())
                return false;
            if (part != nullptr)
                *part = output.substr(0, 0);
        }
        if (part != nullptr)
            *part = std::string_view(part->data(), part->size() + line.size());
        output.remove_prefix(line.size());
    }
    return true;
}

} // namespace

bool FitsIntoBatch(const Source& source)
{
    return std::none_of(source.name.begin(), source.name.end(), [](unsigned char character) {
        return character < ' ' || character == 0x7f || character == '\\';
    });
}

bool TagBatch(const CtagsSettings& settings, std::vector<Source>& sources, std::span<const int> stops,
              const CtagsProcess::Done& done)
{
    const OutputFile output(settings.temporaries);
    if (!output.Exists() || sources.empty())
        return false;
    base::Result<base::ChildProcess> child = base::StartChild(CommandFor(settings, sources.front().parser, output));
    if (!child)
        return false;
    const bool ended = Attend(*child, NamesOf(sources), stops, Clock::now() + std::chrono::seconds(settings.timeLimit));
    if (!ended)
        child->process.Kill();
    if (child->process.Wait() != 0 || !ended)
        return false;
    const std::string content = output.Content();
    std::vector<std::string_view> parts;
    if (!Divide(content, sources, parts))
        return false;
    for (size_t number = 0; number < sources.size(); ++number)
        done(sources[number], parts[number]);
    return true;
}

} // namespace tagging
