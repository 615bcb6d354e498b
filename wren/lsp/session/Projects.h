// All roots of a session.
#pragma once

#include "tagging/Settings.h"
#include "wren/lsp/session/Project.h"

#include <memory>
#include <mutex>
#include <string>
#include <vector>

namespace wren::lsp {

struct ProjectsOptions {
    std::string cache;         // the directory of all indexes; "" for the user's
    bool withIndex = true;     // without: open texts, what they include, and tags files
    bool withSystem = true;    // the headers of the system as well
    tagging::Settings tagging; // without a program when there is no ctags
};

// Any thread.
class Projects {
public:
    Projects(ProjectsOptions options, IndexListener listener);
    ~Projects();

    // The roots that the client names, absolute and without links; the first call with 'true' also makes files outside
    // of them belong to no project.
    void SetFolders(const std::vector<std::string>& folders);

    // The project of a file: the innermost folder around it; without folders, its own root. Never null.
    std::shared_ptr<Project> For(const std::string& path);
    std::vector<std::shared_ptr<Project>> All() const;

    void Close(); // ends all indexing; waits for it

private:
    std::shared_ptr<Project> At(const std::string& root, bool isIndexed); // under the lock

    const ProjectsOptions options;
    const IndexListener listener;
    mutable std::mutex mutex; // guards the members below
    std::vector<std::string> folders;
    std::vector<std::shared_ptr<Project>> all;
};

} // namespace wren::lsp
