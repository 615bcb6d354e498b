// Lines that change the plug-in's environment, and the one that reads its state.
#include "wren/headless/Keyboard.h"
#include "wren/script/LineHandlers.h"
#include "wren/script/StateJson.h"

#include "vetch/support/Clock.h"

#include <chrono>
#include <limits>

namespace wren::lines {

namespace {

constexpr long kSettleLimit = 60'000; // milliseconds
constexpr long kLongestLimit = 24 * 60 * 60 * 1000;

} // namespace

void Clock(ScriptSession&, const Line& line, Json&)
{
    const long advance = line.Integer("advance");
    if (advance < 0)
        throw line.Error("advance", "is negative: the clock never goes back");
    if (advance > std::numeric_limits<bigtime_t>::max() - system_time())
        throw line.Error("advance", "is too large: the clock ends before that");
    vetch::AdvanceVirtualClock(advance);
}

void Screen(ScriptSession& session, const Line& line, Json&)
{
    const std::vector<float> frame = line.Numbers("frame", 4);
    session.TheStage().SetScreen({frame[0], frame[1], frame[2], frame[3]});
}

void Shortcut(ScriptSession& session, const Line& line, Json&)
{
    const std::string command = line.Text("command");
    const std::string key = line.Text("key");
    const uint32 modifiers = line.OptionalModifiers();
    const std::optional<char> code = key.empty() ? '\0' : CodeOfKey(key);
    if (!code)
        throw line.Error("key", "is no key that a command can be bound to: \"" + key + "\"");
    session.TheHost().Commands().Bind(command, {*code, modifiers});
}

void Pending(ScriptSession& session, const Line& line, Json&)
{
    session.TheStage().SetInputPending(line.Flag("on"));
}

void Settle(ScriptSession& session, const Line& line, Json&)
{
    const long limit = line.OptionalInteger("timeout").value_or(kSettleLimit);
    if (limit < 0 || limit > kLongestLimit)
        throw line.Error("timeout", "is not between 0 and a day");
    if (!session.TheHost().WaitForBackground(std::chrono::milliseconds(limit)))
        throw line.Error("timeout", "was reached: something is still at work after " + std::to_string(limit) + " ms");
}

void State(ScriptSession& session, const Line&, Json& answer)
{
    answer["state"] = StateJson(session.TheHost(), session.TheStage().Windows());
}

} // namespace wren::lines
