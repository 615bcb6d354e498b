#include "wren/desktop/TagsKeeper.h"

#include "base/Descriptor.h"
#include "wren/core/UserDirectories.h"
#include "wren/desktop/GuiLoop.h"
#include "wren/desktop/NoticeBar.h"
#include "wren/desktop/PlainBox.h"
#include "wren/desktop/StatusLine.h"

#include <QStringList>

#include <algorithm>
#include <csignal>
#include <ctime>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace wren {

namespace {

constexpr off_t kLargestLog = 1024 * 1024; // bytes, from which a new start begins it again

QString Shown(const std::string& text)
{
    return QString::fromStdString(text);
}

// Of notices, which replace each other.
QString SubjectOf(const std::string& file)
{
    return "tags " + Shown(file);
}

} // namespace

// The file that the commands print into; /dev/null when there can be none.
class TagsKeeper::Log {
public:
    explicit Log(const std::string& path) : file(Open(path))
    {
        struct stat status;
        if (file.IsOpen() && ::fstat(file.Number(), &status) == 0 && status.st_size > kLargestLog)
            (void)::ftruncate(file.Number(), 0);
        if (!file.IsOpen())
            file = base::Descriptor(::open("/dev/null", O_WRONLY | O_CLOEXEC));
    }

    int Descriptor() const { return file.Number(); }

    // Any thread.
    void Note(const std::string& line)
    {
        const std::time_t now = std::time(nullptr);
        std::tm local = {};
        ::localtime_r(&now, &local);
        char date[32];
        std::strftime(date, sizeof date, "%F %T ", &local);
        const std::string text = date + line + (line.ends_with('\n') ? "" : "\n");
        [[maybe_unused]] const ssize_t ignored = ::write(file.Number(), text.data(), text.size());
    }

private:
    static int Open(const std::string& path)
    {
        std::string error;
        if (path.empty() || !MakeUserDirectory(StateDirectory(), &error))
            return -1;
        return ::open(path.c_str(), O_WRONLY | O_CREAT | O_APPEND | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC, 0600);
    }

    base::Descriptor file;
};

TagsKeeper::TagsKeeper(NoticeBar& notices, StatusLine& status)
    : notices(notices), status(status), log(std::make_unique<Log>(LogFile()))
{
    news.SetWakeUp(&GuiLoop::Wake);
    runner = std::make_unique<GuardedRunner>(log->Descriptor(), MakeNews());
    status.SetMakingTags([this] { return !runner->Running().empty(); });
    connect(&status, &StatusLine::RebuildAsked, this, &TagsKeeper::Rebuild);
    connect(&status, &StatusLine::StopAsked, this, [this] { runner->StopRunning(SIGTERM); });
}

TagsKeeper::~TagsKeeper()
{
    status.SetMakingTags(nullptr);
    runner.reset();
}

GuardedRunner::News TagsKeeper::MakeNews()
{
    GuardedRunner::News told;
    told.changed = &GuiLoop::Wake;
    told.runs = [this](const std::string& line) { log->Note("executing " + line); };
    told.ended = [this](const TagsOutcome& outcome) { news.Add(outcome); };
    told.stale = [this](const StaleTags& stale) { news.Add(stale); };
    return told;
}

std::string TagsKeeper::LogFile()
{
    const std::string directory = StateDirectory();
    return directory.empty() ? "" : directory + "/tags.log";
}

void TagsKeeper::TakeNews()
{
    news.Drain([this](const std::variant<TagsOutcome, StaleTags>& each) {
        if (const auto* outcome = std::get_if<TagsOutcome>(&each))
            Ended(*outcome);
        else
            Stale(std::get<StaleTags>(each));
    });
}

void TagsKeeper::Ended(const TagsOutcome& outcome)
{
    emit RunEnded();
    if (outcome.kind == TagsOutcome::Kind::Made)
        return notices.Withdraw(SubjectOf(outcome.file));
    if (outcome.kind == TagsOutcome::Kind::Interrupted)
        return emit Told(tr("Stopped: %1 is as it was").arg(Shown(outcome.file)));
    QString text = tr("%1 was not made: %2.").arg(Shown(outcome.file), Shown(outcome.problem));
    if (outcome.kind == TagsOutcome::Kind::Failed && !LogFile().empty())
        text += tr(" The output of the commands is in %1.").arg(Shown(LogFile()));
    notices.Tell(text, SubjectOf(outcome.file));
}

void TagsKeeper::Stale(const StaleTags& stale)
{
    std::erase_if(offered, [&](const StaleTags& each) { return each.file == stale.file; });
    offered.push_back(stale);
    notices.Tell(tr("%1 is out of date: %2 is newer. It is not rebuilt by itself, since %3. The button “Rebuild Tags” "
                    "below rebuilds it.")
                     .arg(Shown(stale.file), Shown(stale.newer), Shown(stale.why)),
                 SubjectOf(stale.file));
    status.OfferRebuild(true);
}

void TagsKeeper::Rebuild()
{
    std::erase_if(offered, [this](const StaleTags& stale) {
        if (!runner->Rebuild(stale))
            return false; // the user may try again
        notices.Withdraw(SubjectOf(stale.file));
        return true;
    });
    status.OfferRebuild(!offered.empty());
}

bool TagsKeeper::IsMaking(const std::string& file) const
{
    const std::vector<std::string> files = runner->Running();
    return std::ranges::find(files, file) != files.end();
}

bool TagsKeeper::MayStop(QWidget* window)
{
    const std::vector<std::string> files = runner->Running();
    if (files.empty())
        return true;
    QStringList names;
    for (const std::string& file : files)
        names.append(Shown(file));
    return AskPlainly(QMessageBox::Question, window,
                      tr("These tags are being made:\n\n%1\n\nStop, and keep the old tags?").arg(names.join('\n')),
                      QMessageBox::Yes | QMessageBox::No, QMessageBox::No) == QMessageBox::Yes;
}

void TagsKeeper::StopAtEnd(int signal)
{
    runner->StopAndWait(signal);
}

} // namespace wren
