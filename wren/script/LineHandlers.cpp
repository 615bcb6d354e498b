#include "wren/script/LineHandlers.h"

#include <map>

namespace wren {

LineHandler FindLineHandler(const std::string& name)
{
    static const std::map<std::string, LineHandler> kHandlers = {
        {"document", lines::OpenDocument},
        {"text", lines::SetText},
        {"select", lines::Select},
        {"undo", lines::Undo},
        {"key", lines::Key},
        {"type", lines::Type},
        {"click", lines::Click},
        {"button", lines::Button},
        {"popup", lines::PopUp},
        {"menu", lines::Menu},
        {"command", lines::Command},
        {"answer", lines::QueueAnswer},
        {"invoke", lines::Invoke},
        {"mouse", lines::Mouse},
        {"press", lines::Press},
        {"enter", lines::Enter},
        {"check", lines::Check},
        {"close", lines::Close},
        {"panel", lines::Panel},
        {"event", lines::RawEvent},
        {"setting", lines::Setting},
        {"save", lines::Save},
        {"clock", lines::Clock},
        {"screen", lines::Screen},
        {"shortcut", lines::Shortcut},
        {"pending", lines::Pending},
        {"settle", lines::Settle},
        {"state", lines::State},
    };
    const auto found = kHandlers.find(name);
    return found == kHandlers.end() ? nullptr : found->second;
}

} // namespace wren
