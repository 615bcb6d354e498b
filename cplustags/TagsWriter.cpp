#include "cplustags/TagsWriter.h"

namespace cplustags {

namespace {

std::string PseudoTag(const std::string& name, const std::string& value, const std::string& comment)
{
    return "!_TAG_" + name + "\t" + value + "\t/" + comment + "/\n";
}

} // namespace

std::string PseudoTags(const TagsCount& count)
{
    return PseudoTag("CPLUSTAGS_FILES", std::to_string(count.files), "files tagged") +
           PseudoTag("CPLUSTAGS_TAGS", std::to_string(count.tags), "tags in this file") +
           PseudoTag("FILE_FORMAT", "2", "extended format; --format=1 will not append ;\" to lines") +
           PseudoTag("FILE_SORTED", "1", "0=unsorted, 1=sorted, 2=foldcase") +
           PseudoTag("PROGRAM_NAME", "cplustags", "Universal Ctags did the parsing") +
           PseudoTag("PROGRAM_VERSION", CPLUSTAGS_VERSION, "");
}

bool WriteTags(const TagsCount& count, LineSources lines, const std::function<bool(std::string_view)>& write)
{
    if (!write(PseudoTags(count)))
        return false;
    const std::unique_ptr<LineSource> merged = Merged(std::move(lines));
    size_t written = 0;
    for (std::string_view line; merged->Next(line); ++written)
        if (!write(line))
            return false;
    return written == count.tags;
}

} // namespace cplustags
