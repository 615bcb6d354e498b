#include "wren/files/ProjectTree.h"

#include "symbols/update/DirectoryReader.h"
#include "symbols/update/Walk.h"

#include <algorithm>
#include <cstdlib>
#include <memory>
#include <mutex>
#include <strings.h>
#include <sys/stat.h>
#include <utility>

namespace wren {

namespace {

using symbols::DirectoryReader;

constexpr unsigned kThreads = 2;

char Lower(char each)
{
    return each >= 'A' && each <= 'Z' ? static_cast<char>(each - 'A' + 'a') : each;
}

bool Contains(std::string_view text, std::string_view lowered)
{
    const auto isSame = [](char left, char right) { return Lower(left) == right; };
    return std::search(text.begin(), text.end(), lowered.begin(), lowered.end(), isSame) != text.end() ||
           lowered.empty();
}

} // namespace

bool StandsBefore(const TreeEntry& left, const TreeEntry& right)
{
    const bool isDirectory = left.kind == TreeEntry::Kind::Directory;
    if (isDirectory != (right.kind == TreeEntry::Kind::Directory))
        return isDirectory;
    const int order = ::strcasecmp(left.name.c_str(), right.name.c_str());
    return order != 0 ? order < 0 : left.name < right.name;
}

std::string ProjectTree::Absolute(const std::string& path) const
{
    return path.empty() ? root : root + "/" + path;
}

void ProjectTree::Forget()
{
    around.clear();
}

const symbols::Surroundings* ProjectTree::Around(const std::string& directory)
{
    if (const auto known = around.find(directory); known != around.end())
        return known->second ? &*known->second : nullptr;
    const std::string path = Absolute(directory);
    const symbols::TellingNames names = symbols::TellingNames::Of(path);
    std::optional<symbols::Surroundings> made;
    if (directory.empty()) {
        made = symbols::Surroundings::OfTop(path, names);
    } else {
        const size_t slash = directory.rfind('/');
        const symbols::Surroundings* outer = Around(slash == std::string::npos ? "" : directory.substr(0, slash));
        if (outer != nullptr && outer->TakesDirectory(path))
            made = outer->Inside(path, names);
    }
    const auto& kept = around.insert_or_assign(directory, std::move(made)).first->second;
    return kept ? &*kept : nullptr;
}

bool ProjectTree::IsFileWithin(const std::string& link) const
{
    const std::unique_ptr<char, decltype(&std::free)> target(::realpath(link.c_str(), nullptr), &std::free);
    struct stat status;
    return target != nullptr && std::string_view(target.get()).starts_with(root + "/") &&
           ::stat(target.get(), &status) == 0 && S_ISREG(status.st_mode);
}

base::Result<std::vector<TreeEntry>> ProjectTree::List(const std::string& directory, bool all)
{
    const std::string path = Absolute(directory);
    const DirectoryReader reader(path, directory.empty());
    if (reader.Problem() != 0)
        return base::Error{path, reader.Problem()};
    const symbols::Surroundings* rules = all ? nullptr : Around(directory);
    std::vector<TreeEntry> entries;
    if (!all && rules == nullptr)
        return entries;
    for (const DirectoryReader::Entry& each : reader.Entries()) {
        TreeEntry entry{std::string(each.name)};
        const std::string inside = path + "/" + entry.name;
        const bool isDirectory = each.kind == DirectoryReader::Kind::Directory;
        if (rules != nullptr && !(isDirectory ? rules->TakesDirectory(inside) : rules->TakesFile(inside)))
            continue;
        if (isDirectory)
            entry.kind = TreeEntry::Kind::Directory;
        else if (each.kind == DirectoryReader::Kind::Link && !IsFileWithin(inside))
            entry.kind = TreeEntry::Kind::Link;
        entries.push_back(std::move(entry));
    }
    std::ranges::sort(entries, StandsBefore);
    return entries;
}

namespace {

// A directory that cannot be read has no files, but the root must be readable.
base::Result<std::vector<std::string>> IgnoredOrNotBelow(const std::string& root, const base::CancelToken& cancel)
{
    ProjectTree tree(root);
    std::vector<std::string> files;
    std::vector<std::string> left = {""};
    while (!left.empty() && files.size() < kMostFiles) {
        const std::string directory = std::move(left.back());
        left.pop_back();
        if (cancel.IsCancelled())
            return base::Error{"cancelled"};
        const base::Result<std::vector<TreeEntry>> listed = tree.List(directory, true);
        if (!listed && directory.empty())
            return listed.Failure();
        for (const TreeEntry& entry : listed ? *listed : std::vector<TreeEntry>()) {
            const std::string path = directory.empty() ? entry.name : directory + "/" + entry.name;
            if (entry.kind == TreeEntry::Kind::Directory && entry.name != ".git")
                left.push_back(path);
            else if (entry.kind == TreeEntry::Kind::File && files.size() < kMostFiles)
                files.push_back(path);
        }
    }
    std::ranges::sort(files);
    return files;
}

} // namespace

base::Result<std::vector<std::string>> FilesBelow(const std::string& root, bool all, const base::CancelToken& cancel)
{
    if (all)
        return IgnoredOrNotBelow(root, cancel);
    symbols::WalkOptions walk;
    walk.root = root;
    walk.starts = {root};
    walk.threads = kThreads;
    walk.takes = [](std::string_view) { return true; };
    std::mutex mutex; // guards the files
    std::vector<std::string> files;
    base::CancelToken stop;
    walk.finds = [&](const symbols::FoundFile& file) {
        const std::lock_guard lock(mutex);
        if (files.size() < kMostFiles)
            files.push_back(file.path);
        if (files.size() >= kMostFiles || cancel.IsCancelled())
            stop.Cancel();
    };
    const base::Result<symbols::Walked> walked = symbols::Walk(walk, stop);
    if (cancel.IsCancelled())
        return base::Error{"cancelled"};
    if (!walked && !stop.IsCancelled())
        return walked.Failure();
    std::ranges::sort(files);
    return files;
}

std::vector<std::string> FilesWith(std::string_view letters, const std::vector<std::string>& files, size_t limit,
                                   const base::CancelToken& cancel)
{
    std::string lowered(letters);
    std::ranges::transform(lowered, lowered.begin(), Lower);
    const bool inPath = lowered.find('/') != std::string::npos;
    std::vector<std::string> found;
    for (const std::string& file : files) {
        if (found.size() >= limit || cancel.IsCancelled())
            break;
        const std::string_view path = file;
        if (Contains(inPath ? path : path.substr(path.rfind('/') + 1), lowered))
            found.push_back(file);
    }
    return found;
}

} // namespace wren
