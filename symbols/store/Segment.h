// An immutable part of an index: some of its files, with all that is known of them.
#pragma once

#include "base/Result.h"
#include "symbols/store/FileBytes.h"
#include "symbols/store/Format.h"
#include "symbols/store/SymbolCodec.h"
#include "symbols/store/Varint.h"

#include <atomic>
#include <cstdint>
#include <cstring>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace symbols {

// Any thread. Everything that it returns belongs to it.
//
// Each block of the file is verified when it is first needed, so that opening costs next to nothing. Whatever lies in a
// damaged block, or leads out of its section, is absent, and IsDamaged() is true from then on.
class Segment {
public:
    static base::Result<std::shared_ptr<const Segment>> Open(const std::string& path, std::uint64_t size);
    static std::shared_ptr<const Segment> InMemory(std::string content); // as SegmentSink wrote it; never fails

    std::uint64_t Id() const { return footer.id; }
    std::uint64_t Size() const { return bytes.All().size(); } // bytes
    std::uint64_t SymbolCount() const { return footer.symbolCount; }
    bool IsDamaged() const { return isDamaged.load(std::memory_order_relaxed); }

    std::uint32_t FileCount() const { return fileCount; }
    std::optional<FileRecord> File(FileInSegment file) const;
    std::optional<std::string_view> PathOf(FileInSegment file) const;
    std::optional<FileInSegment> FindFile(std::string_view path) const;
    // 'from': the file of an earlier place, or 0; near ones are found sooner.
    FileInSegment FileOfSymbol(std::uint32_t place, FileInSegment from) const
    {
        return FileAt(&FileRecord::symbols, place, from);
    }
    FileInSegment FileOfInclude(std::uint32_t place, FileInSegment from) const
    {
        return FileAt(&FileRecord::includes, place, from);
    }

    // Files of these lists are by path. The bytes of a file's symbols, includes and mentions.
    struct Range {
        std::uint32_t begin = 0; // in the section
        std::string_view bytes;
    };
    std::optional<Range> ListOf(FileInSegment file, Section section) const;
    std::optional<std::string_view> BytesFrom(Section section, std::uint32_t place, size_t atMost) const;

    std::optional<std::string_view> Text(TextNumber number) const;

    // Has memory loaded that BytesFrom(), or Text(), will read a little later.
    void Expect(Section section, std::uint64_t place) const
    {
        if (place < Length(section))
            __builtin_prefetch(bytes.All().data() + footer.sections[static_cast<size_t>(section)].offset + place);
    }
    void ExpectText(TextNumber number) const { Expect(Section::TextEnds, std::uint64_t(number) * sizeof(number)); }

    std::uint32_t KeyCount() const { return static_cast<std::uint32_t>(Length(Section::Keys) / sizeof(TextNumber)); }
    std::optional<TextNumber> TextOfKey(std::uint32_t key) const;
    std::optional<std::string_view> KeyText(std::uint32_t key) const;
    std::uint32_t FirstKeyFrom(std::string_view text) const; // the first one that is not less
    std::optional<std::uint32_t> FindKey(std::string_view text) const;
    RisingNumbers List(std::uint32_t key, KeyList list) const; // empty when there is none
    bool HasList(std::uint32_t key, KeyList list) const;

    // Names of symbols, by name in lower case.
    std::uint32_t NameCount() const { return static_cast<std::uint32_t>(Length(Section::Names) / sizeof(TextNumber)); }
    std::optional<std::uint32_t> KeyOfName(std::uint32_t name) const;
    // Without regard to case: the first one that is not less, and the one after those that begin with the text.
    std::uint32_t FirstNameFrom(std::string_view text) const;
    std::uint32_t NameAfter(std::string_view beginning) const;
    std::uint32_t ScopeCount() const
    {
        return static_cast<std::uint32_t>(Length(Section::ScopeKeys) / sizeof(TextNumber));
    }
    std::optional<std::uint32_t> KeyOfScope(std::uint32_t scope) const;

    // All names of symbols with one length, up to kLongestFuzzy; longer ones count among those.
    struct FuzzyNames {
        std::uint32_t first = 0; // for KeyOfFuzzy()
        std::uint32_t count = 0;
        size_t length = 0;
        std::uint64_t textsBegin = 0; // in their section
    };
    std::vector<FuzzyNames> AllFuzzyNames() const;             // by length; empty when damaged
    const NameTraits* TraitsOf(const FuzzyNames& names) const; // of each; null when damaged
    const char* TextsOf(const FuzzyNames& names) const;        // one after the other, without gaps; null when damaged
    std::optional<std::uint32_t> KeyOfFuzzy(std::uint32_t name) const;

    void SetDamaged() const { isDamaged.store(true, std::memory_order_relaxed); }

    explicit Segment(FileBytes bytes); // use Open() or InMemory()

private:
    bool TakeFooter();
    std::uint64_t Length(Section section) const { return footer.sections[static_cast<size_t>(section)].length; }
    const char* At(Section section, std::uint64_t offset, std::uint64_t length) const // null when damaged
    {
        const SegmentFooter::Place& place = footer.sections[static_cast<size_t>(section)];
        const std::uint64_t begin = place.offset + offset;
        // Nearly always: a few bytes of a block that has been used before.
        if (offset < place.length && length - 1 < place.length - offset && begin / kBlockSize < blockCount &&
            (begin + length - 1) / kBlockSize == begin / kBlockSize &&
            blocks[begin / kBlockSize].load(std::memory_order_relaxed) == Block::Good)
            return bytes.All().data() + begin;
        return Verified(section, offset, length);
    }
    const char* Verified(Section section, std::uint64_t offset, std::uint64_t length) const;
    bool IsVerified(std::uint64_t offset, std::uint64_t length) const;
    bool Verify(std::uint64_t block) const;
    template <class IsBefore>
    std::uint32_t BisectNames(IsBefore isBefore) const;
    FileInSegment FileAt(std::uint32_t FileRecord::*begin, std::uint32_t place, FileInSegment from) const;
    template <class T>
    std::optional<T> Value(Section section, std::uint64_t index) const
    {
        T value;
        const char* const place = At(section, index * sizeof(T), sizeof(T));
        if (place == nullptr)
            return std::nullopt;
        std::memcpy(&value, place, sizeof(T));
        return value;
    }

    FileBytes bytes;
    SegmentFooter footer = {};
    std::uint32_t fileCount = 0;
    std::uint64_t blockCount = 0;
    enum class Block : std::uint8_t { Unknown, Good, Damaged };
    std::unique_ptr<std::atomic<Block>[]> blocks;
    mutable std::atomic<bool> isDamaged{false};
};

} // namespace symbols
