#include "wren/search/FilesSearch.h"

#include "base/Descriptor.h"
#include "base/Hash.h"
#include "base/PlainFile.h"
#include "symbols/update/IgnorePattern.h"
#include "symbols/update/Walk.h"

#include <algorithm>
#include <atomic>
#include <cstring>
#include <mutex>
#include <sys/stat.h>
#include <thread>
#include <unistd.h>
#include <utility>

namespace wren {

namespace {

constexpr size_t kLongestLine = 2000;        // bytes of a line that are shown
constexpr size_t kBeginning = 8 * 1024;      // bytes that decide whether a file is a text
constexpr off_t kLargest = off_t(256) << 20; // bytes; larger files are data

constexpr std::string_view kMark = "\xef\xbb\xbf"; // U+FEFF before a text in UTF-8 is not part of its first line

// Which files are wanted, by their paths.
class Globs {
public:
    explicit Globs(const std::vector<std::string>& lines)
    {
        for (const std::string& line : lines)
            if (std::optional<symbols::IgnorePattern> pattern = symbols::IgnorePattern::Parse(line))
                (pattern->IsNegative() ? without : only).push_back(std::move(*pattern));
    }

    bool Take(std::string_view path) const
    {
        return (only.empty() || MatchesOne(only, path)) && !MatchesOne(without, path);
    }

private:
    // A directory's name stands for all files in it.
    static bool MatchesOne(const std::vector<symbols::IgnorePattern>& patterns, std::string_view path)
    {
        return std::ranges::any_of(patterns, [&](const symbols::IgnorePattern& pattern) {
            for (size_t slash = path.find('/'); slash != std::string_view::npos; slash = path.find('/', slash + 1))
                if (pattern.Matches(path.substr(0, slash), true))
                    return true;
            return pattern.Matches(path, false);
        });
    }

    std::vector<symbols::IgnorePattern> only;
    std::vector<symbols::IgnorePattern> without;
};

// What one thread searches with; the buffer is kept from file to file.
struct Tools {
    explicit Tools(const TextPattern& pattern) : finder(pattern) {}

    TextPattern::Finder finder;
    std::string buffer;
};

class Search {
public:
    Search(const FilesQuery& query, const TextPattern& pattern, const OpenTexts& open, const FoundSink& sink,
           const base::CancelToken& cancel)
        : query(query), pattern(pattern), globs(query.globs), open(open), sink(sink), cancel(cancel)
    {
    }

    base::Result<FilesFound> Run()
    {
        symbols::WalkOptions walk;
        walk.root = query.root;
        walk.starts = {query.root};
        walk.threads = std::max(std::thread::hardware_concurrency(), 1u);
        walk.takes = [](std::string_view) { return true; };
        walk.finds = [this](const symbols::FoundFile& file) { Take(file); };
        const base::Result<symbols::Walked> walked = symbols::Walk(walk, stop);
        if (cancel.IsCancelled())
            return base::Error{"cancelled"};
        if (!walked && !stop.IsCancelled())
            return walked.Failure();
        return FilesFound{files, tooLarge, more, hasGivenUp};
    }

private:
    void Take(const symbols::FoundFile& file)
    {
        if (cancel.IsCancelled())
            stop.Cancel();
        if (stop.IsCancelled() || file.isLink || !globs.Take(file.path))
            return;
        std::unique_ptr<Tools> tools = Borrow();
        const std::string path = query.root + "/" + file.path;
        if (const auto opened = open.find(path); opened != open.end())
            SearchIn(file.path, *opened->second, tools->finder);
        else if (Read(path, tools->buffer))
            SearchIn(file.path, tools->buffer, tools->finder);
        GiveBack(std::move(tools));
    }

    // False when it is no text, or cannot be read: then it has no line that anybody could be shown.
    bool Read(const std::string& path, std::string& buffer)
    {
        const base::Descriptor file(base::OpenPlainFile(path.c_str()));
        struct stat status;
        if (!file.IsOpen() || ::fstat(file.Number(), &status) != 0)
            return false;
        if (status.st_size > kLargest) {
            ++tooLarge;
            return false;
        }
        const auto size = static_cast<size_t>(status.st_size);
        buffer.resize(size);
        size_t done = 0;
        for (size_t next = std::min(size, kBeginning); done < size; next = size) {
            const ssize_t count = ::pread(file.Number(), buffer.data() + done, next - done, static_cast<off_t>(done));
            if (count <= 0)
                break;
            if (done == 0 && std::memchr(buffer.data(), '\0', static_cast<size_t>(count)) != nullptr)
                return false;
            done += static_cast<size_t>(count);
        }
        buffer.resize(done);
        return true;
    }

