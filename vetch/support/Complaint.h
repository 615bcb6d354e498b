// Reports system failures that cost the user something and that nothing else reports.
#pragma once

#include <functional>
#include <string>

namespace vetch {

// Any thread, with any locks held. Do not repeat the same report with each key stroke.
void Complain(const std::string& text);

// Complain() calls 'report' on the complaining thread. It must be quick, call nothing in the framework, and throw
// nothing. Null restores the default, which writes "vetch: " and the text to standard error. After the return the
// previous reporter is not called again.
void SetComplaintReporter(std::function<void(const std::string& text)> report);

} // namespace vetch
