// What a start of the editor asks of the editor that runs already.
#pragma once

#include "base/Result.h"
#include "wren/text/Place.h"

#include <string>
#include <string_view>
#include <vector>

namespace wren {

struct OpenRequest {
    std::vector<Place> places; // absolute paths; none only raises the window
    bool waits = false;        // until the texts are closed
    std::string activation;    // the token with which a desktop lets the window come forward; "" for none

    static constexpr size_t kMostBytes = 4 << 20; // of its form; more than a command line can hold
};

// The form in which a request goes through the socket. It ends with kEndOfRequest, which it contains nowhere else.
std::string FormOf(const OpenRequest& request);
inline constexpr std::string_view kEndOfRequest("\0\n\0", 3);

// A request from its whole form, which may be anything: an error for what is not one.
base::Result<OpenRequest> RequestFrom(std::string_view form);

// The lines that the running editor answers.
inline constexpr std::string_view kTaken = "taken\n";   // the request was understood and will be done
inline constexpr std::string_view kClosed = "closed\n"; // the texts were closed
inline constexpr std::string_view kFailed = "failed\n"; // the request was refused, or a text could not be opened

} // namespace wren
