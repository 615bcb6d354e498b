#include "base/Paths.h"
#include "tagging/SourceParser.h"
#include "tagging/SourceReader.h"
#include "tagging/ctags/CtagsProcess.h"
#include "tagging/ctags/ProcessEnd.h"
#include "tagging/ctags/SourceNames.h"

#include <chrono>
#include <mutex>
#include <utility>

namespace tagging {

namespace {

using Clock = CtagsProcess::Clock;

// Ctags for one parser, with or without locals. It starts with the first text and again after its end.
class Seat {
public:
    Seat(const CtagsSettings& settings, Parser parser) : settings(settings), parser(parser) {}

    base::Result<std::string> OutputFor(const std::string& path, std::string_view text)
    {
        // A process that has been idle may be gone: it ends with the thread that started it.
        const bool wasThere = process != nullptr;
        base::Result<std::string> output = Ask(path, text);
        if (!output && wasThere && endedByOthers)
            return Ask(path, text);
        return output;
    }

private:
    base::Result<std::string> Ask(const std::string& path, std::string_view text)
    {
        endedByOthers = false;
        Source source;
        source.path = path;
        source.parser = parser;
        if (!PutInMemory(text, source))
            return base::SystemError("cannot keep the text in memory");
        if (process == nullptr) {
            base::Result<std::unique_ptr<CtagsProcess>> started = CtagsProcess::Start(settings, parser);
            if (!started)
                return started.Failure();
            process = std::move(*started);
        }
        process->Give(std::move(source));
        base::Result<std::string> output = Wait();
        if (!output)
            process.reset();
        return output;
    }

    base::Result<std::string> Wait()
    {
        const Clock::time_point end = Clock::now() + std::chrono::seconds(settings.timeLimit);
        std::string output;
        while (process->Given() > 0) {
            pollfd places[CtagsProcess::kPlaces];
            process->GetPlaces(places);
            const auto left = std::chrono::ceil<std::chrono::milliseconds>(end - Clock::now());
            if (left.count() <= 0)
                return base::Error{"ctags took longer than " + std::to_string(settings.timeLimit) + " s"};
            ::poll(places, CtagsProcess::kPlaces, static_cast<int>(left.count()));
            process->Transfer(places, [&](Source&, std::string_view text) { output = text; });
            if (process->HasEnded() && process->Given() > 0)
                return EndOfProcess();
        }
        return output;
    }

    base::Error EndOfProcess()
    {
        const int status = process->End();
        endedByOthers = !IsCrash(status);
        if (IsCrash(status))
            return {"ctags crashed"};
        return FailureOf(*process, settings, status);
    }

    const CtagsSettings& settings;
    const Parser parser;
    std::unique_ptr<CtagsProcess> process;
    bool endedByOthers = false;
};

} // namespace

struct TextParser::Contents {
    explicit Contents(const Settings& given) : settings(given), plain(given.ctags), withLocals(given.ctags)
    {
        plain.output = CtagsSettings::Output::Symbols;
        withLocals.output = CtagsSettings::Output::SymbolsWithLocals;
    }

    Seat& SeatFor(Parser parser, Locals locals)
    {
        if (parser == Parser::C)
            return locals == Locals::Yes ? localsOfC : c;
        return locals == Locals::Yes ? localsOfCplusplus : cplusplus;
    }

    const Settings settings;
    CtagsSettings plain;
    CtagsSettings withLocals;
    std::mutex mutex; // for all members below
    SourceReader reader{settings};
    Seat c{plain, Parser::C};
    Seat cplusplus{plain, Parser::Cplusplus};
    Seat localsOfC{withLocals, Parser::C};
    Seat localsOfCplusplus{withLocals, Parser::Cplusplus};
};

TextParser::TextParser(const Settings& settings) : contents(std::make_unique<Contents>(settings)) {}
TextParser::~TextParser() = default;

base::Result<std::unique_ptr<ParsedSource>> TextParser::Parse(const std::string& path, std::string_view text,
                                                              Locals locals)
{
    const std::lock_guard lock(contents->mutex);
    HalfParsed half = contents->reader.Read(path, text);
    Seat& seat = contents->SeatFor(half.parser, locals);
    const base::Result<std::string> output = seat.OutputFor(path, half.rest ? *half.rest : text);
    if (!output)
        return base::Error{"cannot parse " + base::Shown(path) + ": " + output.Failure().Message()};
    return half.With(*output);
}

} // namespace tagging
