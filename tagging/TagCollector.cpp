#include "tagging/TagCollector.h"

#include "tagging/ctags/CtagsOutput.h"

namespace tagging {

TagCollector::TagCollector(const Settings& settings, const std::vector<std::string>& fields)
    : sources(settings), fields(fields)
{
}

std::optional<Source> TagCollector::Make(unsigned number, const std::string& path, std::string* error)
{
    FoundTags tags;
    std::optional<Source> source = sources.Make(number, path, tags, error);
    if (source && !tags.tags.tags.empty())
        found[number] = std::move(tags);
    return source;
}

void TagCollector::Keep(Source& source, std::string_view output)
{
    if (const auto here = found.find(source.number); here != found.end()) {
        for (const tagsfile::Tag& tag : here->second.tags.tags)
            store.Add(source.number, tag);
        found.erase(here);
    }
    const tagsfile::Tags read = ReadCtagsOutput(output);
    for (const tagsfile::Tag& tag : read.tags)
        store.Add(source.number, tag);
    files.push_back(source.number);
}

void TagCollector::Finish()
{
    store.Sort(fields);
    std::vector<std::unique_ptr<tagsfile::LineSource>> sorted;
    sorted.push_back(store.Lines(fields, &tooLong));
    const std::unique_ptr<tagsfile::LineSource> once = tagsfile::Merged(std::move(sorted));
    for (std::string_view line; once->Next(line);)
        ++size;
}

std::unique_ptr<tagsfile::LineSource> TagCollector::Lines()
{
    return store.Lines(fields, &tooLongAgain);
}

} // namespace tagging
