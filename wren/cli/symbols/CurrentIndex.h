// The index that answers a command.
#pragma once

#include "base/CancelToken.h"
#include "base/Result.h"
#include "symbols/Workspace.h"
#include "tagging/Settings.h"

#include <condition_variable>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

namespace wren {

class Interruption;

struct IndexChoice {
    bool waits = false;     // for the check of the whole tree, however long it takes
    bool withSystem = true; // answers also come from the headers of the system
};

// Made when there is none. An existing index is checked against its tree, but a command does not wait long for that:
// its answers then come from the index as it is. Used by one thread.
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

    bool MayBeStale() const; // the check has not ended yet, or has failed
    symbols::Workspace& Workspace() { return workspace; }

private:
    base::Result<void> Update(symbols::Index& index, const std::string& what);
    void MakeSystem(symbols::Index& system);
    void StartCheck(std::vector<symbols::Index*> indexes);
    void Check(const std::vector<symbols::Index*>& indexes);

    const IndexChoice choice;
    Interruption& interruption;
    symbols::Workspace workspace;
    base::CancelToken cancelCheck;
    std::thread checker;
    mutable std::mutex mutex; // guards the members below
    std::condition_variable ended;
    bool isChecked = true;
    bool failed = false;
};

} // namespace wren
