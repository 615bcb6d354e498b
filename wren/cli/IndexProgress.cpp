#include "wren/cli/IndexProgress.h"

#include "wren/core/TerminalText.h"

#include <unistd.h>
#include <utility>

namespace wren {

namespace {

constexpr std::chrono::milliseconds kUntilShown(500);
constexpr std::chrono::seconds kUntilAnnounced(1);

std::string TextOf(const symbols::Progress& progress, double seconds)
{
    switch (progress.step) {
    case symbols::Progress::Step::Walking:
        return "looking for changes: " + std::to_string(progress.known) + " files";
    case symbols::Progress::Step::Parsing:
        return base::ProgressText(progress.done, progress.known, seconds);
    default:
        return "writing the index";
    }
}

} // namespace

IndexProgress::IndexProgress(std::string what) : what(std::move(what)), line(STDERR_FILENO, kUntilShown) {}

symbols::Index::Listener IndexProgress::Listener()
{
    return {[this](const symbols::Progress& progress) { Show(progress); },
            [this](const std::string& message) { Say(message); },
            [this] {
                Say("what was parsed is kept for the next run; interrupt again to end at once");
                return true;
            }};
}

void IndexProgress::Say(const std::string& message)
{
    line.Say("wren: " + ShownOn(STDERR_FILENO, message) + "\n");
}

// Called on one thread.
void IndexProgress::Show(const symbols::Progress& progress)
{
    if (!what.empty() && Clock::now() - start >= kUntilAnnounced)
        Say(std::exchange(what, ""));
    line.Show([&](double seconds) { return TextOf(progress, seconds); });
}

} // namespace wren
