// A process of its own that uses an index, for tests that kill it or run many.
//
//     index_worker update ROOT CACHE          updates the index
//     index_worker write STORE NAME LAST      writes the generations of a pair
//     index_worker read STORE ONE OTHER LAST  reads two pairs until both have the last generation
//
// What went wrong goes to standard output; the status is 1 then.
#include "tests/symbols/robust/Generations.h"
#include "tests/symbols/robust/Indexes.h"

#include <csignal>
#include <cstdio>
#include <cstdlib>

namespace {

std::string Do(const std::vector<std::string>& words)
{
    const std::string what = words.empty() ? "" : words[0];
    const auto last = static_cast<unsigned>(words.empty() ? 0 : std::atoi(words.back().c_str()));
    if (what == "update" && words.size() == 3) {
        symbols::Index index(OptionsFor(words[1], words[2]));
        return UpdateError(index);
    }
    if (what == "write" && words.size() == 4) {
        symbols::Store store(words[1]);
        return WriteGenerations(store, words[2], last);
    }
    if (what == "read" && words.size() == 5)
        return ReadGenerations(symbols::Store(words[1]), words[2], words[3], last);
    return "wrong usage";
}

} // namespace

int main(int count, char** words)
{
    std::signal(SIGPIPE, SIG_IGN);
    const std::string error = Do({words + 1, words + count});
    if (!error.empty())
        std::printf("%s\n", error.c_str());
    return error.empty() ? 0 : 1;
}
