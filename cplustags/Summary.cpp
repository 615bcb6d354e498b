#include "cplustags/Summary.h"

#include <algorithm>
#include <cstdio>
#include <utility>
#include <vector>

namespace cplustags {

namespace {

std::string Number(size_t count, const std::string& noun)
{
    return std::to_string(count) + " " + noun + (count == 1 ? "" : "s");
}

// In the list, a number has a noun only if it differs from the one before.
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

std::string SummaryText(const tagging::TaggingCounts& counts, size_t unnameable, const tagsfile::TagsCount& inFile,
                        double seconds)
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

std::string TooLongText(const tagging::TagsByFile& tooLong, const std::function<std::string(unsigned file)>& name)
{
    constexpr size_t kMostNamed = 3;
    std::vector<std::pair<unsigned, size_t>> files(tooLong.begin(), tooLong.end());
    std::stable_sort(files.begin(), files.end(), [](const auto& a, const auto& b) { return a.second > b.second; });
    size_t tags = 0;
    std::string named;
    for (size_t i = 0; i < files.size(); ++i) {
        tags += files[i].second;
        if (i < kMostNamed)
            named += (i == 0 ? "" : ", ") + std::to_string(files[i].second) + " of " + name(files[i].first);
    }
    const size_t others = files.size() - std::min(files.size(), kMostNamed);
    return Number(tags, "tag") + (tags == 1 ? " is" : " are") +
           " left out, since readers reject lines that long: " + named +
           (others == 0 ? "" : ", and the rest of " + Number(others, "other file"));
}

} // namespace cplustags
