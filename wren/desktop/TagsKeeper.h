// Makes tags for the plug-in under guard, and reports the outcome in notices.
#pragma once

#include "wren/core/GuardedRunner.h"
#include "wren/desktop/display/GuiQueue.h"

#include <QObject>

#include <memory>
#include <string>
#include <variant>

class QWidget;

namespace wren {

class NoticeBar;
class StatusLine;

// The commands print into a log in the state directory, which a notice names after a failure. For stale tags that are
// not rebuilt automatically there is a notice, and a button in the status line that rebuilds them. GUI thread.
class TagsKeeper : public QObject {
    Q_OBJECT
public:
    TagsKeeper(NoticeBar& notices, StatusLine& status); // borrowed
    ~TagsKeeper() override;                             // stops running commands, and waits for them

    void TakeNews(); // from the threads of the runs; call it when the loop has woken

    bool IsMaking(const std::string& file) const; // an absolute path

    bool MayStop(QWidget* window); // true when no tags are being made; else asks the user
    void StopAtEnd(int signal);    // without a question, waiting for a short time

    static std::string LogFile(); // "" without a state directory

signals:
    void RunEnded(); // with any result
    void Told(const QString& text);

private:
    GuardedRunner::News MakeNews();
    void Ended(const TagsOutcome& outcome);
    void Stale(const StaleTags& stale);
    void Rebuild();

    class Log;

    NoticeBar& notices;
    StatusLine& status;
    std::unique_ptr<Log> log;
    GuiQueue<std::variant<TagsOutcome, StaleTags>> news;
    std::vector<StaleTags> offered;
    std::unique_ptr<GuardedRunner> runner;
};

} // namespace wren
