#include "tagsfile/KnownFiles.h"

#include "base/Descriptor.h"
#include "base/Hash.h"
#include "base/NewFile.h"
#include "base/UserDirectories.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <string_view>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

namespace tagsfile {

namespace {

namespace fs = std::filesystem;

constexpr std::string_view kSuffix = ".order";
constexpr std::string_view kNewPrefix =
    "new-";                        // prefix of files being written, and of those that killed processes left
constexpr size_t kMostBytes = 512; // a record is not longer
constexpr auto kLongestWrite = std::chrono::hours(1);

std::string ChecksumText(std::string_view text)
{
    char digits[17];
    std::snprintf(digits, sizeof digits, "%016llx", static_cast<unsigned long long>(base::Fnv1a(text)));
    return digits;
}

std::string TextOf(const base::FileIdentity& file)
{
    return std::to_string(file.device) + " " + std::to_string(file.inode) + " " + std::to_string(file.size) + " " +
           std::to_string(file.modified.tv_sec) + "." + std::to_string(file.modified.tv_nsec) + "\n";
}

// Appends a checksum of everything before it.
std::string RecordOf(const base::FileIdentity& file, const FileOrder& order)
{
    const std::string text = "names of a tags file\n" + TextOf(file) + (order.namesInOrder ? "1 " : "0 ") +
                             std::to_string(order.headSize) + "\n";
    return text + ChecksumText(text) + "\n";
}

// Accepts only the record that would be written: any other one is damaged or belongs to another file.
std::optional<FileOrder> OrderIn(const std::string& record, const base::FileIdentity& file)
{
    const size_t place = RecordOf(file, {}).find("\n0 0\n") + 1;
    FileOrder order;
    if (place + 2 >= record.length())
        return std::nullopt;
    order.namesInOrder = record[place] == '1';
    order.headSize = std::strtoll(record.c_str() + place + 2, nullptr, 10);
    if (record != RecordOf(file, order))
        return std::nullopt;
    return order;
}

std::string Content(const std::string& path)
{
    // Opening anything but a plain file might block.
    const base::Descriptor file(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
    if (!file.IsOpen())
        return "";
    char text[kMostBytes];
    const ssize_t count = ::read(file.Number(), text, sizeof text);
    return std::string(text, count > 0 ? static_cast<size_t>(count) : 0);
}

// In one step, so that no process reads a partial record.
void PutInPlace(const std::string& directory, const std::string& path, const std::string& record)
{
    base::Result<base::NewFile> file = base::NewFile::MakeUnique(directory + "/" + std::string(kNewPrefix));
    if (file && base::WriteAll(file->Number(), record))
        (void)file->MoveTo(path);
}

struct Kept {
    fs::file_time_type written;
    fs::path path;
};

bool IsAbandoned(const Kept& file)
{
    return file.path.filename().string().starts_with(kNewPrefix) &&
           fs::file_time_type::clock::now() - file.written > kLongestWrite;
}

// Removes only files with the names of this cache.
void RemoveOldest(const std::string& directory)
{
    std::vector<Kept> records;
    std::error_code problem;
    for (fs::directory_iterator entry(directory, problem), end; !problem && entry != end; entry.increment(problem)) {
        std::error_code gone;
        const Kept file{fs::last_write_time(entry->path(), gone), entry->path()};
        if (!gone && IsAbandoned(file))
            ::unlink(file.path.c_str());
        else if (!gone && file.path.extension() == kSuffix)
            records.push_back(file);
    }
    if (records.size() <= KnownFiles::kMostKept)
        return;
    std::sort(records.begin(), records.end(), [](const Kept& a, const Kept& b) { return a.written > b.written; });
    for (size_t i = KnownFiles::kMostKept; i < records.size(); ++i)
        ::unlink(records[i].path.c_str());
}

// A relative path would mean another directory to the next process.
std::string UserDirectory()
{
    const std::string directory = base::CacheDirectory("declaration");
    return directory.starts_with('/') ? directory : "";
}

} // namespace

KnownFiles::KnownFiles(std::string path) : directory(std::move(path)) {}

KnownFiles& KnownFiles::Instance()
{
    // Never destroyed: threads that load names may run until the process ends.
    static KnownFiles* const instance = new KnownFiles(UserDirectory());
    return *instance;
}

std::optional<FileOrder> KnownFiles::Find(const base::FileIdentity& file)
{
    std::optional<FileOrder> order = FindHere(file);
    if (order || directory.empty() || file.size < kWorthKeeping)
        return order;
    order = OrderIn(Content(PathFor(file)), file);
    if (order)
        RememberHere(file, *order);
    return order;
}

void KnownFiles::Remember(const base::FileIdentity& file, const FileOrder& order)
{
    RememberHere(file, order);
    if (!directory.empty() && file.size >= kWorthKeeping)
        Keep(file, order);
}

void KnownFiles::Forget(const base::FileIdentity& file)
{
    if (!directory.empty())
        ::unlink(PathFor(file).c_str());
    const std::lock_guard hold(lock);
    for (Known& one : known)
        if (one.file == file)
            one = {};
}

std::optional<FileOrder> KnownFiles::FindHere(const base::FileIdentity& file)
{
    const std::lock_guard hold(lock);
    const auto one = std::find_if(known.begin(), known.end(), [&](const Known& each) { return each.file == file; });
    if (one == known.end())
        return std::nullopt;
    return one->order;
}

void KnownFiles::RememberHere(const base::FileIdentity& file, const FileOrder& order)
{
    const std::lock_guard hold(lock);
    auto one = std::find_if(known.begin(), known.end(), [&](const Known& each) { return each.file == file; });
    if (one == known.end()) {
        one = known.begin() + static_cast<std::ptrdiff_t>(oldest);
        oldest = (oldest + 1) % known.size();
    }
    *one = {file, order};
}

void KnownFiles::Keep(const base::FileIdentity& file, const FileOrder& order) const
{
    std::error_code problem;
    fs::create_directories(directory, problem);
    PutInPlace(directory, PathFor(file), RecordOf(file, order));
    RemoveOldest(directory);
}

std::string KnownFiles::PathFor(const base::FileIdentity& file) const
{
    return directory + "/" + ChecksumText(TextOf(file)) + std::string(kSuffix);
}

} // namespace tagsfile
