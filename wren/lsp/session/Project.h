// One root with what answers questions about its files.
#pragma once

#include "base/CancelToken.h"
#include "resolve/ParsedText.h"
#include "symbols/Workspace.h"
#include "wren/lsp/session/Documents.h"

#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <thread>

namespace wren::lsp {

// What a project tells about its index. Called on the project's thread, one call at a time.
struct IndexListener {
    std::function<void(const std::string& root)> begin; // a first index, or one of more than a few files
    std::function<void(const std::string& root, const symbols::Progress&)> progress;
    std::function<void(const std::string& root, const std::string& totals)> end; // also after a failure
    std::function<void(const std::string& text)> warn;
};

// Any thread, unless a member says otherwise.
class Project {
public:
    // Reads nothing yet. 'isIndexed': its files are indexed, and kept current, once StartIndexing() is called.
    Project(symbols::WorkspaceOptions options, bool isIndexed, IndexListener listener);
    ~Project(); // ends the indexing; the last complete index stays

    const std::string& Root() const { return root; }
    bool IsIndexed() const { return isIndexed; }
    symbols::Workspace& Workspace() { return workspace; }
    resolve::ParsedTexts& ParsedTexts() { return texts; }

    void StartIndexing(); // does nothing while it runs; one thread
    void StopIndexing();  // returns when it has ended; one thread

    // From now on this text counts instead of the file, and after TextClosed() the file again. Both are cheap: the work
    // is done by Settle().
    void TextChanged(const DocumentPointer& document);
    void TextClosed(const std::string& path);
    // Makes the symbols of all changed texts visible in the workspace, except those of one, whose asker knows its text.
    void Settle(const std::string& except);

private:
    void Run();
    bool Update(symbols::Index& index, const std::string& what);

    const std::string root;
    const bool isIndexed;
    const IndexListener listener;
    symbols::Workspace workspace;
    resolve::ParsedTexts texts;

    std::mutex mutex;                                 // guards the next member
    std::map<std::string, DocumentPointer> unsettled; // by path; null for a closed one
    std::mutex settling;                              // held by whoever settles

    std::optional<base::CancelToken> cancel;
    std::thread thread;
};

} // namespace wren::lsp
