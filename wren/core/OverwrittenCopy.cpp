#include "wren/core/OverwrittenCopy.h"

#include "base/Hash.h"
#include "wren/core/DiskSteps.h"
#include "wren/core/Documents.h"
#include "wren/core/OwnedFile.h"
#include "wren/core/UserDirectories.h"

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <cstring>
#include <filesystem>
#include <optional>
#include <sstream>
#include <sys/stat.h>

namespace wren {

namespace {

constexpr const char* kKind = "wren-overwritten-1";
constexpr const char* kUnfinished = ".part";
constexpr const char* kFinished = ".copy";

std::string CopiesDirectory()
{
    return StateDirectory().empty() ? "" : StateDirectory() + "/overwritten";
}

// Distinguishes a complete text from a torn one; it need not resist forgery.
struct TextMark {
    std::uint64_t size = 0;
    std::uint64_t hash = 0; // FNV-1a
    bool operator==(const TextMark&) const = default;
};

TextMark MarkOfText(std::string_view text)
{
    return {text.size(), base::Fnv1a(text)};
}

// A line of numbers, the path, a line end, the old text.
struct StoredCopy {
    std::string path;
    std::string old;
    TextMark next;
};

std::string HeadOf(const std::string& path, const std::string& old, std::string_view next)
{
    const TextMark before = MarkOfText(old), after = MarkOfText(next);
    std::ostringstream head;
    head << kKind << ' ' << path.size() << ' ' << before.size << ' ' << before.hash << ' ' << after.size << ' '
         << after.hash << '\n'
         << path << '\n';
    return head.str();
}

std::optional<StoredCopy> ReadCopy(const std::string& file)
{
    std::string ignored;
    const std::string all = ReadWholeFile(file, &ignored).value_or("");
    const size_t line = std::min(all.find('\n'), all.size());
    std::istringstream head(all.substr(0, line));
    std::string kind;
    size_t length = 0;
    TextMark before, after;
    head >> kind >> length >> before.size >> before.hash >> after.size >> after.hash;
    if (!head || kind != kKind || length > all.size() || line + 1 + length >= all.size())
        return std::nullopt;
    StoredCopy copy = {all.substr(line + 1, length), all.substr(line + 1 + length + 1), after};
    if (!copy.path.starts_with('/') || MarkOfText(copy.old) != before)
        return std::nullopt;
    return copy;
}

// A file that cannot be read may be torn.
bool IsWhole(const StoredCopy& copy)
{
    std::string ignored;
    const std::optional<std::string> now = ReadWholeFile(copy.path, &ignored);
    return now && (*now == copy.old || MarkOfText(*now) == copy.next);
}

void Take(const std::string& file, std::vector<OverwrittenText>& left)
{
    std::optional<StoredCopy> copy = ReadCopy(file);
    if (!copy)
        return;
    const bool isTwice = std::any_of(left.begin(), left.end(), [&](const OverwrittenText& each) {
        return each.path == copy->path && each.text == copy->old;
    });
    if (isTwice || IsWhole(*copy)) {
        ::unlink(file.c_str());
        return;
    }
    struct stat status = {};
    ::stat(file.c_str(), &status);
    left.push_back({std::move(copy->path), std::move(copy->old), status.st_mtim.tv_sec, file});
}

} // namespace

OverwrittenCopy::OverwrittenCopy(const DiskSteps& steps) : steps(steps) {}

OverwrittenCopy::~OverwrittenCopy()
{
    steps.Next();
    if (!path.empty())
        ::unlink(path.c_str());
    steps.Next();
}

bool OverwrittenCopy::Make(const std::string& of, const std::string& old, std::string_view next, std::string* error)
{
    const std::string directory = CopiesDirectory();
    if (directory.empty()) {
        *error = "there is no home directory, and so no place for a copy of the old text";
        return false;
    }
    if (!MakeUserDirectory(directory, error))
        return false;
    std::error_code unknown;
    const std::string head = HeadOf(std::filesystem::absolute(of, unknown), old, next);
    steps.Next();
    file = MakeOwnedFile(directory, kUnfinished, &path);
    int reason = file.IsOpen() ? 0 : errno;
    if (reason != 0)
        path.clear();
    if (reason == 0)
        reason = WriteAll(file.Number(), head + old, steps);
    const std::string finished = path.substr(0, path.rfind('.')) + kFinished;
    if (reason == 0)
        reason = ::rename(path.c_str(), finished.c_str()) == 0 ? 0 : errno;
    if (reason == 0)
        path = finished;
    else
        *error = directory + ": " + std::strerror(reason);
    SyncDirectory(directory);
    SyncDirectory(StateDirectory());
    return reason == 0;
}

std::vector<OverwrittenText> LeftOverwritten()
{
    std::vector<OverwrittenText> left;
    for (const std::string& file : EntriesIn(CopiesDirectory())) {
        const LeftFile owned(file);
        if (owned.IsLeft() && file.ends_with(kUnfinished))
            ::unlink(file.c_str());
        else if (owned.IsLeft() && file.ends_with(kFinished))
            Take(file, left);
    }
    std::stable_sort(left.begin(), left.end(),
                     [](const OverwrittenText& a, const OverwrittenText& b) { return a.savedAt < b.savedAt; });
    return left;
}

} // namespace wren
