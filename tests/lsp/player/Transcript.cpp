#include "Transcript.h"

#include <sstream>
#include <stdexcept>

namespace {

constexpr const char* kIndent = "    ";

// The first word, with the one behind it when it is an arrow.
std::string Head(const std::string& line)
{
    const size_t start = line.starts_with("> ") || line.starts_with("< ") ? 2 : 0;
    return line.substr(0, line.find(' ', start));
}

} // namespace

std::vector<TranscriptLine> ReadTranscript(const std::string& text)
{
    std::vector<TranscriptLine> lines;
    std::istringstream all(text);
    size_t number = 0;
    size_t empty = 0; // lines, which belong to an indented block when it goes on behind them
    for (std::string line; std::getline(all, line);) {
        ++number;
        if (line.empty()) {
            ++empty;
        } else if (line.starts_with(kIndent)) {
            if (lines.empty())
                throw std::runtime_error("the session begins with an indented line");
            lines.back().rest += std::string(empty + 1, '\n') + line.substr(4);
            empty = 0;
        } else {
            empty = 0;
            if (line.starts_with('#'))
                continue;
            const std::string head = Head(line);
            lines.push_back({number, head, line.substr(std::min(line.size(), head.size() + 1))});
        }
    }
    return lines;
}
