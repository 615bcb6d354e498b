// A ctags that waits for single texts.
#pragma once

#include "base/Result.h"
#include "tagging/ctags/CtagsProcess.h"

#include <memory>
#include <string>
#include <string_view>

namespace tagging {

// It starts with the first text, and again after a crash or a hang. Its process also ends with the thread that started
// it; the next text, on any thread, starts another. Not thread-safe.
class CtagsAtHand {
public:
    // 'stop', a descriptor or -1, ends a wait when it becomes readable. The settings must outlive it.
    CtagsAtHand(const CtagsSettings& settings, Parser parser, int stop = -1)
        : settings(settings), parser(parser), stop(stop)
    {
    }

    // What ctags writes about the text. Blocks, at most for the time limit of a file.
    base::Result<std::string> OutputFor(std::string_view text);
    bool TookTooLong() const { return tookTooLong; } // for the last text

private:
    base::Result<std::string> Ask(std::string_view text);
    base::Result<std::string> Wait();
    base::Error EndOfProcess();

    const CtagsSettings& settings;
    const Parser parser;
    const int stop;
    std::unique_ptr<CtagsProcess> process;
    bool endedByOthers = false;
    bool tookTooLong = false;
};

} // namespace tagging
