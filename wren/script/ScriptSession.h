// A conversation with a script: a line in, an answer out.
#pragma once

#include "wren/core/Host.h"
#include "wren/script/Line.h"
#include "wren/script/ScriptLog.h"
#include "wren/script/Stage.h"

#include <string>

namespace wren {

// Document thread.
class ScriptSession {
public:
    explicit ScriptSession(Stage& stage) : stage(stage) {} // borrowed

    // Answers a line when everything that it set off has happened. Whatever the line holds, there is an answer.
    Json Answer(const std::string& line);

    // For those who carry out the lines.
    Document& NeedDocument(); // throws LineError when no document is open
    Stage& TheStage() { return stage; }
    Host& TheHost() { return stage.TheHost(); }

private:
    Json Carry(const Json& object);

    Stage& stage;
};

// What carries out lines of one kind. It checks all fields before it changes anything, and throws LineError; it adds to
// the answer.
using LineHandler = void (*)(ScriptSession& session, const Line& line, Json& answer);

// The handler of lines whose field "do" is 'name'; null when there is none.
LineHandler FindLineHandler(const std::string& name);

} // namespace wren
