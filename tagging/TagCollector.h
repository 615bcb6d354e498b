// The tags of one worker's files.
#pragma once

#include "tagging/Collector.h"
#include "tagging/SourceMaker.h"
#include "tagging/TagStore.h"

#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

namespace tagging {

class TagCollector final : public Collector {
public:
    // 'fields' are the names of the files in the tags file, by number; complete when Finish() is called. Both must
    // outlive it.
    TagCollector(const Settings& settings, const std::vector<std::string>& fields);

    std::optional<Source> Make(unsigned number, const std::string& path, std::string* error) override;
    void Keep(Source& source, std::string_view output) override;
    void LeaveOut(unsigned number) override { found.erase(number); }
    void Finish() override; // sorts the tags

    // After Finish():
    const std::vector<unsigned>& Files() const { return files; }
    const TagsByFile& TooLong() const { return tooLong; } // tags that fit into no line
    size_t Size() const { return size; }                  // tags, without the same one twice
    std::unique_ptr<tagsfile::LineSource> Lines();

private:
    SourceMaker sources;
    const std::vector<std::string>& fields;
    std::unordered_map<unsigned, FoundTags> found; // of the files that ctags has, by number
    TagStore store;
    std::vector<unsigned> files;
    size_t size = 0;
    TagsByFile tooLong;
    TagsByFile tooLongAgain; // counted while the lines are read a second time
};

} // namespace tagging
