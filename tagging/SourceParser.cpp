#include "tagging/SourceParser.h"

#include "tagging/FileReader.h"
#include "tagging/SourceReader.h"
#include "tagging/WorkerPool.h"
#include "tagging/ctags/CtagsAtHand.h"
#include "tagging/ctags/SourceNames.h"

#include <cerrno>
#include <cstring>
#include <sys/stat.h>
#include <unordered_map>
#include <utility>

namespace tagging {

namespace {

constexpr int kMostReadings = 3; // of a file that changes meanwhile

bool HasChanged(const std::string& path, const FileStamp& before)
{
    struct stat status;
    return ::stat(path.c_str(), &status) != 0 || FileStamp::Of(status) != before;
}

class SymbolCollector final : public Collector {
public:
    SymbolCollector(const Settings& settings, const base::CancelToken& cancel, const SourceParser::Sink& sink)
        : settings(settings), sink(sink), reader(settings),
          ctagsForMore(settings.ctags, Parser::Cplusplus, cancel.Descriptor())
    {
    }

    std::optional<Source> Make(unsigned number, const std::string& path, std::string* error) override
    {
        if (!ReadFile(path, error))
            return std::nullopt;
        HalfParsed half = reader.Read(path, files.Text());
        Source source;
        source.number = number;
        source.path = path;
        source.parser = half.parser;
        source.size = files.Text().size();
        source.name = NameForCtags(path, settings.ctags.directory);
        const bool needsText = half.rest || !ReadsName(source.name);
        if (needsText && !PutInMemory(half.rest ? *half.rest : files.Text(), source)) {
            *error = std::strerror(errno);
            return std::nullopt;
        }
        half.rest.reset();
        begun[number] = {files.Stamp(), std::move(half)};
        return source;
    }

    void Keep(Source& source, std::string_view output) override
    {
        Begun begun = Take(source.number);
        if (!source.text.IsOpen() && HasChanged(source.path, begun.stamp))
            begun.half.source->contentHash = ~begun.half.source->contentHash; // ctags may have read something else
        sink(source.number, begun.stamp, begun.half.With(output, More(begun.half)));
    }

    void LeaveOut(unsigned number) override
    {
        Begun begun = Take(number);
        if (begun.half.source != nullptr) {
            begun.half.source->symbols.clear(); // those that need no ctags are not all
            begun.half.source->isIncomplete = true;
        }
        sink(number, begun.stamp, std::move(begun.half.source));
    }

    void Finish() override {}

private:
    struct Begun {
        FileStamp stamp;
        HalfParsed half;
    };

    // Only for the few sources in which ctags overlooks something. Without an answer that remains so.
    std::string More(const HalfParsed& half)
    {
        if (!half.repaired)
            return "";
        base::Result<std::string> more = ctagsForMore.OutputFor(half.repaired->text);
        return more ? std::move(*more) : "";
    }

    bool ReadFile(const std::string& path, std::string* error)
    {
        for (int i = 0; i < kMostReadings; ++i) {
            errno = 0;
            if (!files.Read(path)) {
                *error = errno != 0 ? std::strerror(errno) : "it is not a plain file, or too large";
                return false;
            }
            if (!files.HasChanged())
                break;
        }
        return true; // with the stamp from before: the next comparison finds the change
    }

    Begun Take(unsigned number)
    {
        const auto place = begun.find(number);
        if (place == begun.end())
            return {};
        Begun taken = std::move(place->second);
        begun.erase(place);
        return taken;
    }

    const Settings& settings;
    const SourceParser::Sink& sink;
    FileReader files;
    SourceReader reader;
    CtagsAtHand ctagsForMore;
    std::unordered_map<unsigned, Begun> begun; // files that ctags has
};

Settings WithOutput(Settings settings, CtagsSettings::Output output)
{
    settings.ctags.output = output;
    return settings;
}

} // namespace

struct SourceParser::Contents {
    Contents(const Settings& given, Observer& observer, const base::CancelToken& cancel, Sink givenSink)
        : settings(WithOutput(given, CtagsSettings::Output::Symbols)), sink(std::move(givenSink)),
          pool(
              settings, observer, cancel, TaggingRun::EarlyFailures::AreNormal,
              [this, &cancel] { return std::make_unique<SymbolCollector>(settings, cancel, sink); },
              WorkerPool::SystemsThread)
    {
    }

    const Settings settings;
    const Sink sink;
    WorkerPool pool;
};

SourceParser::SourceParser(const Settings& settings, Observer& observer, const base::CancelToken& cancel, Sink sink)
    : contents(std::make_unique<Contents>(settings, observer, cancel, std::move(sink)))
{
}

SourceParser::~SourceParser() = default;

void SourceParser::Add(const std::string& path)
{
    contents->pool.Add(path);
}

bool SourceParser::GoesOn()
{
    return contents->pool.GoesOn();
}

base::Result<void> SourceParser::Finish()
{
    contents->pool.Finish();
    if (const std::string failure = contents->pool.Failure(); !failure.empty())
        return base::Error{failure};
    return {};
}

} // namespace tagging
