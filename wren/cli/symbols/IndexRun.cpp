#include "wren/cli/symbols/IndexRun.h"

#include "base/CancelToken.h"
#include "base/ExitStatus.h"
#include "symbols/Workspace.h"
#include "wren/cli/CommandSupport.h"
#include "wren/cli/IndexProgress.h"
#include "wren/core/Interruption.h"
#include "wren/core/ProgramOutput.h"
#include "wren/symbols/IndexRoot.h"

#include <chrono>
#include <cstdio>
#include <filesystem>
#include <optional>

namespace wren {

namespace {

namespace fs = std::filesystem;
namespace status = base::exit_status;

constexpr const char* kReport = "what was done";

std::string Counted(size_t number, const char* noun)
{
    return std::to_string(number) + " " + noun + (number == 1 ? "" : "s");
}

std::string Seconds(double seconds)
{
    char text[32];
    std::snprintf(text, sizeof text, "%.1f s", seconds);
    return text;
}

std::string Megabytes(std::uint64_t bytes)
{
    char text[32];
    std::snprintf(text, sizeof text, "%.1f MB", static_cast<double>(bytes) / 1e6);
    return text;
}

std::string ChangesText(const symbols::UpdateResult& result)
{
    std::string text = Counted(result.parsed, "file") + " parsed";
    if (result.removed > 0)
        text += ", " + std::to_string(result.removed) + " removed";
    if (result.failed > 0)
        text += ", " + std::to_string(result.failed) + " without symbols";
    return text;
}

class IndexRun {
public:
    IndexRun(const IndexWords& words, symbols::Index& index) : words(words), index(index) {}

    int Run();

private:
    int Show();
    int Remove();
    int Import();
    int Export();
    int Update();
    int Watch();
    int NoIndex() const;
    std::string Activity() const;
    std::string Subject() const { return words.system ? "index of the system's headers" : "index of " + index.Root(); }
    void CancelOnSignal();
    void EndIfInterrupted();
    int Failed(const base::Error& error);
    bool Say(const std::string& text) { return WriteOrComplain(output, text + "\n", kReport); }
    bool Summarize(const symbols::UpdateResult& result, double seconds);

