// Runs the plug-in's tags making for the editor, under guard, and says what came of it.
#pragma once

#include "wren/core/GuardedRunner.h"
#include "wren/desktop/display/UpdateQueue.h"

#include <QObject>

#include <memory>
#include <string>

class QWidget;

namespace wren {

class NoticeBar;
class StatusLine;

// What the commands print goes to a log in the state directory, which a notice names when something failed. Stale tags
// that are not rebuilt by themselves are said, with a button in the line of status that rebuilds them. GUI thread.
class TagsKeeper : public QObject {
    Q_OBJECT
public:
    TagsKeeper(NoticeBar& notices, StatusLine& status); // borrowed
    ~TagsKeeper() override;                             // stops what runs, and waits for it

    void TakeNews(); // from the threads of the runs, on the loop's turn

    bool MayStop(QWidget* window); // asks while tags are made; true when none are
    void StopAtEnd(int signal);    // without a question, waiting for a short time

    static std::string LogFile(); // "" without a state directory

private:
    GuardedRunner::News MakeNews();
    void Ended(const TagsOutcome& outcome);
    void Stale(const StaleTags& stale);
    void Rebuild();

    class Log;

    NoticeBar& notices;
    StatusLine& status;
    std::unique_ptr<Log> log;
    UpdateQueue news;
    std::vector<StaleTags> offered;
    std::unique_ptr<GuardedRunner> runner;
};

} // namespace wren
