#include "tagsfile/LineSource.h"

#include <algorithm>
#include <string>

namespace tagsfile {

namespace {

struct Head {
    LineSource* source;
    std::string_view line;
};

// Orders a heap with the first line on top.
bool Later(const Head& a, const Head& b)
{
    return a.line > b.line; // as char_traits compares: unsigned bytes
}

class MergedLines : public LineSource {
public:
    explicit MergedLines(std::vector<std::unique_ptr<LineSource>> all) : sources(std::move(all))
    {
        for (const auto& source : sources)
            Push(source.get());
    }

    bool Next(std::string_view& line) override
    {
        while (true) {
            // Advances the source of the last line only now: a line is valid until the next call.
            if (taken != nullptr)
                Push(taken);
            taken = nullptr;
            if (heads.empty())
                return false;
            std::pop_heap(heads.begin(), heads.end(), Later);
            const Head head = heads.back();
            heads.pop_back();
            taken = head.source;
            if (started && head.line == last)
                continue;
            last.assign(head.line);
            started = true;
            line = last;
            return true;
        }
    }

private:
    void Push(LineSource* source)
    {
        Head head{source, {}};
        if (!source->Next(head.line))
            return;
        heads.push_back(head);
        std::push_heap(heads.begin(), heads.end(), Later);
    }

    std::vector<std::unique_ptr<LineSource>> sources;
    std::vector<Head> heads;
    LineSource* taken = nullptr;
    std::string last;
    bool started = false;
};

} // namespace

std::unique_ptr<LineSource> Merged(std::vector<std::unique_ptr<LineSource>> sources)
{
    return std::make_unique<MergedLines>(std::move(sources));
}

} // namespace tagsfile
