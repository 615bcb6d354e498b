#include "wren/desktop/state/FileWatch.h"

#include <QSocketNotifier>

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <sys/inotify.h>
#include <unistd.h>
#include <utility>
#include <vector>

namespace wren {

namespace {

namespace fs = std::filesystem;

constexpr std::chrono::milliseconds kSoon(100);

// The watches of files report changes of their content; a busy directory reports names only.
constexpr std::uint32_t kOfFiles = IN_MODIFY | IN_CLOSE_WRITE | IN_ATTRIB | IN_DELETE_SELF | IN_MOVE_SELF | IN_MASK_ADD;
constexpr std::uint32_t kOfDirectories =
    IN_CREATE | IN_DELETE | IN_MOVED_FROM | IN_MOVED_TO | IN_DELETE_SELF | IN_MOVE_SELF | IN_MASK_ADD;

// The nearest directory above that there is.
std::string DirectoryAbove(const std::string& path)
{
    fs::path directory = fs::path(path).parent_path();
    std::error_code ignored;
    while (directory.has_relative_path() && !fs::is_directory(directory, ignored))
        directory = directory.parent_path();
    return directory;
}

std::string BehindLinks(const std::string& path)
{
    std::error_code problem;
    const fs::path behind = fs::weakly_canonical(path, problem);
    return problem ? path : behind.string();
}

} // namespace

FileWatch::FileWatch(QObject* parent) : QObject(parent), reports(::inotify_init1(IN_NONBLOCK | IN_CLOEXEC))
{
    soon.setSingleShot(true);
    connect(&soon, &QTimer::timeout, this, &FileWatch::Check);
    if (!reports.IsOpen())
        return;
    notifier = new QSocketNotifier(reports.Number(), QSocketNotifier::Read, this);
    connect(notifier, &QSocketNotifier::activated, this, &FileWatch::ReadReports);
}

FileWatch::~FileWatch()
{
    delete notifier;
}

void FileWatch::Watch(long document, const std::string& path, const FileMark& mark)
{
    File& file = files[document];
    file.path = path;
    Take(&file, mark);
    WatchPlaces();
    soon.start(kSoon); // it may have changed since it was read
}

void FileWatch::Unwatch(long document)
{
    if (files.erase(document) != 0)
        WatchPlaces();
}

void FileWatch::Saved(long document, const FileMark& mark)
{
    const auto found = files.find(document);
    if (found == files.end())
        return;
    Take(&found->second, mark);
    WatchPlaces();
}

void FileWatch::Check()
{
    WatchPlaces();
    std::vector<long> documents;
    for (const auto& [document, file] : files)
        documents.push_back(document);
    for (const long document : documents)
        CheckOne(document);
}

void FileWatch::Take(File* file, const FileMark& mark)
{
    file->known = mark;
    file->gone = !mark.stamp;
}

// A receiver may unwatch the document, so nothing of it is used after a signal.
void FileWatch::CheckOne(long document)
{
    const auto found = files.find(document);
    if (found == files.end())
        return;
    File& file = found->second;
    const std::optional<base::FileIdentity> now = base::FileIdentity::At(file.path);
    const bool came = now && file.gone;
    const bool went = !now && !file.gone;
    const bool another = now && now != file.known.stamp;
    const bool changed = another && HasChanged(file.path, file.known);
    if (another)
        Take(&file, {now, DigestOf(file.path, now)});
    file.gone = !now;
    if (went)
        emit Gone(document);
    if (came)
        emit CameBack(document);
    if (changed)
        emit Changed(document);
}

void FileWatch::ReadReports()
{
    alignas(inotify_event) char buffer[16 * 1024];
    for (ssize_t length; (length = ::read(reports.Number(), buffer, sizeof buffer)) > 0;) {
        for (const char* at = buffer; at < buffer + length;) {
            const auto* report = reinterpret_cast<const inotify_event*>(at);
            at += sizeof *report + report->len;
            if (report->mask & IN_IGNORED)
                std::erase_if(watched, [&](const auto& each) { return each.second == report->wd; });
            if ((report->len == 0 || Concerns(report->name)) && !soon.isActive())
                soon.start(kSoon);
        }
    }
}

// Whether a path that is watched, or what it leads to, runs through something of that name.
bool FileWatch::Concerns(const std::string& name) const
{
    return std::any_of(files.begin(), files.end(), [&](const auto& each) {
        const std::string middle = "/" + name + "/";
        return (each.second.path + "/").find(middle) != std::string::npos ||
               (BehindLinks(each.second.path) + "/").find(middle) != std::string::npos;
    });
}

std::set<std::string> FileWatch::Places() const
{
    std::set<std::string> places;
    for (const auto& [document, file] : files) {
        const std::string behind = BehindLinks(file.path);
        places.insert({file.path, behind, DirectoryAbove(file.path), DirectoryAbove(behind)});
    }
    return places;
}

// A place may have become another file since: that has a number of its own, and the old one goes.
void FileWatch::WatchPlaces()
{
    if (!reports.IsOpen())
        return;
    const std::map<std::string, int> before = std::exchange(watched, {});
    std::set<int> used;
    for (const std::string& place : Places()) {
        std::error_code ignored;
        const bool isDirectory = fs::is_directory(place, ignored);
        const int number =
            ::inotify_add_watch(reports.Number(), place.c_str(), isDirectory ? kOfDirectories : kOfFiles);
        if (number >= 0)
            used.insert(watched[place] = number);
    }
    for (const auto& [place, number] : before)
        if (!used.contains(number))
            ::inotify_rm_watch(reports.Number(), number);
}

} // namespace wren
