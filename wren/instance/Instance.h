// The socket through which one running editor takes what later starts are asked to open.
#pragma once

#include "base/Descriptor.h"
#include "base/Result.h"
#include "wren/instance/OpenRequest.h"

#include <chrono>
#include <optional>
#include <string>

namespace wren {

// Editors of the same folder ("" for those of none) with the same state directory on the same screen are one; they meet
// at this path. It is in a directory that
// only the user can enter, in $XDG_RUNTIME_DIR or else in the state directory. The directory is made. An error when
// there is no such directory, when it belongs to another user or is open to others, or when the path is too long.
base::Result<std::string> MeetingPlace(const std::string& folder = "");

// The right to be the running editor, and the socket that the others find. Both end with the process, however it ends.
struct Claim {
    base::Descriptor lock;
    base::Descriptor listener; // it does not block
};

// Absent when another process has the right. Replaces a socket that an editor has left behind.
base::Result<std::optional<Claim>> ClaimPlace(const std::string& place);

// True when a process of this user is at the other end of the socket.
bool IsFromThisUser(int socket);

enum class Answer {
    Taken,  // and nothing was to be waited for
    Closed, // the texts were open and were closed
    Failed, // the running editor could not open them
    Ended,  // the running editor ended before the texts were closed
    Nobody  // no editor runs there, or it does not answer
};

// Asks the editor at that place. Waits until its texts are closed, when the request says so. An editor that starts just
// now, or does not answer, has 'patience' for the first answer. Any thread.
Answer AskRunning(const std::string& place, const OpenRequest& request, std::chrono::milliseconds patience);

} // namespace wren