    void SearchIn(const std::string& path, std::string_view text, TextPattern::Finder& finder)
    {
        ++files;
        FoundInFile found{path, LinesWith(finder, text, query), text.size()};
        if (found.lines.empty())
            return;
        if (query.replacement)
            found.textHash = base::Fnv1a(text);
        const std::lock_guard lock(mutex);
        const size_t room = query.limit - std::min(count, query.limit);
        more = more || found.lines.size() >= room;
        found.lines.resize(std::min(found.lines.size(), room));
        count += found.lines.size();
        if (more)
            stop.Cancel();
        if (!found.lines.empty())
            sink(std::move(found));
    }

    std::unique_ptr<Tools> Borrow()
    {
        const std::lock_guard lock(mutex);
        if (spare.empty())
            return std::make_unique<Tools>(pattern);
        std::unique_ptr<Tools> tools = std::move(spare.back());
        spare.pop_back();
        return tools;
    }

    void GiveBack(std::unique_ptr<Tools> tools)
    {
        const std::lock_guard lock(mutex);
        hasGivenUp = hasGivenUp || tools->finder.HasGivenUp();
        spare.push_back(std::move(tools));
    }

    const FilesQuery& query;
    const TextPattern& pattern;
    const Globs globs;
    const OpenTexts& open;
    const FoundSink& sink;
    const base::CancelToken& cancel;
    base::CancelToken stop; // of the walk: cancelled, or enough was found

    std::atomic<size_t> files = 0;
    std::atomic<size_t> tooLarge = 0;
    std::mutex mutex; // guards the members below
    std::vector<std::unique_ptr<Tools>> spare;
    size_t count = 0; // matches
    bool more = false;
    bool hasGivenUp = false;
};

} // namespace

// The offsets are those of the file: with its mark.
std::vector<FoundLine> LinesWith(TextPattern::Finder& finder, std::string_view file, const FilesQuery& query)
{
    const size_t mark = file.starts_with(kMark) ? kMark.size() : 0;
    const std::string_view text = file.substr(mark);
    const std::string_view lineEnd = query.replacement ? LineEndOf(text) : "";
    std::vector<FoundLine> lines;
    long line = 1;
    size_t lineStart = 0;
    for (size_t from = 0; lines.size() < query.limit;) {
        const std::optional<TextMatch> match = finder.Next(text, from);
        if (!match)
            break;
        for (size_t next = text.find('\n', lineStart); next < match->start; next = text.find('\n', lineStart)) {
            lineStart = next + 1;
            ++line;
        }
        std::string_view source =
            text.substr(lineStart, std::min(text.find('\n', match->start), text.size()) - lineStart);
        source = source.substr(0, source.ends_with('\r') ? source.size() - 1 : source.size());
        // Of a long line, what is around the match.
        const size_t before = match->start - lineStart;
        const size_t cut = before + match->size <= kLongestLine ? 0 : before - std::min(before, kLongestLine / 2);
        FoundLine& found = lines.emplace_back();
        found.line = line;
        found.column = static_cast<long>(before) + 1;
        found.source = source.substr(std::min(cut, source.size()), kLongestLine);
        found.matchStart = std::min(before - cut, found.source.size());
        found.matchSize = std::min(match->size, found.source.size() - found.matchStart);
        found.offset = mark + match->start;
        found.size = match->size;
        if (query.replacement)
            found.with =
                query.text.isExpression ? finder.Expanded(*query.replacement, text, lineEnd) : *query.replacement;
        from = match->start + match->size;
    }
    return lines;
}

base::Result<FilesFound> SearchFiles(const FilesQuery& query, const OpenTexts& open, const FoundSink& sink,
                                     const base::CancelToken& cancel)
{
    if (query.text.text.empty())
        return base::Error{"there is nothing to search for"};
    const base::Result<TextPattern> pattern = TextPattern::Compile(query.text);
    if (!pattern)
        return pattern.Failure();
    return Search(query, *pattern, open, sink, cancel).Run();
}

} // namespace wren
