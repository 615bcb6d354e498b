// Telling the user of a failure of the system that costs something and that nobody else reports.
#pragma once

#include <functional>
#include <string>

namespace vetch {

// Any thread, with any locks held. Not for each key stroke: the caller says a thing once.
void Complain(const std::string& text);

// What Complain() calls, on the complaining thread: it must be quick, call nothing of the framework's, and throw
// nothing. Null for standard error, as at first ("vetch: " and the text). Once this returns the former one is called no
// more.
void SetComplaintReporter(std::function<void(const std::string& text)> report);

} // namespace vetch
