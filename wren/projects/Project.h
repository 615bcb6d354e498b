// One root with what answers questions about its files.
#pragma once

#include "base/CancelToken.h"
#include "base/Result.h"
#include "resolve/ParsedText.h"
#include "symbols/Workspace.h"
#include "tagging/ParsedSource.h"

#include <atomic>
#include <condition_variable>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <set>
#include <string>
#include <thread>
#include <vector>

namespace wren {

// Long work on an index, as the user sees it. Any thread.
class ShownWork {
public:
    virtual ~ShownWork() = default;

    // 'known' files in all, 0 when that is not known yet.
    virtual void Report(const std::string& message, size_t done, size_t known) = 0;
    virtual void End(const std::string& message) = 0; // the first one counts
};

// A text that an editor holds.
struct OpenText {
    std::shared_ptr<const std::string> content; // null for a closed one: its file counts again
    std::optional<tagging::Language> language;  // when the editor knows; see symbols::Workspace::SetOpenText
};

// What a project reports about its index. Called on the project's threads.
struct IndexListener {
    // Long work on an index begins, a first one for example. Returns what shows it, or null. 'cancel' is for the user,
    // and may be called on any thread as long as the work has not ended.
    std::function<std::shared_ptr<ShownWork>(const std::string& title, std::function<void()> cancel)> begin;
    std::function<void(const std::string& text)> warn;
};

// Any thread, unless a member says otherwise.
class Project {
public:
    // Reads nothing yet. 'isIndexed': its files are indexed, and kept current, once StartIndexing() is called.
    // 'tags' are absolute paths of tags files.
    Project(symbols::WorkspaceOptions options, bool isIndexed, std::vector<std::string> tags, IndexListener listener);
    ~Project(); // ends the indexing; the last complete index stays

    const std::string& Root() const { return root; }
    bool IsIndexed() const { return isIndexed; }
    symbols::Workspace& Workspace() { return workspace; }
    resolve::ParsedTexts& ParsedTexts() { return texts; }

    void StartIndexing();  // once
    void EndIndexing();    // soon, and for good; does not wait
    void CancelIndexing(); // until the next ResumeIndexing()
    void ResumeIndexing(); // does nothing while it runs

    struct Activity {
        bool isIndexing = false;
        size_t done = 0; // files
        size_t total = 0;
    };
    Activity Now() const;

    // Makes the index current: of these files, absolute paths, or of all when there are none. Blocks.
    base::Result<void> Refresh(const std::vector<std::string>& paths, const base::CancelToken& cancel);

    // From now on this text counts instead of the file, and after TextClosed() the file again. Both are cheap: the work
    // is done by Settle().
    void TextChanged(const std::string& path, OpenText text);
    void TextClosed(const std::string& path);
    // Makes the symbols of all changed texts visible in the workspace, except those of one that is open, whose asker
    // knows its text.
    void Settle(const std::string& except);
    // The same for one text, and for what it includes; false when all are settled. Requests then do not wait for many
    // texts.
    bool SettleOne();
    // Parses the text, which a question may be about soon, and reads what it includes from the index.
    void ReadAhead(const std::string& path, const OpenText& text);
    // Before a question about a text: reads the tags files and, unless the index is complete, what the text includes.
    // Blocks the first question about a text for a second at most, and costs next to nothing later. Questions about
    // texts that are prepared already do not wait.
    void Prepare(const std::string& path, const base::CancelToken& cancel);

private:
    using CancelPointer = std::shared_ptr<base::CancelToken>;

    void Run();
    void Settle(const std::string& path, const OpenText& text);
    bool IsPrepared(const std::string& path);
    void WarnOf(const symbols::Workspace::TagsProblems& problems);
    void KeepCurrent(const CancelPointer& cancel);
    void WatchProject(const CancelPointer& cancel);
    bool Update(symbols::Index& index, const std::string& title, const CancelPointer& cancel);
    symbols::Index::Listener Steps(const std::string& title, const CancelPointer& cancel,
                                   std::shared_ptr<ShownWork>& shown);
    CancelPointer NextRound();

    const std::string root;
    const bool isIndexed;
    const IndexListener listener;
    symbols::Workspace workspace;
    resolve::ParsedTexts texts;

    std::mutex mutex;                          // guards the next member
    std::map<std::string, OpenText> unsettled; // by path
    std::mutex settling;                       // held by whoever settles

    const std::vector<std::string> tags;
    std::mutex loading;   // held by whoever loads what a text includes
    std::mutex preparing; // guards the next members
    bool hasTags = false;
    std::set<std::string> prepared; // paths of texts
    base::CancelToken ending;

    std::atomic<bool> isIndexing{false};
    std::atomic<size_t> done{0};
    std::atomic<size_t> total{0};
    std::mutex turn; // guards the members below
    std::condition_variable changed;
    CancelPointer round; // of the work of the thread; null while it waits
    bool resumes = true;
    bool ends = false;
    std::thread thread;
};

} // namespace wren
