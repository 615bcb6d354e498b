// Collects parsed sources, and writes them as one segment.
#pragma once

#include "base/Result.h"
#include "symbols/store/SegmentSink.h"
#include "symbols/store/SymbolCodec.h"
#include "symbols/store/TextTable.h"
#include "tagging/ParsedSource.h"
#include "tagging/SourceParser.h"

#include <string>
#include <string_view>
#include <vector>

namespace symbols {

class KeyLists;

// Not thread-safe.
class SegmentBuilder {
public:
    using FileNumber = std::uint32_t; // in the order of Add(); the segment's numbers are others

    FileNumber Add(std::string_view path, const tagging::FileStamp& stamp, const tagging::ParsedSource& source);
    void Touch(FileNumber file, const tagging::FileStamp& stamp);
    void Drop(FileNumber file); // it will not be in the segment

    bool IsEmpty() const { return live == 0; }
    size_t Memory() const { return memory + texts.Memory(); } // bytes, about, that Write() will need as well

    struct Written {
        std::uint64_t id = 0;
        std::uint64_t size = 0; // bytes
        std::vector<FileNumber>
            newNumbers; // in the segment, by the number of Add(); those of dropped files mean nothing
    };
    // Once only. Fails when the sink could not write.
    base::Result<Written> Write(SegmentSink& sink);

private:
    struct FileContent {
        FileRecord record = {};
        std::string symbols;
        std::string includes;
        std::string mentions;
        bool isDropped = false;
    };

    void AddSymbols(const tagging::ParsedSource& source, FileContent* file);
    void AddIncludes(const tagging::ParsedSource& source, FileContent* file);
    void AddMentions(const tagging::ParsedSource& source, FileContent* file);
    template <class Take>
    void ForEachEntry(const std::vector<FileNumber>& order, const Take& take);
    std::vector<FileNumber> FilesByPath();
    std::uint64_t WriteFiles(SegmentSink& sink, const std::vector<FileNumber>& order);
    void WriteKeys(SegmentSink& sink, const std::vector<FileNumber>& order);
    std::vector<TextNumber> Sorted(std::vector<TextNumber> keys) const;
    static void WritePostings(SegmentSink& sink, const std::vector<TextNumber>& keys, const KeyLists& lists);
    void WriteFuzzy(SegmentSink& sink, const std::vector<TextNumber>& keys, const std::vector<std::uint32_t>& byName);

    TextTable texts;
    std::vector<FileContent> files;
    std::vector<std::string_view> newTexts; // these two keep their room from file to file
    std::vector<TextNumber> numbers;
    size_t live = 0;
    size_t memory = 0;
};

} // namespace symbols
