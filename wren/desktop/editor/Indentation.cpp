#include "wren/desktop/editor/Indentation.h"

#include <algorithm>
#include <array>

namespace wren {

namespace {

constexpr int kWidest = 8;

struct Shown {
    long tabs = 0;
    long blanks = 0;
    std::array<long, kWidest + 1> steps{}; // how often a line is indented that much more than the one before
};

void Count(Shown& shown, std::string_view line, size_t& before)
{
    const std::string_view leading = LeadingBlanks(line);
    // Empty lines say nothing, and the '*' of a comment's further lines stands one column off.
    if (leading.size() == line.size() || line[leading.size()] == '*')
        return;
    if (leading.find('\t') != std::string_view::npos) {
        shown.tabs++;
        return;
    }
    if (!leading.empty())
        shown.blanks++;
    if (leading.size() > before && leading.size() - before <= kWidest)
        shown.steps[leading.size() - before]++;
    before = leading.size();
}

Shown Read(std::string_view text)
{
    Shown shown;
    size_t before = 0;
    while (!text.empty()) {
        const size_t end = std::min(text.find_first_of("\r\n"), text.size());
        Count(shown, text.substr(0, end), before);
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return shown;
}

} // namespace

Indentation DetectIndentation(std::string_view text, Indentation otherwise)
{
    const Shown shown = Read(text);
    if (shown.tabs > shown.blanks)
        return {true, otherwise.width};
    // Single columns are what continued lines are lined up with, not levels.
    const auto step = std::max_element(shown.steps.begin() + 2, shown.steps.end());
    if (shown.blanks == 0 || *step == 0)
        return otherwise;
    return {false, static_cast<int>(step - shown.steps.begin())};
}

std::string_view LeadingBlanks(std::string_view line)
{
    return line.substr(0, std::min(line.find_first_not_of(" \t"), line.size()));
}

std::string IndentationAfter(std::string_view line, Indentation indentation)
{
    std::string blanks(LeadingBlanks(line));
    const size_t last = line.find_last_not_of(" \t");
    if (last == std::string_view::npos || line[last] != '{')
        return blanks;
    return indentation.tabs ? blanks + '\t' : blanks + std::string(indentation.width, ' ');
}

std::string OneLevelLess(std::string_view blanks, Indentation indentation)
{
    const size_t taken = !blanks.empty() && blanks.back() == '\t' ? 1 : indentation.width;
    return std::string(blanks.substr(0, blanks.size() - std::min(taken, blanks.size())));
}

} // namespace wren
