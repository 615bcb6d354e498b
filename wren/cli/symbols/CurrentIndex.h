// The index that answers a command.
#pragma once

#include "base/CancelToken.h"
#include "base/Result.h"
#include "resolve/ParsedText.h"
#include "symbols/Workspace.h"
#include "tagging/Settings.h"

#include <condition_variable>
#include <mutex>
#include <string>
#include <thread>

namespace wren {

class Interruption;

struct IndexChoice {
    bool waits = false;     // for the check of the whole tree, however long it takes
    bool withSystem = true; // answers also come from the headers of the system
};

// Made when there is none. An existing index is checked against its tree, but a command does not wait long for that:
// its answers then come from the index as it is. The same holds for the headers of the system, which change only with
// its packages: a command waits even less for them. Used by one thread.
class CurrentIndex {
public:
    // 'root' is absolute. Borrows the interruption, which must exist before other threads.
    CurrentIndex(const std::string& root, const IndexChoice& choice, const tagging::Settings& settings,
                 Interruption& interruption);
    ~CurrentIndex(); // stops the check
    CurrentIndex(const CurrentIndex&) = delete;
    CurrentIndex& operator=(const CurrentIndex&) = delete;

    // Makes what is missing, with progress, and starts the check. Ends the process when a signal interrupts that.
    base::Result<void> Prepare();

    // Why answers may be stale, for the user: a check has not ended or has failed, or headers of the system have
    // changed. "" for no reason.
    std::string WhyStale();
    symbols::Workspace& Workspace() { return workspace; }
    resolve::ParsedTexts& ParsedTexts() { return texts; } // of the questions so far

private:
    base::Result<void> Update(symbols::Index& index, const std::string& what);
    void MakeSystem(symbols::Index& system);
    void StartCheck();
    void Check();
    void CheckSystem();
    void Note(bool& what); // and wakes the waiting command

    const IndexChoice choice;
    Interruption& interruption;
    symbols::Workspace workspace;
    resolve::ParsedTexts texts;
    base::CancelToken cancelCheck;
    bool checksProject = false;
    bool checksSystem = false;
    std::thread checker;
    std::mutex mutex; // guards the members below
    std::condition_variable ended;
    bool projectIsCurrent = false;
    bool systemIsCurrent = false;
    bool allChecked = false;
    bool systemHasChanged = false;
};

} // namespace wren
