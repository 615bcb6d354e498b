// The reason why a run fails, in words for the user.
#pragma once

#include <cerrno>
#include <cstring>
#include <stdexcept>
#include <string>

namespace cplustags {

// Thrown by the parts of a run, and reported by MakeTags(). Destructors undo what was begun.
struct Failure : std::runtime_error {
    using std::runtime_error::runtime_error;
};

// For a system call that has just failed.
inline Failure SystemFailure(const std::string& what)
{
    return Failure(what + ": " + std::strerror(errno));
}

} // namespace cplustags
