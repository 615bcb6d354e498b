#include "tagging/ctags/CtagsAtHand.h"

#include "tagging/ctags/ProcessEnd.h"
#include "tagging/ctags/SourceNames.h"

#include <chrono>
#include <utility>

namespace tagging {

using Clock = CtagsProcess::Clock;

base::Result<std::string> CtagsAtHand::OutputFor(std::string_view text)
{
    const bool wasThere = process != nullptr;
    base::Result<std::string> output = Ask(text);
    if (!output && wasThere && endedByOthers)
        return Ask(text);
    return output;
}

base::Result<std::string> CtagsAtHand::Ask(std::string_view text)
{
    endedByOthers = false;
    tookTooLong = false;
    Source source;
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

base::Result<std::string> CtagsAtHand::Wait()
{
    const Clock::time_point end = Clock::now() + std::chrono::seconds(settings.timeLimit);
    std::string output;
    while (process->Given() > 0) {
        pollfd places[CtagsProcess::kPlaces + 1];
        process->GetPlaces(places);
        places[CtagsProcess::kPlaces] = {stop, POLLIN, 0};
        const auto left = std::chrono::ceil<std::chrono::milliseconds>(end - Clock::now());
        tookTooLong = left.count() <= 0;
        if (tookTooLong)
            return base::Error{"ctags took longer than " + std::to_string(settings.timeLimit) + " s"};
        ::poll(places, std::size(places), static_cast<int>(left.count()));
        if (places[CtagsProcess::kPlaces].revents != 0)
            return base::Error{"cancelled"};
        process->Transfer(places, [&](Source&, std::string_view text) { output = text; });
        if (process->HasEnded() && process->Given() > 0)
            return EndOfProcess();
    }
    return output;
}

base::Error CtagsAtHand::EndOfProcess()
{
    const int status = process->End();
    endedByOthers = !IsCrash(status);
    if (IsCrash(status))
        return {"ctags crashed"};
    return FailureOf(*process, settings, status);
}

} // namespace tagging
