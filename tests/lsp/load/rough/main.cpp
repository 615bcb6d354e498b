// lsp_rough NUMBER [STORY]: clients that do not behave. The server must neither grow without bound, nor hang, nor stay
// behind when its client is gone. NUMBER is the number of changes that the busiest client sends; what the others do
// follows from it. Without STORY, all are played.
#include "Stories.h"

#include <csignal>
#include <cstdlib>
#include <exception>
#include <iostream>
#include <string>

namespace {

constexpr struct {
    const char* name;
    void (*play)(int changes);
} kStories[] = {
    {"changes", FloodOfChanges},
    {"files", FloodOfFiles},
    {"configurations", FloodOfConfigurations},
    {"texts", ManyTexts},
    {"log", LogThatNobodyReads},
    {"pause", ClientThatPauses},
    {"silence", ClientThatNeverReads},
    {"half", ClientThatStopsWithinAMessage},
    {"killed", ClientThatIsKilled},
};

bool Play(const std::string& wanted, int changes)
{
    bool isKnown = false;
    for (const auto& [name, play] : kStories) {
        if (!wanted.empty() && wanted != name)
            continue;
        std::cout << name << std::endl;
        play(changes);
        isKnown = true;
    }
    return isKnown;
}

} // namespace

int main(int argc, char** argv)
{
    std::signal(SIGPIPE, SIG_IGN);
    const int changes = argc > 1 ? std::atoi(argv[1]) : 0;
    try {
        if (changes >= 100 && Play(argc > 2 ? argv[2] : "", changes))
            return 0;
        std::cerr << "usage: lsp_rough NUMBER [STORY]\n";
        return 2;
    } catch (const std::exception& problem) {
        std::cerr << "lsp_rough: " << problem.what() << "\n";
        return 1;
    }
}
