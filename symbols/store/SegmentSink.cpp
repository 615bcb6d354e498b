#include "symbols/store/SegmentSink.h"

#include "base/NewFile.h"
#include "symbols/store/Checksum.h"

#include <cstddef>
#include <cstring>
#include <utility>

namespace symbols {

namespace {

constexpr size_t kWriteSize = 64 * kBlockSize;
constexpr size_t kAlignment = 8;

} // namespace

void SegmentSink::Begin(Section section)
{
    SegmentFooter::Place* const place = &footer.sections[static_cast<size_t>(section)];
    if (section != Section::Texts)
        place[-1].length = Size() - place[-1].offset;
    pending.resize(pending.size() + (kAlignment - Size() % kAlignment) % kAlignment);
    place->offset = Size();
}

void SegmentSink::Append(std::string_view bytes)
{
    pending += bytes;
    if (pending.size() >= kWriteSize)
        Flush(false);
}

// A write that failed makes all the rest useless; the first reason counts.
void SegmentSink::Flush(bool all)
{
    while (pending.size() - summed >= (all ? 1 : kBlockSize)) {
        const std::string_view block = std::string_view(pending).substr(summed, kBlockSize);
        blocks.push_back(Checksum(block));
        summed += block.size();
    }
    if (file < 0)
        return;
    if (result)
        result = base::WriteAll(file, std::string_view(pending).substr(0, summed));
    written += summed;
    pending.erase(0, summed);
    summed = 0;
}

base::Result<void> SegmentSink::Finish(std::uint64_t id, std::uint64_t symbolCount)
{
    Begin(Section::Blocks);
    Flush(true);
    footer.sections[static_cast<size_t>(Section::Blocks)] = {Size(), blocks.size() * sizeof(blocks[0])};
    const std::string_view sums(reinterpret_cast<const char*>(blocks.data()), blocks.size() * sizeof(blocks[0]));
    footer.id = id;
    footer.symbolCount = symbolCount;
    footer.blocksChecksum = Checksum(sums);
    footer.version = kFormatVersion;
    footer.byteOrder = kByteOrder;
    std::memcpy(footer.magic, kSegmentMagic, sizeof(footer.magic));
    footer.checksum = Checksum({reinterpret_cast<const char*>(&footer), offsetof(SegmentFooter, checksum)});
    pending += sums;
    pending.append(reinterpret_cast<const char*>(&footer), sizeof(footer));
    if (file >= 0 && result)
        result = base::WriteAll(file, pending);
    if (file >= 0)
        written += std::exchange(pending, {}).size();
    return result;
}

} // namespace symbols
