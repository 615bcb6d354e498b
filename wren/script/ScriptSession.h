// Answers a script's lines, one answer each.
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

    // Executes a line and waits for all its effects. Every line gets an answer, whatever its content.
    Json Answer(const std::string& line);

    // For line handlers.
    Document& NeedDocument(); // throws LineError when no document is open
    Stage& TheStage() { return stage; }
    Host& TheHost() { return stage.TheHost(); }

private:
    Json Carry(const Json& object);

    Stage& stage;
};

// Executes lines of one kind and adds to the answer. Checks all fields before it changes anything, and throws
// LineError.
using LineHandler = void (*)(ScriptSession& session, const Line& line, Json& answer);

// The handler of lines with 'name' in the field "do"; null when there is none.
LineHandler FindLineHandler(const std::string& name);

} // namespace wren
