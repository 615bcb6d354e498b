#include "symbols/store/IndexFile.h"

#include "base/NewFile.h"
#include "base/Paths.h"
#include "base/PlainFile.h"
#include "symbols/store/Checksum.h"
#include "symbols/store/StoreDirectory.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <random>
#include <set>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>
#include <vector>

namespace symbols {

namespace {

// The file: a head, the manifest, its segments, and a checksum of all before it.
struct ExportHead {
    char magic[8];
    std::uint64_t manifestLength;
};
constexpr char kMagic[8] = {'w', 'r', 'e', 'n', 'e', 'x', 'p', '\n'};
constexpr size_t kPiece = size_t(1) << 20; // bytes that are copied, and added to the checksum, at a time

class Sum {
public:
    void Add(std::string_view piece) { sum = sum * 0x9e3779b97f4a7c15u + Checksum(piece); }
    std::uint64_t Value() const { return sum; }

private:
    std::uint64_t sum = 0;
};

base::Error NotWhole(const std::string& file)
{
    return {base::Shown(file) + " is not a whole index"};
}

// The bytes from the file's position on; fails at its end.
base::Result<std::string> ReadNext(int file, size_t size)
{
    std::string text(size, '\0');
    for (size_t length = 0; length < size;) {
        const ssize_t count = ::read(file, text.data() + length, size - length);
        if (count < 0 && errno == EINTR)
            continue;
        if (count <= 0)
            return count == 0 ? base::Error{"it ends too early"} : base::SystemError("cannot read");
        length += static_cast<size_t>(count);
    }
    return text;
}

// Copies from one open file to another, each from its position on.
base::Result<void> Copy(int from, int to, std::uint64_t length, Sum& sum, const base::CancelToken& cancel)
{
    while (length > 0) {
        if (cancel.IsCancelled())
            return base::Error{"cancelled"};
        const base::Result<std::string> piece = ReadNext(from, std::min<std::uint64_t>(length, kPiece));
        if (!piece)
            return piece.Failure();
        sum.Add(*piece);
        length -= piece->size();
        if (const base::Result<void> written = base::WriteAll(to, *piece); !written)
            return written;
    }
    return {};
}

base::Result<void> Write(int to, std::string_view text, Sum& sum)
{
    sum.Add(text);
    return base::WriteAll(to, text);
}

template <class T>
std::string_view BytesOf(const T& value)
{
    return {reinterpret_cast<const char*>(&value), sizeof value};
}

// A state that stays there while it is copied, whatever writers do.
struct OpenState {
    Manifest manifest;
    std::vector<base::Descriptor> segments;
};

// A writer may remove segments between the reading of the manifest and of these. There is a newer state then.
base::Result<OpenState> OpenCurrent(const std::string& path)
{
    const StoreDirectory directory(path);
    std::optional<Manifest::Version> last;
    for (;;) {
        std::optional<Manifest> manifest = directory.ReadManifest();
        if (!manifest || manifest->isPart || last == manifest->version)
            return base::Error{"there is no usable index in " + base::Shown(path)};
        last = manifest->version;
        OpenState state = {std::move(*manifest), {}};
        for (const Manifest::Entry& entry : state.manifest.entries)
            state.segments.emplace_back(base::OpenPlainFile(directory.SegmentPath(entry.id).c_str()));
        if (std::ranges::all_of(state.segments, &base::Descriptor::IsOpen))
            return state;
    }
}

base::Result<void> WriteState(OpenState& state, int to, const base::CancelToken& cancel)
{
    state.manifest.header.root.clear();
    const std::string manifest = state.manifest.Written();
    ExportHead head = {{}, manifest.size()};
    std::memcpy(head.magic, kMagic, sizeof head.magic);
    Sum sum;
    base::Result<void> result = Write(to, BytesOf(head), sum);
    if (result)
        result = Write(to, manifest, sum);
    for (size_t i = 0; result && i < state.segments.size(); ++i)
        result = Copy(state.segments[i].Number(), to, state.manifest.entries[i].size, sum, cancel);
    return result ? base::WriteAll(to, BytesOf(sum.Value())) : result;
}

} // namespace

base::Result<void> ExportIndex(const std::string& directory, const std::string& file, const base::CancelToken& cancel)
{
    base::Result<OpenState> state = OpenCurrent(directory);
    if (!state)
        return state.Failure();
    base::Result<base::NewFile> target = base::NewFile::MakeUnique(file + ".");
    if (!target)
        return target.Failure();
    if (const base::Result<void> written = WriteState(*state, target->Number(), cancel); !written)
        return base::Error{"cannot write " + base::Shown(file) + ": " + written.Failure().Message()};
    return target->MoveTo(file);
}

namespace {

// Reads an index file into the directory of an index, whose lock is ours.
class Import {
public:
    Import(const StoreDirectory& directory, const std::string& file, const base::CancelToken& cancel)
        : directory(directory), file(file), cancel(cancel), from(base::OpenPlainFile(file.c_str()))
    {
    }

