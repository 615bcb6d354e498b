#include "wren/desktop/Warnings.h"

#include "vetch/support/Complaint.h"
#include "wren/desktop/GuiLoop.h"
#include "wren/desktop/NoticeBar.h"

#include <utility>

namespace wren {

Warnings::Warnings()
{
    news.SetWakeUp(&GuiLoop::Wake);
    vetch::SetComplaintReporter([this](const std::string& text) { news.Add(text); });
}

Warnings::~Warnings()
{
    vetch::SetComplaintReporter(nullptr);
}

void Warnings::Tell(const QString& text)
{
    if (bar != nullptr)
        bar->Tell(text);
    else
        held.append(text);
}

void Warnings::ShowIn(NoticeBar& notices)
{
    bar = &notices;
    bar->TellAll(std::exchange(held, {}));
}

void Warnings::TakeNews()
{
    news.Drain([this](const std::string& text) { Tell(QString::fromStdString(text)); });
}

} // namespace wren
