// What the programs say by their ends, as the manual pages list it.
#pragma once

namespace base::exit_status {

inline constexpr int kDone = 0;
inline constexpr int kNothing = 1;      // nothing was found, or could be made
inline constexpr int kUnusable = 2;     // wrong usage, or an unreadable file
inline constexpr int kNoTags = 3;       // no tags file serves the place
inline constexpr int kUnavailable = 69; // EX_UNAVAILABLE of sysexits.h: no desktop editor, no display
inline constexpr int kNoThread = 71;    // EX_OSERR of sysexits.h

} // namespace base::exit_status
