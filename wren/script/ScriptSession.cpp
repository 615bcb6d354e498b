#include "wren/script/ScriptSession.h"

namespace wren {

namespace {

constexpr int kDeepest = 100; // levels of nesting: more than any line needs, safe for the stack

// Returns a value that is not an object when the line is not JSON, or is nested too deeply to be handled safely.
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

Json ScriptSession::Answer(const std::string& line)
{
    const Json object = Parsed(line);
    Json answer = object.is_object() ? Carry(object) : Json{{"ok", false}, {"error", "the line is not a JSON object"}};
    stage.Settle();
    answer["log"] = stage.Log().Take();
    return answer;
}

Document& ScriptSession::NeedDocument()
{
    Document* document = TheHost().Current();
    if (document == nullptr)
        throw LineError{"document is missing: none is open"};
    return *document;
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
