// All roots that a face has open.
#pragma once

#include "tagging/Settings.h"
#include "wren/projects/Project.h"

#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

namespace wren {

struct ProjectsOptions {
    std::string cache;             // the directory of all indexes; "" for the user's
    bool withIndex = true;         // without: open texts, what they include, and tags files
    bool withSystem = true;        // the headers of the system as well
    tagging::Settings tagging;     // without a program when there is no ctags
    std::vector<std::string> tags; // files; relative to the root
};

// A root that the user or a client names, absolute and without links.
struct Folder {
    std::string root;
    bool isIndexed = true; // else only open texts there, and what they include
};

// Any thread.
class Projects {
public:
    using ProjectPointer = std::shared_ptr<Project>;

    explicit Projects(IndexListener listener) : listener(std::move(listener)) {}
    ~Projects();

    // Starts the indexing of new folders. Files outside of all folders belong to no project, if there are folders; else
    // to that of their own root. Returns the projects that are not needed any more: their work ends soon, and their
    // destruction waits for that.
    std::vector<ProjectPointer> Configure(const ProjectsOptions& options, const std::vector<Folder>& folders);

    // The project of a file: the innermost folder around it; without folders, its own root. Never null.
    ProjectPointer For(const std::string& path);
    // The same, and the indexed projects around it, whose indexes have the file as well.
    std::vector<ProjectPointer> Around(const std::string& path);
    // What the project's index holds, apart from files that belong to projects within it; 'bytes' are those of all.
    symbols::Snapshot::Size SizeOf(Project& project) const;
    std::vector<ProjectPointer> All() const;

    void Close(); // ends all indexing soon; does not wait
    void Stop();  // the same, and what is being parsed for a question or ahead of one

private:
    ProjectPointer At(const std::string& root, bool isIndexed); // under the lock
    std::vector<std::string> RootsWithin(const std::string& root) const;
    const Folder* FolderAround(const std::string& path) const;
    const std::string& RealPath(const std::string& path); // of a file, whose directory may be reached by a link
    std::optional<std::string> OwnRoot(const std::string& path);

    const IndexListener listener;
    mutable std::mutex mutex; // guards the members below
    ProjectsOptions options;
    std::vector<Folder> folders;
    std::map<std::string, std::optional<std::string>> ownRoots; // of files without a folder, by directory
    std::map<std::string, std::string> realPaths;               // of files that are in no folder by their name
    std::vector<ProjectPointer> all;
    bool isClosed = false;
};

} // namespace wren
