#include "wren/desktop/Complaints.h"

#include "vetch/support/Complaint.h"
#include "wren/desktop/GuiLoop.h"

#include <utility>

namespace wren {

Complaints::Complaints(std::function<void(const std::string&)> tell) : tell(std::move(tell))
{
    queue.SetWakeUp(&GuiLoop::Wake);
    vetch::SetComplaintReporter([this](const std::string& text) { queue.Add([this, text] { this->tell(text); }); });
}

Complaints::~Complaints()
{
    vetch::SetComplaintReporter(nullptr);
}

void Complaints::Take()
{
    queue.Drain();
}

} // namespace wren
