#include "cplustags/Summary.h"

#include <cstdio>

namespace cplustags {

namespace {

std::string Number(size_t count, const std::string& noun)
{
    return std::to_string(count) + " " + noun + (count == 1 ? "" : "s");
}

// Only the first of those that are listed says what it counts, unless that changes.
class Losses {
public:
    void AddFiles(size_t count, const std::string& what) { Add(count, "file", what); }
    void AddTags(size_t count, const std::string& what) { Add(count, "tag", what); }
    const std::string& Text() const { return text; }

private:
    void Add(size_t count, const std::string& noun, const std::string& what)
    {
        if (count == 0)
            return;
        text += text.empty() ? "; " : ", ";
        text += (lastNoun == noun ? std::to_string(count) : Number(count, noun)) + " " + what;
        lastNoun = noun;
    }

    std::string text;
    std::string lastNoun;
};

} // namespace

std::string SummaryText(const Tagger::Counts& counts, size_t unnameable, const TagsCount& inFile, double seconds)
{
    char time[32];
    std::snprintf(time, sizeof time, ", %.1f s", seconds);
    std::string text = Number(counts.files, "file") + ", " + Number(counts.tags, "tag") + time;
    if (inFile.tags != counts.tags || inFile.files != counts.files)
        text += " (in all " + Number(inFile.files, "file") + ", " + Number(inFile.tags, "tag") + ")";
    Losses losses;
    losses.AddFiles(counts.crashed, "crashed ctags");
    losses.AddFiles(counts.tookTooLong, "took too long");
    losses.AddFiles(counts.unreadable, "could not be read");
    losses.AddFiles(unnameable, "had a name that cannot be written");
    losses.AddTags(counts.tooLong, "too long");
    return text + losses.Text();
}

} // namespace cplustags