    base::Result<void> Run(const StoreHeader& header);

private:
    base::Result<Manifest> ReadManifest();
    base::Result<void> ReadSegments(const Manifest& manifest);
    bool EndsWithSum() const;

    const StoreDirectory& directory;
    const std::string& file;
    const base::CancelToken& cancel;
    const base::Descriptor from;
    Sum sum;
};

base::Result<Manifest> Import::ReadManifest()
{
    const base::Result<std::string> start = ReadNext(from.Number(), sizeof(ExportHead));
    ExportHead head;
    if (!start)
        return NotWhole(file);
    std::memcpy(&head, start->data(), sizeof head);
    if (std::memcmp(head.magic, kMagic, sizeof head.magic) != 0)
        return base::Error{base::Shown(file) + " is not an index"};
    struct stat status; // nothing is allocated for a manifest that cannot be there
    if (::fstat(from.Number(), &status) != 0 || head.manifestLength > static_cast<std::uint64_t>(status.st_size))
        return NotWhole(file);
    const base::Result<std::string> text = ReadNext(from.Number(), head.manifestLength);
    if (!text)
        return NotWhole(file);
    sum.Add(*start);
    sum.Add(*text);
    std::optional<Manifest> manifest = Manifest::Read(*text);
    if (!manifest || manifest->isPart)
        return base::Error{base::Shown(file) + " is damaged, or from another version of the program"};
    return std::move(*manifest);
}

base::Result<void> Import::ReadSegments(const Manifest& manifest)
{
    for (const Manifest::Entry& entry : manifest.entries) {
        base::Result<base::NewFile> segment = directory.NewSegment();
        if (!segment)
            return segment.Failure();
        if (base::Result<void> copied = Copy(from.Number(), segment->Number(), entry.size, sum, cancel); !copied)
            return copied;
        // One that is there already may be in use.
        if (!base::Descriptor(base::OpenPlainFile(directory.SegmentPath(entry.id).c_str())).IsOpen())
            if (base::Result<void> moved = segment->MoveTo(directory.SegmentPath(entry.id)); !moved)
                return moved;
    }
    return {};
}

bool Import::EndsWithSum() const
{
    const base::Result<std::string> found = ReadNext(from.Number(), sizeof(std::uint64_t));
    char more;
    return found && *found == BytesOf(sum.Value()) && ::read(from.Number(), &more, 1) == 0;
}

std::set<std::uint64_t> SegmentsOf(const std::optional<Manifest>& manifest)
{
    std::set<std::uint64_t> ids;
    if (manifest)
        for (const Manifest::Entry& entry : manifest->entries)
            ids.insert(entry.id);
    return ids;
}

base::Result<void> Import::Run(const StoreHeader& header)
{
    if (!from.IsOpen())
        return base::SystemError("cannot read " + base::Shown(file));
    base::Result<Manifest> manifest = ReadManifest();
    if (!manifest)
        return manifest.Failure();
    if (manifest->header.patterns != header.patterns)
        return base::Error{base::Shown(file) + " was made by other versions of the parsers"};
    const std::optional<Manifest> before = directory.ReadManifest();
    base::Result<void> result = ReadSegments(*manifest);
    if (result && !EndsWithSum())
        result = NotWhole(file);
    std::random_device random;
    manifest->header = header;
    manifest->version = {before ? before->version.generation + 1 : 1, std::uint64_t(random()) << 32 | random()};
    if (result && !directory.Open(*manifest, State()))
        result = NotWhole(file);
    if (result)
        result = directory.WriteManifest(*manifest);
    directory.RemoveOthers(SegmentsOf(result ? *manifest : before));
    return result;
}

} // namespace

base::Result<void> ImportIndex(const std::string& directory, const std::string& file, const StoreHeader& header,
                               const base::CancelToken& cancel)
{
    const StoreDirectory place(directory);
    const base::Result<base::Descriptor> lock = place.Lock(cancel);
    if (!lock)
        return lock.Failure();
    return Import(place, file, cancel).Run(header);
}

} // namespace symbols
