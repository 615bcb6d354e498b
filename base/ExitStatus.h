// The exit statuses of the programs, as listed in the manual pages.
#pragma once

namespace base::exit_status {

inline constexpr int kDone = 0;
inline constexpr int kNothing = 1;      // found or made nothing
inline constexpr int kUnusable = 2;     // wrong usage, or an unreadable file
inline constexpr int kNoTags = 3;       // no tags file applies to the place
inline constexpr int kUnavailable = 69; // EX_UNAVAILABLE of sysexits.h: no desktop editor, no display
inline constexpr int kNoThread = 71;    // EX_OSERR of sysexits.h

} // namespace base::exit_status
