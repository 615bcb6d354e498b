#include "wren/desktop/state/Recovery.h"

#include "base/Descriptor.h"
#include "wren/core/Documents.h"
#include "wren/core/OverwrittenCopy.h"
#include "wren/core/OwnedFile.h"
#include "wren/core/TextFile.h"
#include "wren/core/UserDirectories.h"
#include "wren/desktop/state/JsonBytes.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <ctime>
#include <fcntl.h>
#include <filesystem>
#include <optional>
#include <set>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace wren {

namespace {

namespace fs = std::filesystem;
using nlohmann::json;

constexpr const char* kLock = "lock";
constexpr const char* kEnd = ".copy";

std::string RecoveryDirectory()
{
    return StateDirectory().empty() ? "" : StateDirectory() + "/recovery";
}

// The lock of an editor's directory, held as long as this lives.
class Lock {
public:
    explicit Lock(const std::string& directory, int flags)
        : path(directory + "/" + kLock), file(::open(path.c_str(), O_RDWR | O_CLOEXEC | O_NOFOLLOW | flags, 0600))
    {
        problem = !file.IsOpen() || ::flock(file.Number(), LOCK_EX | LOCK_NB) != 0 ? errno : 0;
        if (problem == 0 && !IsStillThere())
            problem = ENOENT;
    }
    int Problem() const { return problem; } // errno's, 0 when it is held

    // Another editor that starts may have taken the directory for a dead one's and removed it.
    bool IsStillThere() const { return base::IsStillAt(file.Number(), path); }

private:
    const std::string path;
    const base::Descriptor file;
    int problem;
};

// An unfinished copy counts for nothing: the one before it is still there.
bool IsCopy(const std::string& file)
{
    const std::string name = fs::path(file).filename();
    return name != kLock && !name.starts_with(".wren-");
}

void RemoveIfEmpty(const std::string& directory)
{
    const std::vector<std::string> files = EntriesIn(directory);
    if (std::any_of(files.begin(), files.end(), IsCopy))
        return;
    for (const std::string& file : files)
        ::unlink(file.c_str());
    ::rmdir(directory.c_str());
}

bool IsLeft(const std::string& directory)
{
    return Lock(directory, 0).Problem() == 0;
}

void RemoveEmptyOnes()
{
    for (const std::string& directory : EntriesIn(RecoveryDirectory()))
        if (const Lock lock(directory, 0); lock.Problem() == 0)
            RemoveIfEmpty(directory);
}

std::string TimeText(std::time_t time)
{
    std::tm local = {};
    ::localtime_r(&time, &local);
    char text[32];
    return std::string(text, std::strftime(text, sizeof text, "%Y-%m-%d %H:%M:%S", &local));
}

// A file's time is kept in nanoseconds; its device is not kept, since it may have another number by then.
constexpr std::int64_t kNanoseconds = 1'000'000'000;

json JsonOf(const FileMark& mark)
{
    const base::FileIdentity stamp = mark.stamp.value_or(base::FileIdentity());
    return {{"exists", mark.stamp.has_value()},
            {"inode", stamp.inode},
            {"size", stamp.size},
            {"modified", stamp.modified.tv_sec * kNanoseconds + stamp.modified.tv_nsec},
            {"content", mark.content}};
}

FileMark MarkOf(const json& stored)
{
    FileMark mark = {std::nullopt, stored.at("content")};
    const std::int64_t modified = stored.at("modified");
    if (stored.at("exists"))
        mark.stamp = base::FileIdentity{
            0, stored.at("inode"), stored.at("size"), {modified / kNanoseconds, modified % kNanoseconds}};
    return mark;
}

SeenPlace SeenIn(const json& head)
{
    return {std::max(0L, head.value("caret", 0L)), std::max(0L, head.value("firstLine", 0L))}; // older ones have none
}

std::optional<UnsavedText> ReadCopy(const std::string& file)
{
    std::string ignored;
    std::optional<std::string> copy = ReadWholeFile(file, &ignored);
    const size_t end = copy ? copy->find('\n') : std::string::npos;
    if (end == std::string::npos)
        return std::nullopt;
    try {
        const json head = json::parse(copy->substr(0, end));
        const auto size = head.at("size").get<size_t>();
        if (size != copy->size() - end - 1)
            return std::nullopt;
        const FileMark was = head.contains("was") ? MarkOf(head["was"]) : FileMark(); // older ones do not say
        const TextEncoding encoding = EncodingLabelled(head.value("encoding", ""));   // older ones have none
        return UnsavedText{
            BytesOfJson(head.at("path")), copy->substr(end + 1), head.at("savedAt"), file, was, SeenIn(head), encoding};
    } catch (const json::exception&) {
        return std::nullopt;
    }
}

// Of the bytes that the file had.
UnsavedText OldText(OverwrittenText old)
{
    DecodedText decoded = DecodeAs(std::move(old.text), {});
    return {.path = std::move(old.path),
            .text = std::move(decoded.text),
            .savedAt = TimeText(old.savedAt),
            .file = std::move(old.file),
            .was = {},
            .seen = {},
            .encoding = std::move(decoded.encoding),
            .isOld = true};
}

CopyWriter::OnWritten ByDocument(Recovery::OnKept onKept)
{
    if (!onKept)
        return {};
    return [onKept = std::move(onKept)](const std::string& file, const std::string& problem) {
        const bool isNamed = problem.starts_with(file + ": ");
        onKept(std::stol(fs::path(file).stem()), isNamed ? problem.substr(file.size() + 2) : problem);
    };
}

} // namespace

