#include "wren/desktop/TagsRefresher.h"

#include "symbols/Index.h"
#include "tagsfile/TagsFileKind.h"
#include "wren/core/LocalTags.h"

#include <chrono>
#include <filesystem>
#include <optional>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace wren {

namespace {

namespace fs = std::filesystem;
using namespace std::chrono_literals;
using KeepTags = PreferenceValues::KeepTags;

constexpr auto kPause = 2s;         // without a change, before the work begins
constexpr auto kAfterFailure = 60s; // until the same directory is tried again
constexpr int kRest = 10;           // times as long as the work took, until it is done again
constexpr auto kEnd = 2s;           // for the process to clean up
constexpr int kPriority = 10;       // as for nice(1)

} // namespace

TagsRefresher::TagsRefresher(Parts parts) : parts(std::move(parts))
{
    pause.setSingleShot(true);
    pause.setInterval(kPause);
    connect(&pause, &QTimer::timeout, this, &TagsRefresher::StartNext);
    connect(&process, &QProcess::finished, this, &TagsRefresher::Ended);
    connect(&process, &QProcess::errorOccurred, this, [this](QProcess::ProcessError error) {
        if (error == QProcess::FailedToStart)
            Ended();
    });
    process.setStandardInputFile(QProcess::nullDevice());
    process.setStandardOutputFile(QProcess::nullDevice());
    process.setStandardErrorFile(QProcess::nullDevice());
    process.setChildProcessModifier([] { ::setpriority(PRIO_PROCESS, 0, kPriority); });
}

TagsRefresher::~TagsRefresher()
{
    process.disconnect(this);
    if (process.state() == QProcess::NotRunning)
        return;
    process.terminate();
    if (!process.waitForFinished(std::chrono::milliseconds(kEnd).count())) {
        process.kill();
        process.waitForFinished(-1);
    }
}

void TagsRefresher::FileChanged(const std::string& path)
{
    const std::string directory = PlaceFor(path);
    if (directory.empty() || !MayReplace(directory))
        return;
    waiting.insert(directory);
    pause.start();
}

std::string TagsRefresher::PlaceFor(const std::string& path) const
{
    const KeepTags wanted = parts.wanted();
    const std::string directory = fs::path(path).parent_path();
    if (wanted == KeepTags::Never)
        return "";
    if (const std::optional<std::string> tags = FindLocalTags(directory))
        return fs::path(*tags).parent_path();
    return wanted == KeepTags::Always ? symbols::FindRoot(directory).value_or("") : "";
}

bool TagsRefresher::MayReplace(const std::string& directory) const
{
    struct stat status;
    if (::lstat(directory.c_str(), &status) != 0 || status.st_uid != ::geteuid())
        return false;
    if (QString::fromStdString(directory).toStdString() != directory)
        return false; // the name would reach the program changed
    const std::string file = directory + "/tags";
    if (::lstat(file.c_str(), &status) != 0)
        return errno == ENOENT;
    return S_ISREG(status.st_mode) && status.st_uid == ::geteuid() && status.st_size <= kLargestTags &&
           tagsfile::IsFromOurProgram(file);
}

// What cannot be done yet waits for another pause.
void TagsRefresher::StartNext()
{
    if (process.state() != QProcess::NotRunning)
        return pause.start();
    for (const std::string& directory : waiting) {
        const auto rest = notBefore.find(directory);
        if ((rest != notBefore.end() && !rest->second.hasExpired()) || parts.isMade(directory + "/tags"))
            continue;
        current = directory;
        waiting.erase(directory);
        QStringList words{"tags", "--from-index", "--jobs", "1"};
        if (!parts.settings.empty() && fs::exists(parts.settings))
            words << "--settings" << QString::fromStdString(parts.settings);
        words << "--" << QString::fromStdString(current);
        since.start();
        process.start(QString::fromStdString(parts.program), words);
        break;
    }
    if (!waiting.empty())
        pause.start();
}

void TagsRefresher::Ended()
{
    const bool isMade = process.exitStatus() == QProcess::NormalExit && process.exitCode() == 0 &&
                        process.error() != QProcess::FailedToStart;
    const std::chrono::milliseconds rest(since.elapsed() * kRest);
    notBefore[current] = QDeadlineTimer(isMade ? rest : std::max<std::chrono::milliseconds>(rest, kAfterFailure));
    current.clear();
    if (isMade)
        emit Made();
}

} // namespace wren
