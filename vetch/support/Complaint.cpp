#include "vetch/support/Complaint.h"

#include <cstdio>
#include <mutex>
#include <utility>

namespace vetch {

namespace {

struct Reporter {
    std::mutex mutex; // a leaf, except for locks that the reporter takes
    std::function<void(const std::string&)> report;
};

// Never destroyed: a thread may complain while the process ends.
Reporter& TheReporter()
{
    static Reporter* const reporter = new Reporter;
    return *reporter;
}

} // namespace

void Complain(const std::string& text)
{
    Reporter& reporter = TheReporter();
    const std::lock_guard guard(reporter.mutex);
    if (reporter.report)
        reporter.report(text);
    else
        std::fprintf(stderr, "vetch: %s\n", text.c_str());
}

void SetComplaintReporter(std::function<void(const std::string&)> report)
{
    Reporter& reporter = TheReporter();
    const std::lock_guard guard(reporter.mutex);
    reporter.report = std::move(report);
}

} // namespace vetch
