// The files of an index: immutable segments, and a manifest that names the segments which count.
//
// Numbers are in the machine's byte order; a file from a machine with another order counts as foreign.
#pragma once

#include <cstddef>
#include <cstdint>

namespace symbols {

// Raise it with every change of what the files contain, the values of tagging's enumerations among them. An index of
// another version is never read.
constexpr std::uint32_t kFormatVersion = 3;
constexpr std::uint32_t kByteOrder = 0x01020304;
constexpr char kSegmentMagic[8] = {'w', 'r', 'e', 'n', 's', 'e', 'g', '\n'};
constexpr char kManifestMagic[8] = {'w', 'r', 'e', 'n', 'i', 'd', 'x', '\n'};
constexpr char kPartMagic[8] = {'w', 'r', 'e', 'n', 'p', 'r', 't', '\n'}; // of a manifest that is not complete

// A segment is verified in blocks of this size, each when it is first used.
constexpr size_t kBlockSize = 16 * 1024;

using TextNumber = std::uint32_t; // of a text in one segment; 0 is the empty one
using FileInSegment = std::uint32_t;

// The parts of a segment, in the order of the file.
enum class Section : std::uint8_t {
    Texts,       // all texts, one after the other, each once, in the order of their numbers
    TextEnds,    // u32 for each text
    Files,       // FileRecord, by path; one more at the end, which says where the last one's lists end
    Symbols,     // of each file, in the order of files, by line (SymbolCodec.h)
    Includes,    // of each file: the name's number, twice the line plus 1 for <>
    Mentions,    // of each file: differences between the sorted numbers of the names
    Keys,        // u32: the numbers of all texts that something can be found by, sorted by text
    Postings,    // lists of each key (KeyList)
    KeyPlaces,   // u32 for each key: where its lists begin in Postings
    Names,       // u32: places in Keys of names of symbols, sorted by name in lower case, then by name
    ScopeKeys,   // u32: places in Keys of all scopes
    FuzzyEnds,   // u32 for each length of names from 0 to kLongestFuzzy: how many names are at most as long
    FuzzyKeys,   // u32: places in Keys of names of symbols, sorted by length, then by name
    FuzzyTraits, // NameTraits for each of them
    FuzzyTexts,  // their first kLongestFuzzy bytes, one after the other
    Blocks,      // u64 checksums of the blocks of all sections before
};
constexpr size_t kSections = static_cast<size_t>(Section::Blocks) + 1;

// What a key leads to. In Postings: a byte with a bit for each list that is there; then for each of them its length in
// bytes and its values, the first one and then differences. All numbers are varints.
enum class KeyList : std::uint8_t {
    Symbols,         // with this name: places in Section::Symbols
    Members,         // with this scope: the same
    Derived,         // that have a base with this last part: the same
    MentioningFiles, // numbers of files
    FilesWithLeaf,   // numbers of files
    IncludesOfLeaf,  // places in Section::Includes
};
constexpr size_t kKeyLists = static_cast<size_t>(KeyList::IncludesOfLeaf) + 1;

struct FileRecord {
    std::uint64_t size; // these three are the stamp
    std::int64_t modified;
    std::uint64_t inode;
    std::uint64_t contentHash;
    TextNumber path;
    std::uint32_t symbols; // places in the sections where its lists begin
    std::uint32_t includes;
    std::uint32_t mentions;
    std::uint32_t symbolCount;
    std::uint8_t language;
    std::uint8_t isIncomplete; // 1 when ctags failed on it
    std::uint8_t unused[2];
};
static_assert(sizeof(FileRecord) == 56);

// Fuzzy search sees no more of a name, and takes longer names for as long.
constexpr size_t kLongestFuzzy = 255;

// What rules out most names that do not match a pattern; without regard to case.
struct NameTraits {
    std::uint64_t letters; // LettersOf() the name; shifted by kInitialsShift, those that start its words
    std::uint64_t pairs;   // PairOf() all neighbouring letters
};

// The last bytes of a segment.
struct SegmentFooter {
    struct Place {
        std::uint64_t offset; // in the file
        std::uint64_t length; // bytes
    };
    Place sections[kSections];
    std::uint64_t id;
    std::uint64_t symbolCount;
    std::uint64_t blocksChecksum; // of Section::Blocks
    std::uint32_t version;
    std::uint32_t byteOrder;
    char magic[8];
    std::uint64_t checksum; // of all before it
};

} // namespace symbols
