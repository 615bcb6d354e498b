#include "symbols/store/Segment.h"

#include "symbols/store/Checksum.h"
#include "symbols/store/SortTexts.h"

#include <algorithm>
#include <cassert>

namespace symbols {

namespace {

// The first number below 'count' for which 'isBefore' is false.
template <class IsBefore>
std::uint32_t Bisect(std::uint32_t count, IsBefore isBefore)
{
    std::uint32_t from = 0;
    while (count > 0) {
        const std::uint32_t half = count / 2;
        if (isBefore(from + half)) {
            from += half + 1;
            count -= half + 1;
        } else
            count = half;
    }
    return from;
}

} // namespace

Segment::Segment(FileBytes bytes) : bytes(std::move(bytes)) {}

base::Result<std::shared_ptr<const Segment>> Segment::Open(const std::string& path, std::uint64_t size)
{
    base::Result<FileBytes> bytes = FileBytes::Open(path, size);
    if (!bytes)
        return bytes.Failure();
    auto segment = std::make_shared<Segment>(std::move(*bytes));
    if (!segment->TakeFooter())
        return base::Error{path + " is damaged"};
    return std::shared_ptr<const Segment>(std::move(segment));
}

std::shared_ptr<const Segment> Segment::InMemory(std::string content)
{
    auto segment = std::make_shared<Segment>(FileBytes(std::move(content)));
    [[maybe_unused]] const bool isValid = segment->TakeFooter();
    assert(isValid);
    return segment;
}

bool Segment::TakeFooter()
{
    const std::string_view all = bytes.All();
    if (all.size() < sizeof(footer))
        return false;
    std::memcpy(&footer, all.data() + all.size() - sizeof(footer), sizeof(footer));
    const std::string_view summed = all.substr(all.size() - sizeof(footer), offsetof(SegmentFooter, checksum));
    if (std::memcmp(footer.magic, kSegmentMagic, sizeof(footer.magic)) != 0 || footer.version != kFormatVersion ||
        footer.byteOrder != kByteOrder || footer.checksum != Checksum(summed))
        return false;
    for (const SegmentFooter::Place& place : footer.sections)
        if (place.offset > all.size() || place.length > all.size() - place.offset)
            return false;
    const SegmentFooter::Place& sums = footer.sections[static_cast<size_t>(Section::Blocks)];
    blockCount = (sums.offset + kBlockSize - 1) / kBlockSize;
    const std::uint64_t records = Length(Section::Files) / sizeof(FileRecord);
    if (sums.length != blockCount * sizeof(std::uint64_t) || records == 0 || records > UINT32_MAX ||
        footer.blocksChecksum != Checksum(all.substr(sums.offset, sums.length)))
        return false;
    fileCount = static_cast<std::uint32_t>(records - 1);
    blocks = std::make_unique<std::atomic<Block>[]>(blockCount);
    return true;
}

const char* Segment::Verified(Section section, std::uint64_t offset, std::uint64_t length) const
{
    const SegmentFooter::Place& place = footer.sections[static_cast<size_t>(section)];
    if (offset > place.length || length > place.length - offset) {
        SetDamaged();
        return nullptr;
    }
    return IsVerified(place.offset + offset, length) ? bytes.All().data() + place.offset + offset : nullptr;
}

bool Segment::IsVerified(std::uint64_t offset, std::uint64_t length) const
{
    if (length == 0)
        return true;
    for (std::uint64_t block = offset / kBlockSize; block <= (offset + length - 1) / kBlockSize; block++) {
        // Other threads may verify it at the same time; the result is the same. The bytes themselves never change.
        const Block state = block < blockCount ? blocks[block].load(std::memory_order_relaxed) : Block::Damaged;
        if (state == Block::Damaged || (state == Block::Unknown && !Verify(block)))
            return false;
    }
    return true;
}

bool Segment::Verify(std::uint64_t block) const
{
    const SegmentFooter::Place& sums = footer.sections[static_cast<size_t>(Section::Blocks)];
    std::uint64_t expected;
    std::memcpy(&expected, bytes.All().data() + sums.offset + block * sizeof(expected), sizeof(expected));
    const std::string_view content = bytes.All().substr(0, sums.offset).substr(block * kBlockSize, kBlockSize);
    const bool isGood = Checksum(content) == expected;
    blocks[block].store(isGood ? Block::Good : Block::Damaged, std::memory_order_relaxed);
    if (!isGood)
        SetDamaged();
    return isGood;
}

std::optional<FileRecord> Segment::File(FileInSegment file) const
{
    return Value<FileRecord>(Section::Files, file);
}

std::optional<std::string_view> Segment::PathOf(FileInSegment file) const
{
    const std::optional<FileRecord> record = File(file);
    return record ? Text(record->path) : std::nullopt;
}

std::optional<FileInSegment> Segment::FindFile(std::string_view path) const
{
    const FileInSegment file = Bisect(fileCount, [&](FileInSegment i) { return PathOf(i).value_or("") < path; });
    if (file < fileCount && PathOf(file) == path)
        return file;
    return std::nullopt;
}

// Of several files that begin at a place, only the last one can have something there.
FileInSegment Segment::FileAt(std::uint32_t FileRecord::*begin, std::uint32_t place, FileInSegment from) const
{
    const auto beginsUpTo = [&](FileInSegment i) {
        const std::optional<FileRecord> record = File(i);
        return record && (*record).*begin <= place;
    };
    FileInSegment last = std::min(from, fileCount); // not behind it
    std::uint32_t step = 1;
    while (step < fileCount - last && beginsUpTo(last + step)) {
        last += step;
        step *= 2;
    }
    const std::uint32_t left = std::min(step, fileCount - last);
    const FileInSegment after = last + Bisect(left, [&](std::uint32_t i) { return beginsUpTo(last + i); });
    return after == 0 ? 0 : after - 1;
}

std::optional<Segment::Range> Segment::ListOf(FileInSegment file, Section section) const
{
    std::uint32_t FileRecord::*const begin = section == Section::Symbols    ? &FileRecord::symbols
                                             : section == Section::Includes ? &FileRecord::includes
                                                                            : &FileRecord::mentions;
    const std::optional<FileRecord> record = File(file);
    const std::optional<FileRecord> next = File(file + 1);
    if (!record || !next)
        return std::nullopt;
    const std::uint32_t from = (*record).*begin;
    const std::uint32_t to = (*next).*begin;
    const char* const place = At(section, from, to < from ? UINT64_MAX : to - from);
    if (place == nullptr)
        return std::nullopt;
    return Range{from, {place, to - from}};
}

std::optional<std::string_view> Segment::BytesFrom(Section section, std::uint32_t place, size_t atMost) const
{
    const std::uint64_t left = Length(section) - std::min<std::uint64_t>(Length(section), place);
    const std::uint64_t length = std::min<std::uint64_t>(atMost, left);
    const char* const begin = At(section, place, length);
    if (begin == nullptr)
        return std::nullopt;
    return std::string_view(begin, length);
}

std::optional<std::string_view> Segment::Text(TextNumber number) const
{
    if (number == 0)
        return "";
    std::uint32_t ends[2]; // of the text before it, and its own
    const char* const both = At(Section::TextEnds, (number - std::uint64_t(1)) * sizeof(ends[0]), sizeof(ends));
    if (both == nullptr)
        return std::nullopt;
    std::memcpy(ends, both, sizeof(ends));
    const auto [from, to] = ends;
    const char* const place = At(Section::Texts, from, to < from ? UINT64_MAX : to - from);
    if (place == nullptr)
        return std::nullopt;
    return std::string_view(place, to - from);
}

std::optional<TextNumber> Segment::TextOfKey(std::uint32_t key) const
{
    return Value<TextNumber>(Section::Keys, key);
}

std::optional<std::string_view> Segment::KeyText(std::uint32_t key) const
{
    const std::optional<TextNumber> text = TextOfKey(key);
    return text ? Text(*text) : std::nullopt;
}

std::uint32_t Segment::FirstKeyFrom(std::string_view text) const
{
    return Bisect(KeyCount(), [&](std::uint32_t key) { return KeyText(key).value_or("") < text; });
}

std::optional<std::uint32_t> Segment::FindKey(std::string_view text) const
{
    const std::uint32_t key = FirstKeyFrom(text);
    if (key < KeyCount() && KeyText(key) == text)
        return key;
    return std::nullopt;
}

bool Segment::HasList(std::uint32_t key, KeyList list) const
{
    const std::optional<std::uint32_t> place = Value<std::uint32_t>(Section::KeyPlaces, key);
    const std::optional<std::string_view> present = place ? BytesFrom(Section::Postings, *place, 1) : std::nullopt;
    return present && !present->empty() && (static_cast<unsigned char>(present->front()) >> static_cast<int>(list) & 1);
}

RisingNumbers Segment::List(std::uint32_t key, KeyList list) const
{
    constexpr size_t kLongestLength = 5;
    std::uint64_t place = Value<std::uint32_t>(Section::KeyPlaces, key).value_or(UINT32_MAX);
    if (!HasList(key, list))
        return RisingNumbers("");
    const unsigned present =
        static_cast<unsigned char>(BytesFrom(Section::Postings, static_cast<std::uint32_t>(place), 1)->front());
    place++;
    for (unsigned i = 0;; i++) {
        if ((present >> i & 1) == 0)
            continue;
        const auto head = BytesFrom(Section::Postings, static_cast<std::uint32_t>(place), kLongestLength);
        VarintReader reader(head.value_or(""));
        const std::uint64_t length = reader.Number();
        if (!head || reader.Failed())
            break;
        place += static_cast<std::uint64_t>(reader.Place() - head->data());
        if (i == static_cast<unsigned>(list)) {
            const char* const begin = At(Section::Postings, place, length);
            return RisingNumbers(begin == nullptr ? std::string_view() : std::string_view(begin, length));
        }
        place += length;
        if (place > UINT32_MAX)
            break;
    }
    SetDamaged();
    return RisingNumbers("");
}

std::optional<std::uint32_t> Segment::KeyOfName(std::uint32_t name) const
{
    return Value<std::uint32_t>(Section::Names, name);
}

template <class IsBefore>
std::uint32_t Segment::BisectNames(IsBefore isBefore) const
{
    return Bisect(NameCount(), [&](std::uint32_t name) {
        const std::optional<std::uint32_t> key = KeyOfName(name);
        const std::optional<std::string_view> found = key ? KeyText(*key) : std::nullopt;
        return found && isBefore(*found);
    });
}

std::uint32_t Segment::FirstNameFrom(std::string_view text) const
{
    return BisectNames([&](std::string_view name) { return CompareIgnoringCase(name, text) < 0; });
}

std::uint32_t Segment::NameAfter(std::string_view beginning) const
{
    return BisectNames(
        [&](std::string_view name) { return CompareIgnoringCase(name.substr(0, beginning.size()), beginning) <= 0; });
}

std::optional<std::uint32_t> Segment::KeyOfScope(std::uint32_t scope) const
{
    return Value<std::uint32_t>(Section::ScopeKeys, scope);
}

std::vector<Segment::FuzzyNames> Segment::AllFuzzyNames() const
{
    std::vector<FuzzyNames> all;
    FuzzyNames next;
    for (; next.length <= kLongestFuzzy; next.length++) {
        const std::optional<std::uint32_t> end = Value<std::uint32_t>(Section::FuzzyEnds, next.length);
        if (!end || *end < next.first)
            return {};
        next.count = *end - next.first;
        all.push_back(next);
        next.textsBegin += std::uint64_t(next.count) * next.length;
        next.first = *end;
    }
    return all;
}

const NameTraits* Segment::TraitsOf(const FuzzyNames& names) const
{
    return reinterpret_cast<const NameTraits*>(
        At(Section::FuzzyTraits, names.first * sizeof(NameTraits), std::uint64_t(names.count) * sizeof(NameTraits)));
}

const char* Segment::TextsOf(const FuzzyNames& names) const
{
    return At(Section::FuzzyTexts, names.textsBegin, std::uint64_t(names.count) * names.length);
}

std::optional<std::uint32_t> Segment::KeyOfFuzzy(std::uint32_t name) const
{
    return Value<std::uint32_t>(Section::FuzzyKeys, name);
}

} // namespace symbols
