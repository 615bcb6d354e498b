// Whether this start becomes the running editor, or asks it to open something.
#pragma once

#include "wren/desktop/Arguments.h"
#include "wren/instance/Instance.h"

#include <optional>

namespace wren {

struct Meeting {
    std::optional<int> status;  // the running editor did what was asked: end with this exit status
    std::optional<Claim> claim; // this process is the running editor now
};

// Call it before there are threads or a QApplication: with --wait and without a running editor it forks. The parent
// then waits for the texts, and the child becomes the editor, in a session of its own and away from the terminal.
// Neither is set when this process is to be an editor of its own, which others do not find.
Meeting MeetRunning(DesktopArguments* arguments);

} // namespace wren
