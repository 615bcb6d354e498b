#include "wren/desktop/symbols/SymbolEngine.h"

#include "symbols/Index.h"
#include "vetch/support/ThreadStart.h"

#include <chrono>
#include <utility>

namespace wren {

// The status line shows one work at a time, the latest that began.
class SymbolEngine::ShownIndexing : public ShownWork {
public:
    ShownIndexing(SymbolEngine& engine, std::string title, std::function<void()> cancel)
        : engine(engine), title(std::move(title))
    {
        {
            const std::lock_guard lock(engine.mutex);
            if (engine.isStopped)
                cancel();
            engine.running[this] = std::move(cancel);
        }
        Show("");
    }
    ~ShownIndexing() override
    {
        const std::lock_guard lock(engine.mutex);
        engine.running.erase(this);
    }

    void Report(const std::string& message, size_t, size_t) override { Show(message); }

    void End(const std::string&) override
    {
        const std::lock_guard lock(engine.mutex);
        engine.running.erase(this);
        ++engine.updates;
        if (engine.activity.starts_with(title))
            engine.activity.clear();
        engine.wake();
    }

private:
    void Show(const std::string& message)
    {
        const std::lock_guard lock(engine.mutex);
        engine.activity = message.empty() ? title : title + ": " + message;
        const auto now = std::chrono::steady_clock::now();
        if (now < shown + kPause)
            return;
        shown = now;
        engine.wake();
    }

    static constexpr std::chrono::milliseconds kPause{200}; // people read no faster

