// What names mean, for the editor: the roots of its open texts with their indexes, and questions about them.
#pragma once

#include "base/CancelToken.h"
#include "wren/projects/Projects.h"
#include "wren/projects/Settler.h"

#include <condition_variable>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <thread>
#include <utility>
#include <vector>

namespace wren {

struct SymbolEngineOptions {
    std::string cache;      // the directory of all indexes; "" for the user's
    bool withSystem = true; // the headers of the system as well
};

// A question while it is being answered, on a thread of its topic.
struct Question {
    Projects& projects;
    const base::CancelToken& cancel; // nobody wants the answer any more
    // Runs 'news' on the GUI thread soon, unless the question is cancelled first. It may be called several times.
    std::function<void(std::function<void()> news)> tell;
};

// Nothing here waits for files or for an index: all work is done on the engine's threads, which sleep while nothing is
// asked. GUI thread.
class SymbolEngine {
public:
    // A later question of a topic cancels the earlier one.
    enum class Topic {
        Place,
        List,
        Replacement,
        Palette,
        Text,
        Meaning,
        Call,
        Completion,
        Directories,
        FoundFiles,
        Index
    };
    using Work = std::function<void(const Question&)>;

    // 'wake' is called on any thread when TakeNews() has something to do.
    SymbolEngine(SymbolEngineOptions options, std::function<void()> wake);
    ~SymbolEngine(); // ends the indexing; the last complete index stays
    SymbolEngine(const SymbolEngine&) = delete;
    SymbolEngine& operator=(const SymbolEngine&) = delete;

    // From now on this text counts instead of its file. Paths are absolute. The first text of a project starts its
    // index.
    void TextChanged(const std::string& path, std::shared_ptr<const std::string> text);
    void TextClosed(const std::string& path);

    void Ask(Topic topic, Work work);
    void Forget(Topic topic);
    void TakeNews();
    bool IsIdle() const; // no question is being answered, and no news wait

    // What is being indexed, for people: "Indexing /src/linux: 12,000 of 62,000 files"; "" for nothing.
    std::string Activity() const;
    bool IsIndexing() const;
    // Ends all indexing soon, that of texts opened later too. What was indexed so far answers. RefreshIndex() resumes.
    void StopIndexing();
    bool IsStopped() const;
    void RefreshIndex(const std::string& path); // of a text's project: looks at all its files now
    size_t Updates() const; // long updates of an index that have ended: answers may be other ones now
    // Why names are not understood, "no ctags is installed" for example; "" when they are.
    std::string Problem() const;

private:
    class ShownIndexing;
    using CancelPointer = std::shared_ptr<base::CancelToken>;
    struct Desk { // of one topic
        CancelPointer cancel;
        Work waiting;
        std::thread thread;
    };
    using News = std::pair<CancelPointer, std::function<void()>>;

    void Configure();
    void Feed();
    void Answer(Topic topic);
    CancelPointer CurrentCancel(Topic topic); // of the latest question
    void Tell(const CancelPointer& cancel, std::function<void()> news);
    IndexListener Listener();

    const SymbolEngineOptions options;
    const std::function<void()> wake;

    mutable std::mutex mutex; // guards the members down to 'news'
    std::condition_variable changed;
    bool ends = false;
    bool isConfigured = false;
    std::map<std::string, OpenText> fed; // texts that the projects do not know yet, by path
    std::map<Topic, Desk> desks;
    size_t answering = 0; // questions
    std::string activity;
    std::map<const ShownIndexing*, std::function<void()>> running; // what cancels it
    bool isStopped = false;
    size_t updates = 0;
    std::string problem;
    std::vector<News> news;

    Projects projects;
    Settler settler;
    std::thread feeder;
};

} // namespace wren