    const IndexWords& words;
    symbols::Index& index;
    ProgramOutput output;
    Interruption interruption;
    base::CancelToken cancel;
};

int IndexRun::Run()
{
    if (words.status)
        return Show();
    if (words.remove)
        return Remove();
    if (!words.importFrom.empty())
        if (const int imported = Import(); imported != status::kDone)
            return imported;
    if (const int updated = Update(); updated != status::kDone)
        return updated;
    if (words.watch)
        return Watch();
    return words.exportTo.empty() ? status::kDone : Export();
}

int IndexRun::Import()
{
    CancelOnSignal();
    const base::Result<void> imported = index.Import(fs::absolute(words.importFrom), cancel);
    interruption.Release();
    EndIfInterrupted();
    return imported ? status::kDone : Failed(imported.Failure());
}

int IndexRun::Export()
{
    CancelOnSignal();
    const base::Result<void> exported = index.Export(fs::absolute(words.exportTo), cancel);
    interruption.Release();
    EndIfInterrupted();
    if (!exported)
        return Failed(exported.Failure());
    return Say("exported to " + words.exportTo) ? status::kDone : status::kUnusable;
}

std::string TimeText(std::chrono::system_clock::time_point when)
{
    const std::time_t time = std::chrono::system_clock::to_time_t(when);
    char text[64];
    std::tm parts;
    return std::strftime(text, sizeof text, "%Y-%m-%d %H:%M:%S", ::localtime_r(&time, &parts)) > 0 ? text : "unknown";
}

// What another process does with the index now; "" for nothing.
std::string IndexRun::Activity() const
{
    const std::optional<symbols::WritingProcess> writing = index.Writing();
    if (!writing)
        return "";
    const std::string process = writing->number > 0 ? "process " + std::to_string(writing->number) + ", " : "";
    return "an update is running (" + process + "since " + TimeText(writing->since) + ")";
}

int IndexRun::NoIndex() const
{
    const std::string activity = Activity();
    Complain("there is no " + Subject() + (activity.empty() ? "" : " yet; " + activity));
    return status::kNothing;
}

// The time of the last update. The lock's file changes also when an update fails.
std::string LastChange(const std::string& directory)
{
    std::optional<fs::file_time_type> last;
    std::error_code unknown;
    for (const fs::directory_entry& entry : fs::directory_iterator(directory, unknown)) {
        const fs::file_time_type time = entry.last_write_time(unknown);
        if (!unknown && entry.path().filename() != "lock" && (!last || time > *last))
            last = time;
    }
    return last ? TimeText(std::chrono::file_clock::to_sys(*last)) : "unknown";
}

int IndexRun::Show()
{
    const symbols::SnapshotPointer snapshot = index.Current();
    if (snapshot == nullptr)
        return NoIndex();
    const symbols::Snapshot::Size size = snapshot->Totals();
    const std::string activity = Activity();
    const std::string text = Subject() + "\nfiles: " + std::to_string(size.files) +
                             "\nsymbols: " + std::to_string(size.symbols) + "\nsize: " + Megabytes(size.bytes) +
                             "\nchanged: " + LastChange(index.Directory()) + "\ndirectory: " + index.Directory() +
                             (activity.empty() ? "" : "\nactivity: " + activity);
    if (snapshot->IsDamaged())
        Complain("the index is damaged; the next update rebuilds it");
    return Say(text) ? status::kDone : status::kUnusable;
}

int IndexRun::Remove()
{
    if (!fs::exists(index.Directory()))
        return NoIndex();
    if (const base::Result<void> removed = index.Remove(); !removed)
        return Failed(removed.Failure());
    return Say("removed: " + Subject()) ? status::kDone : status::kUnusable;
}

int IndexRun::Update()
{
    CancelOnSignal();
    const auto start = std::chrono::steady_clock::now();
    const base::Result<symbols::UpdateResult> result = [&] {
        IndexProgress progress("");
        return index.Update(progress.Listener(), cancel);
    }();
    interruption.Release();
    EndIfInterrupted();
    if (!result)
        return Failed(result.Failure());
    const std::chrono::duration<double> seconds = std::chrono::steady_clock::now() - start;
    return Summarize(*result, seconds.count()) ? status::kDone : status::kUnusable;
}

bool IndexRun::Summarize(const symbols::UpdateResult& result, double seconds)
{
    if (!result.warning.empty())
        Complain(result.warning);
    const symbols::SnapshotPointer snapshot = index.Current();
    const symbols::Snapshot::Size size = snapshot == nullptr ? symbols::Snapshot::Size() : snapshot->Totals();
    return Say(Subject() + ": " + Counted(size.files, "file") + ", " + Counted(size.symbols, "symbol") + "; " +
               ChangesText(result) + " in " + Seconds(seconds));
}

int IndexRun::Watch()
{
    CancelOnSignal();
    IndexProgress progress("");
    const base::Result<void> watched = index.Watch(
        progress.Listener(),
        [this](const symbols::UpdateResult& result) {
            if (!Say(ChangesText(result)))
                cancel.Cancel();
        },
        cancel);
    interruption.Release();
    EndIfInterrupted();
    return watched ? status::kDone : Failed(watched.Failure());
}

void IndexRun::CancelOnSignal()
{
    interruption.Hold([this](int signal) {
        if (cancel.IsCancelled()) // the second one
            DieBySignal(signal);
        cancel.Cancel();
    });
}

void IndexRun::EndIfInterrupted()
{
    if (interruption.Signal() != 0)
        DieBySignal(interruption.Signal());
}

int IndexRun::Failed(const base::Error& error)
{
    Complain(error.Message());
    return status::kNothing;
}

} // namespace

int RunIndex(const IndexWords& words)
{
    const base::Result<std::string> root = RootForDirectory(words.directory.empty() ? "." : words.directory);
    if (!root)
        return Unusable(root.Failure());
    symbols::WorkspaceOptions options;
    options.root = *root;
    options.withSystem = words.system;
    const base::Result<tagging::Settings> settings = symbols::IndexSettings();
    if (settings)
        options.tagging = *settings;
    else if (!words.status && !words.remove)
        return Unusable(settings.Failure());
    symbols::Workspace workspace(options);
    return IndexRun(words, words.system ? *workspace.System() : *workspace.Project()).Run();
}

} // namespace wren
