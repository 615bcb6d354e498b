#include "wren/search/Replacement.h"

#include "base/Hash.h"

namespace wren {

std::string WithReplacements(std::string_view text, const std::vector<Replacement>& replacements)
{
    std::string result;
    result.reserve(text.size());
    size_t done = 0;
    for (const Replacement& edit : replacements) {
        result += text.substr(done, edit.start - done);
        result += edit.with;
        done = edit.start + edit.size;
    }
    result += text.substr(done);
    return result;
}

bool IsTextOf(const FileReplacements& found, std::string_view text)
{
    return text.size() == found.textSize && base::Fnv1a(text) == found.textHash;
}

std::string SourceAfter(const FoundLine& line)
{
    return line.source.substr(0, line.matchStart) + line.with + line.source.substr(line.matchStart + line.matchSize);
}

} // namespace wren