    SymbolEngine& engine;
    const std::string title;
    std::chrono::steady_clock::time_point shown;
};

SymbolEngine::SymbolEngine(SymbolEngineOptions options, std::function<void()> wake)
    : options(std::move(options)), wake(std::move(wake)), projects(Listener()), settler(projects)
{
    feeder = vetch::StartThread("names are not understood", [this] { Feed(); });
    if (!feeder.joinable())
        problem = "the system has no thread for it";
}

SymbolEngine::~SymbolEngine()
{
    projects.Stop();
    {
        const std::lock_guard lock(mutex);
        ends = true;
        for (auto& [topic, desk] : desks)
            if (desk.cancel != nullptr)
                desk.cancel->Cancel();
        changed.notify_all();
    }
    if (feeder.joinable())
        feeder.join();
    for (auto& [topic, desk] : desks)
        if (desk.thread.joinable())
            desk.thread.join();
}

IndexListener SymbolEngine::Listener()
{
    IndexListener listener;
    listener.begin = [this](const std::string& title, std::function<void()> cancel) -> std::shared_ptr<ShownWork> {
        return std::make_shared<ShownIndexing>(*this, title, std::move(cancel));
    };
    listener.warn = [this](const std::string& text) {
        const std::lock_guard lock(mutex);
        problem = text;
        this->wake();
    };
    return listener;
}

// --------------------------------------------------------------------------------------------------------------- Texts

void SymbolEngine::TextChanged(const std::string& path, std::shared_ptr<const std::string> text)
{
    const std::lock_guard lock(mutex);
    fed[path] = {std::move(text), std::nullopt};
    changed.notify_all();
}

void SymbolEngine::TextClosed(const std::string& path)
{
    TextChanged(path, nullptr);
}

// Looks for ctags, which runs it.
void SymbolEngine::Configure()
{
    const base::Result<tagging::Settings> found = symbols::IndexSettings();
    ProjectsOptions made;
    made.cache = options.cache;
    made.withIndex = static_cast<bool>(found);
    made.withSystem = options.withSystem && made.withIndex;
    if (found)
        made.tagging = *found;
    projects.Configure(made, {});
    const std::lock_guard lock(mutex);
    if (!found)
        problem = found.Failure().Message();
    isConfigured = true;
    changed.notify_all();
}

// Looking for a text's root reads directories, so it is done here.
void SymbolEngine::Feed()
{
    Configure();
    std::unique_lock lock(mutex);
    while (!ends) {
        if (fed.empty()) {
            changed.wait(lock);
            continue;
        }
        auto next = fed.extract(fed.begin());
        const bool resumes = !isStopped;
        lock.unlock();
        const std::vector<Projects::ProjectPointer> around = projects.Around(next.key());
        for (const Projects::ProjectPointer& each : around)
            each->TextChanged(next.key(), next.mapped());
        if (resumes)
            around.front()->ResumeIndexing();
        settler.TextChanged();
        lock.lock();
        changed.notify_all();
    }
}

// --------------------------------------------------------------------------------------------------------- The user

bool SymbolEngine::IsIndexing() const
{
    const std::lock_guard lock(mutex);
    return !running.empty();
}

bool SymbolEngine::IsStopped() const
{
    const std::lock_guard lock(mutex);
    return isStopped;
}

void SymbolEngine::StopIndexing()
{
    const std::lock_guard lock(mutex);
    isStopped = true;
    for (const auto& [work, cancel] : running)
        cancel();
    wake();
}

// A stopped index goes on where it was, and then looks at all files anyway.
void SymbolEngine::RefreshIndex(const std::string& path)
{
    bool wasStopped = false;
    {
        const std::lock_guard lock(mutex);
        wasStopped = std::exchange(isStopped, false);
    }
    Ask(Topic::Index, [this, path, wasStopped](const Question& question) {
        if (wasStopped)
            for (const Projects::ProjectPointer& each : question.projects.All())
                each->ResumeIndexing();
        const Projects::ProjectPointer project = question.projects.For(path);
        if (wasStopped || !project->IsIndexed())
            return;
        ShownIndexing shown(*this, "Checking " + project->Root(),
                            [token = CurrentCancel(Topic::Index)] { token->Cancel(); });
        const base::Result<void> current = project->Refresh({}, question.cancel);
        if (!current && !question.cancel.IsCancelled()) {
            const std::lock_guard lock(mutex);
            problem = current.Failure().Message();
        }
        shown.End("");
    });
}

SymbolEngine::CancelPointer SymbolEngine::CurrentCancel(Topic topic)
{
    const std::lock_guard lock(mutex);
    return desks[topic].cancel;
}

// ----------------------------------------------------------------------------------------------------------- Questions

void SymbolEngine::Ask(Topic topic, Work work)
{
    Forget(topic);
    const std::lock_guard lock(mutex);
    Desk& desk = desks[topic];
    desk.cancel = std::make_shared<base::CancelToken>();
    if (desk.waiting == nullptr)
        ++answering;
    desk.waiting = std::move(work);
    changed.notify_all();
    if (!desk.thread.joinable())
        desk.thread = vetch::StartThread("names are not understood", [this, topic] { Answer(topic); });
    if (!desk.thread.joinable() && std::exchange(desk.waiting, nullptr) != nullptr)
        --answering;
}

void SymbolEngine::Forget(Topic topic)
{
    const std::lock_guard lock(mutex);
    const auto desk = desks.find(topic);
    if (desk == desks.end())
        return;
    if (desk->second.cancel != nullptr)
        desk->second.cancel->Cancel();
    if (std::exchange(desk->second.waiting, nullptr) != nullptr)
        --answering;
}

// A question sees all changes that were made before it.
void SymbolEngine::Answer(Topic topic)
{
    std::unique_lock lock(mutex);
    while (!ends) {
        Desk& desk = desks[topic];
        if (desk.waiting == nullptr || !isConfigured || !fed.empty()) {
            changed.wait(lock);
            continue;
        }
        const Work work = std::exchange(desk.waiting, nullptr);
        const CancelPointer cancel = desk.cancel;
        lock.unlock();
        const auto tell = [this, cancel](std::function<void()> heard) { Tell(cancel, std::move(heard)); };
        vetch::CallGuarded([&] { work({projects, *cancel, tell}); });
        lock.lock();
        --answering;
        wake();
    }
}

void SymbolEngine::Tell(const CancelPointer& cancel, std::function<void()> heard)
{
    const std::lock_guard lock(mutex);
    news.emplace_back(cancel, std::move(heard));
    wake();
}

void SymbolEngine::TakeNews()
{
    std::vector<News> taken;
    {
        const std::lock_guard lock(mutex);
        taken.swap(news);
    }
    for (const auto& [cancel, heard] : taken)
        if (!cancel->IsCancelled())
            heard();
}

bool SymbolEngine::IsIdle() const
{
    const std::lock_guard lock(mutex);
    return answering == 0 && news.empty();
}

std::string SymbolEngine::Activity() const
{
    const std::lock_guard lock(mutex);
    return activity;
}

size_t SymbolEngine::Updates() const
{
    const std::lock_guard lock(mutex);
    return updates;
}

std::string SymbolEngine::Problem() const
{
    const std::lock_guard lock(mutex);
    return problem;
}

} // namespace wren
