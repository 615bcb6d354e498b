#include "tagging/ctags/CtagsProcess.h"

#include "tagging/ctags/CtagsWords.h"

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <unistd.h>

namespace tagging {

namespace {

// Not a line of a tag, which would contain tabs.
constexpr std::string_view kMark = "cplustags: end of file\n";

constexpr size_t kReadAtOnce = 64 * 1024;
constexpr size_t kPipe = 256 * 1024; // fewer context switches than with the default size of a pipe
constexpr size_t kLongestErrors = 4 * 1024;
constexpr int kPatience = 10'000; // milliseconds for a process to end after it has closed its output

std::vector<std::string> Words(const CtagsSettings& settings, Parser parser)
{
    std::vector<std::string> words = CtagsWords(settings, parser);
    words.insert(words.end(), {"--filter=yes", "--filter-terminator=" + std::string(kMark)});
    return words;
}

enum class ReadResult { Some, NothingYet, End };

ReadResult ReadMore(const base::Descriptor& from, std::string& text)
{
    char read[kReadAtOnce];
    const ssize_t count = ::read(from.Number(), read, sizeof read);
    if (count > 0)
        text.append(read, static_cast<size_t>(count));
    if (count < 0 && (errno == EAGAIN || errno == EINTR))
        return ReadResult::NothingYet;
    return count > 0 ? ReadResult::Some : ReadResult::End;
}

} // namespace

base::Result<std::unique_ptr<CtagsProcess>> CtagsProcess::Start(const CtagsSettings& settings, Parser parser)
{
    base::Result<base::ChildProcess> child =
        base::StartChild({Words(settings, parser), settings.directory + "/", settings.temporaries});
    if (!child)
        return child.Failure();
    ::fcntl(child->output.Number(), F_SETPIPE_SZ, kPipe);
    return std::unique_ptr<CtagsProcess>(new CtagsProcess(std::move(*child)));
}

void CtagsProcess::Give(Source source)
{
    if (sources.empty())
        BeginAgain();
    names += source.name + '\n';
    sources.push_back(std::move(source));
    WriteNames();
}

void CtagsProcess::GetPlaces(pollfd* places) const
{
    places[0] = {names.empty() ? -1 : child.input.Number(), POLLOUT, 0};
    places[1] = {hasEnded ? -1 : child.output.Number(), POLLIN, 0};
    places[2] = {child.errors.Number(), POLLIN, 0};
}

void CtagsProcess::Transfer(const pollfd* places, const Done& done)
{
    if (places[2].revents != 0)
        ReadErrors();
    if (places[1].revents != 0)
        ReadOutput(done);
    if (places[0].revents != 0)
        WriteNames();
}

// If the process has died, the end of its output shows it.
void CtagsProcess::WriteNames()
{
    const ssize_t count = ::write(child.input.Number(), names.data(), names.size());
    if (count > 0)
        names.erase(0, static_cast<size_t>(count));
    else if (count < 0 && errno != EAGAIN && errno != EINTR)
        names.clear();
}

void CtagsProcess::ReadOutput(const Done& done)
{
    const ReadResult result = ReadMore(child.output, output);
    hasEnded = result == ReadResult::End;
    if (result == ReadResult::Some)
        Finish(done);
}

// Returns whether there was anything to read.
bool CtagsProcess::ReadErrors()
{
    const ReadResult result = ReadMore(child.errors, errors);
    if (errors.size() > kLongestErrors)
        errors.erase(0, errors.size() - kLongestErrors);
    if (result == ReadResult::End)
        child.errors.Close();
    return result == ReadResult::Some;
}

// Passes on the files whose marks have arrived.
void CtagsProcess::Finish(const Done& done)
{
    size_t start = 0;
    while (!sources.empty()) {
        const size_t mark = output.find(kMark, std::max(searched, start));
        if (mark == std::string::npos)
            break;
        done(sources.front(), std::string_view(output).substr(start, mark - start));
        sources.pop_front();
        BeginAgain();
        start = mark + kMark.size();
        searched = start;
    }
    output.erase(0, start);
    searched = output.size() - std::min(output.size(), kMark.size() - 1);
}

int CtagsProcess::End()
{
    return child.process.WaitOrKill(hasEnded ? kPatience : 0);
}

std::deque<Source> CtagsProcess::TakeSources()
{
    child.process.Kill();
    names.clear();
    return std::exchange(sources, {});
}

std::string CtagsProcess::LastWords()
{
    while (child.errors.IsOpen() && ReadErrors())
        continue;
    return errors;
}

} // namespace tagging
