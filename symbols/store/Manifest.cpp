#include "symbols/store/Manifest.h"

#include "symbols/store/Checksum.h"
#include "symbols/store/Varint.h"

#include <cstring>

namespace symbols {

namespace {

struct Head {
    char magic[8];
    std::uint32_t format;
    std::uint32_t byteOrder;
    Manifest::Version version;
};
static_assert(sizeof(Head) == Manifest::kHead);

constexpr FileInSegment kMostFiles = 1u << 28; // of a segment: far more than a builder's memory allows

void PutText(std::string& out, std::string_view text)
{
    PutVarint(out, text.size());
    out += text;
}

std::string ReadText(VarintReader& reader)
{
    return std::string(reader.Bytes(reader.Long()));
}

void PutChanges(std::string& out, const FileChanges& changes)
{
    PutVarint(out, changes.deadFiles);
    PutVarint(out, changes.deadSymbols);
    FileInSegment last = 0;
    for (FileInSegment file = 0; file < changes.dead.size(); file++)
        if (changes.dead[file]) {
            PutVarint(out, file - last);
            last = file;
        }
    PutVarint(out, changes.touched.size());
    for (const auto& [file, stamp] : changes.touched) {
        PutVarint(out, file);
        PutVarint(out, stamp.size);
        PutVarint(out, static_cast<std::uint64_t>(stamp.modified));
        PutVarint(out, stamp.inode);
    }
}

std::shared_ptr<const FileChanges> ReadChanges(VarintReader& reader)
{
    auto changes = std::make_shared<FileChanges>();
    changes->deadFiles = reader.Long();
    changes->deadSymbols = reader.Long();
    FileInSegment last = 0;
    for (std::uint64_t i = 0; i < changes->deadFiles && !reader.Failed(); i++) {
        last += reader.Number();
        if (last >= kMostFiles) // only a manifest that we did not write has it
            return nullptr;
        if (last >= changes->dead.size())
            changes->dead.resize(last + 1);
        changes->dead[last] = true;
    }
    const std::uint64_t touched = reader.Long();
    for (std::uint64_t i = 0; i < touched && !reader.Failed(); i++) {
        const FileInSegment file = reader.Number();
        const std::uint64_t size = reader.Long();
        const auto modified = static_cast<std::int64_t>(reader.Long());
        changes->touched.push_back({file, {size, modified, reader.Long()}});
    }
    return changes;
}

} // namespace

std::string Manifest::Written() const
{
    Head head = {{}, kFormatVersion, kByteOrder, version};
    std::memcpy(head.magic, isPart ? kPartMagic : kManifestMagic, sizeof(head.magic));
    std::string out(reinterpret_cast<const char*>(&head), sizeof(head));
    PutText(out, header.root);
    PutText(out, header.patterns);
    PutVarint(out, entries.size());
    for (const Entry& entry : entries) {
        PutVarint(out, entry.id);
        PutVarint(out, entry.size);
        PutChanges(out, *entry.changes);
    }
    const std::uint64_t sum = Checksum(out);
    return out.append(reinterpret_cast<const char*>(&sum), sizeof(sum));
}

std::optional<Manifest::Version> Manifest::ReadVersion(std::string_view bytes)
{
    Head head;
    if (bytes.size() < sizeof(head))
        return std::nullopt;
    std::memcpy(&head, bytes.data(), sizeof(head));
    const auto isMarked = [&](const char* magic) { return std::memcmp(head.magic, magic, sizeof(head.magic)) == 0; };
    if ((!isMarked(kManifestMagic) && !isMarked(kPartMagic)) || head.format != kFormatVersion ||
        head.byteOrder != kByteOrder)
        return std::nullopt;
    return head.version;
}

std::optional<Manifest> Manifest::Read(std::string_view content)
{
    const std::optional<Version> version = ReadVersion(content);
    std::uint64_t sum;
    if (!version || content.size() < sizeof(Head) + sizeof(sum))
        return std::nullopt;
    const std::string_view summed = content.substr(0, content.size() - sizeof(sum));
    std::memcpy(&sum, content.data() + summed.size(), sizeof(sum));
    if (sum != Checksum(summed))
        return std::nullopt;

    Manifest manifest;
    manifest.version = *version;
    manifest.isPart = content.starts_with(std::string_view(kPartMagic, sizeof(kPartMagic)));
    VarintReader reader(summed.substr(sizeof(Head)));
    manifest.header.root = ReadText(reader);
    manifest.header.patterns = ReadText(reader);
    const std::uint64_t count = reader.Long();
    for (std::uint64_t i = 0; i < count && !reader.Failed(); i++) {
        Entry entry;
        entry.id = reader.Long();
        entry.size = reader.Long();
        entry.changes = ReadChanges(reader);
        if (entry.changes == nullptr)
            return std::nullopt;
        manifest.entries.push_back(std::move(entry));
    }
    if (reader.Failed() || !reader.AtEnd())
        return std::nullopt;
    return manifest;
}

} // namespace symbols
