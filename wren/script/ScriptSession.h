// A conversation with a script: a line in, an answer out.
#pragma once

#include "wren/core/Host.h"
#include "wren/script/GridFace.h"
#include "wren/script/Line.h"
#include "wren/script/ScriptDisplay.h"
#include "wren/script/ScriptLog.h"

#include <string>

namespace wren {

class PluginBundle;

// The face of the script: it opens nothing, and says so in the log.
class ScriptFace : public GridFace {
public:
    explicit ScriptFace(ScriptLog& log) : log(log) {}

    void OpenMatch(const std::string& path, long line) override;
    void Warn(const std::string& text) override; // on standard error

private:
    ScriptLog& log;
};

// Readies the framework for sessions that go the same way every time, for as long as it lives: the display is used, the
// clock is a virtual one, and loopers take turns.
class Repeatable {
public:
    explicit Repeatable(vetch::Display& display); // borrowed
    ~Repeatable();
    Repeatable(const Repeatable&) = delete;
    Repeatable& operator=(const Repeatable&) = delete;
};

// Makes everything that a host without a display needs. One at a time in a process; document thread, which is the one that
// makes it.
class ScriptSession {
public:
    ScriptSession(PluginBundle& bundle, const std::string& settingsFile); // borrows the bundle

    // Answers a line when everything that it set off has happened. Whatever the line holds, there is an answer.
    Json Answer(const std::string& line);

    // For those who carry out the lines.
    Document& NeedDocument(); // throws LineError when no document is open
    Host& TheHost() { return host; }
    ScriptDisplay& Display() { return display; }
    GridFace& TheFace() { return face; }
    void Settle();

private:
    Json Carry(const Json& object);

    ScriptLog log;
    ScriptDisplay display;
    const Repeatable repeatable;
    ScriptFace face;
    Host host;
};

// What carries out lines of one kind. It checks all fields before it changes anything, and throws LineError; it adds to
// the answer.
using LineHandler = void (*)(ScriptSession& session, const Line& line, Json& answer);

// The handler of lines whose field "do" is 'name'; null when there is none.
LineHandler FindLineHandler(const std::string& name);

} // namespace wren
