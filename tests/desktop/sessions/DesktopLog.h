// The log of a session at the desktop, and what the plug-in answered to the events that the user caused.
#pragma once

#include "wren/script/ScriptLog.h"

#include <map>

class DesktopLog : public wren::ScriptLog {
public:
    void Forget() { answers.clear(); }
    long AnswerTo(long event) const // the first since Forget(); 0, nothing handled, when it was not asked
    {
        const auto found = answers.find(event);
        return found == answers.end() ? 0 : found->second;
    }

    void Changed(const wren::HostChange& change) override
    {
        if (const auto* answered = std::get_if<wren::EventAnswered>(&change))
            answers.try_emplace(answered->event, answered->returned);
        ScriptLog::Changed(change);
    }

private:
    std::map<long, long> answers;
};