struct Recovery::Own {
    explicit Own(const std::string& directory) : directory(directory), lock(directory, O_CREAT) {}
    ~Own()
    {
        if (lock.Problem() == 0)
            RemoveIfEmpty(directory);
    }
    std::string CopyOf(long document) const { return directory + "/" + std::to_string(document) + kEnd; }

    const std::string directory;
    const Lock lock;
    std::set<long> kept;
};

Recovery::Recovery(OnKept onKept) : writer(ByDocument(std::move(onKept)))
{
    Begin();
}

std::string Recovery::Place()
{
    return RecoveryDirectory();
}

bool Recovery::Retry()
{
    if (own != nullptr && own->lock.IsStillThere())
        return false;
    writer.Finish();
    own = nullptr;
    problem.clear();
    Begin();
    return own != nullptr;
}

void Recovery::Begin()
{
    if (RecoveryDirectory().empty()) {
        problem = "there is no home directory: copies of unsaved texts have no place";
        return;
    }
    if (!MakeUserDirectory(RecoveryDirectory(), &problem))
        return;
    RemoveEmptyOnes();
    for (int number = 1; own == nullptr && problem.empty(); ++number) {
        const std::string directory =
            RecoveryDirectory() + "/" + std::to_string(::getpid()) + "-" + std::to_string(number);
        int reason = ::mkdir(directory.c_str(), 0700) == 0 ? 0 : errno;
        if (reason == EEXIST)
            continue;
        if (reason == 0) {
            own = std::make_unique<Own>(directory);
            reason = own->lock.Problem();
        }
        if (reason != 0)
            own = nullptr;
        if (reason != 0 && reason != ENOENT && reason != EWOULDBLOCK)
            problem = directory + ": " + std::strerror(reason);
    }
}

Recovery::~Recovery()
{
    if (own == nullptr)
        return;
    for (const long document : std::exchange(own->kept, {}))
        writer.Remove(own->CopyOf(document));
    writer.Finish();
}

void Recovery::Keep(long document, const std::string& path, std::string text, const FileMark& was,
                    const SeenPlace& seen, const TextEncoding& encoding)
{
    if (own == nullptr)
        return;
    const json head = {{"path", JsonOfBytes(path)},    {"savedAt", TimeText(std::time(nullptr))},
                       {"size", text.size()},          {"was", JsonOf(was)},
                       {"caret", seen.caret},          {"firstLine", seen.firstLine},
                       {"encoding", LabelOf(encoding)}};
    writer.Write(own->CopyOf(document), head.dump() + "\n", std::move(text));
    own->kept.insert(document);
}

void Recovery::Forget(long document)
{
    if (own != nullptr && own->kept.erase(document) != 0)
        writer.Remove(own->CopyOf(document));
}

void Recovery::Finish()
{
    writer.Finish();
}

bool Recovery::Holds(long document, const std::string& text) const
{
    const std::optional<UnsavedText> copy = own == nullptr ? std::nullopt : ReadCopy(own->CopyOf(document));
    return copy && copy->text == text;
}

std::vector<UnsavedText> Recovery::Left() const
{
    std::vector<UnsavedText> left;
    for (const std::string& directory : EntriesIn(RecoveryDirectory()))
        if (IsLeft(directory))
            for (const std::string& file : EntriesIn(directory))
                if (std::optional<UnsavedText> copy; file.ends_with(kEnd) && (copy = ReadCopy(file)))
                    left.push_back(std::move(*copy));
    for (OverwrittenText& old : LeftOverwritten())
        left.push_back(OldText(std::move(old)));
    std::stable_sort(left.begin(), left.end(),
                     [](const UnsavedText& a, const UnsavedText& b) { return a.savedAt < b.savedAt; });
    return left;
}

void Recovery::Discard(const UnsavedText& text)
{
    ::unlink(text.file.c_str());
    if (text.isOld)
        return;
    const std::string directory = fs::path(text.file).parent_path();
    if (const Lock lock(directory, 0); lock.Problem() == 0)
        RemoveIfEmpty(directory);
}

} // namespace wren
