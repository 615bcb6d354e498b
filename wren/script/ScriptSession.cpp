#include "wren/script/ScriptSession.h"

#include "vetch/app/Loop.h"
#include "vetch/support/Clock.h"

#include <cstdio>

namespace wren {

namespace {

constexpr bigtime_t kClockAtStart = 1'000'000;
constexpr int kDeepest = 100; // values within values: far more than any line needs, far less than a stack holds

// A value that is no object for a line that is no JSON, or nested too deeply to be handled safely.
Json Parsed(const std::string& line)
{
    bool tooDeep = false;
    const auto keepShallow = [&tooDeep](int depth, Json::parse_event_t, Json&) {
        tooDeep = tooDeep || depth > kDeepest;
        return !tooDeep;
    };
    const Json value = Json::parse(line, keepShallow, false);
    return tooDeep ? Json() : value;
}

} // namespace

void ScriptFace::OpenMatch(const std::string& path, long line)
{
    log.Add(Json::array({"open", JsonText(path), line}));
}

void ScriptFace::Warn(const std::string& text)
{
    std::fprintf(stderr, "wren: %s\n", text.c_str());
}

Repeatable::Repeatable(vetch::Display& display)
{
    vetch::UseVirtualClock(kClockAtStart);
    vetch::SetTurns(true);
    vetch::SetDisplay(&display);
}

Repeatable::~Repeatable()
{
    vetch::SetDisplay(nullptr);
    vetch::SetTurns(false);
    vetch::UseRealClock();
}

ScriptSession::ScriptSession(PluginBundle& bundle, const std::string& settingsFile)
    : display(&log), repeatable(display), face(log), host(bundle, face, log, settingsFile)
{
    host.Start();
}

Json ScriptSession::Answer(const std::string& line)
{
    const Json object = Parsed(line);
    Json answer = object.is_object() ? Carry(object) : Json{{"ok", false}, {"error", "the line is not a JSON object"}};
    Settle();
    answer["log"] = log.Take();
    return answer;
}

Document& ScriptSession::NeedDocument()
{
    Document* document = host.Current();
    if (document == nullptr)
        throw LineError{"document is missing: none is open"};
    return *document;
}

void ScriptSession::Settle()
{
    vetch::Settle();
}

Json ScriptSession::Carry(const Json& object)
{
    Json answer = Json::object();
    if (object.contains("id"))
        answer["id"] = object["id"];
    answer["ok"] = true;
    try {
        const Line line(object);
        const LineHandler handler = FindLineHandler(line.Text("do"));
        if (handler == nullptr)
            throw line.Error("do", "is unknown: \"" + line.Text("do") + "\"");
        handler(*this, line, answer);
    } catch (const LineError& error) {
        answer["ok"] = false;
        answer["error"] = error.text;
    }
    return answer;
}

} // namespace wren
