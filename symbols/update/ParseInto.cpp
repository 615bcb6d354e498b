#include "symbols/update/ParseInto.h"

#include "symbols/update/Stamps.h"
#include "tagging/SourceParser.h"
#include "tagging/ctags/Scratch.h"

#include <atomic>
#include <cstdlib>
#include <memory>
#include <mutex>
#include <sys/stat.h>
#include <utility>

namespace symbols {

namespace {

class ParsingObserver final : public tagging::Observer {
public:
    explicit ParsingObserver(const ParsingListener& listener) : listener(listener) {}

    void Say(const std::string& message) override
    {
        const std::lock_guard lock(mutex);
        if (listener.say)
            listener.say(message);
    }
    void Show(size_t done, size_t known) override
    {
        if (listener.progress)
            listener.progress(done, known);
    }

private:
    const ParsingListener& listener;
    std::mutex mutex;
};

std::string TemporaryDirectory()
{
    const char* named = std::getenv("TMPDIR");
    return named != nullptr && named[0] == '/' ? named : "/tmp";
}

bool IsThere(const std::string& path)
{
    struct stat status;
    return ::stat(path.c_str(), &status) == 0;
}

} // namespace

namespace {

// Takes what the parser finds, on its threads.
class Keeping {
public:
    Keeping(const Attempt& attempt, const Changes& changes, const std::string& root)
        : attempt(attempt), changes(changes), root(root)
    {
    }

    void Take(size_t number, const tagging::FileStamp& stamp, const tagging::ParsedSource* source)
    {
        const std::string& path = changes.parse[number];
        if (source != nullptr) {
            attempt.writer.Put(path, StampToKeep(stamp), *source);
            ++parsed;
            failed += source->isIncomplete;
            return;
        }
        failed += IsThere(root + "/" + path);
        if (attempt.before == nullptr || !attempt.before->FindFile(path))
            return;
        attempt.writer.Remove(path);
        ++removed;
    }

    ParsedFiles Result() const { return {parsed, failed, removed}; }

private:
    const Attempt& attempt;
    const Changes& changes;
    const std::string& root;
    std::atomic<size_t> parsed = 0;
    std::atomic<size_t> failed = 0;
    std::atomic<size_t> removed = 0;
};

} // namespace

base::Result<ParsedFiles> ParseInto(const Attempt& attempt, const Changes& changes, const std::string& root,
                                    tagging::Settings settings, const ParsingListener& listener,
                                    const base::CancelToken& cancel)
{
    for (const std::string& path : changes.remove)
        attempt.writer.Remove(path);
    for (const auto& [path, stamp] : changes.touch)
        attempt.writer.Touch(path, stamp);
    if (changes.parse.empty())
        return ParsedFiles();
    const tagging::Scratch scratch(TemporaryDirectory());
    settings.ctags.temporaries = scratch.Directory();
    settings.ctags.directory = root;
    Keeping keeping(attempt, changes, root);
    ParsingObserver observer(listener);
    tagging::SourceParser parser(
        settings, observer, cancel,
        [&](size_t number, const tagging::FileStamp& stamp, std::unique_ptr<tagging::ParsedSource> source) {
            keeping.Take(number, stamp, source.get());
        });
    for (const std::string& path : changes.parse) {
        parser.Add(root + "/" + path);
        if (!parser.GoesOn())
            break;
    }
    if (base::Result<void> finished = parser.Finish(); !finished)
        return finished.Failure();
    if (cancel.IsCancelled())
        return base::Error{"cancelled"};
    return keeping.Result();
}

} // namespace symbols
