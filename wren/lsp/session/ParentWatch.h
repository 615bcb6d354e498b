// Notices that the process which started the server is gone.
#pragma once

#include "base/CancelToken.h"

#include <sys/types.h>
#include <thread>

namespace wren::lsp {

class ParentWatch {
public:
    ParentWatch(pid_t process, base::CancelToken& gone); // cancels 'gone', which it borrows, when the process has ended
    ~ParentWatch();

private:
    void Run(pid_t process);

    base::CancelToken& gone;
    base::CancelToken ends;
    std::thread thread;
};

} // namespace wren::lsp
