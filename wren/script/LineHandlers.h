// The handlers of a script's lines, one for each kind.
#pragma once

#include "wren/script/ScriptSession.h"

namespace wren::lines {

// Documents
void OpenDocument(ScriptSession&, const Line&, Json& answer);
void SetText(ScriptSession&, const Line&, Json& answer);
void Select(ScriptSession&, const Line&, Json& answer);
void Undo(ScriptSession&, const Line&, Json& answer);

// A user's actions in a document
void Key(ScriptSession&, const Line&, Json& answer);
void Type(ScriptSession&, const Line&, Json& answer);
void Click(ScriptSession&, const Line&, Json& answer);
void Button(ScriptSession&, const Line&, Json& answer);
void PopUp(ScriptSession&, const Line&, Json& answer);
void Menu(ScriptSession&, const Line&, Json& answer);
void Command(ScriptSession&, const Line&, Json& answer);

// A user's actions in the plug-in's windows
void QueueAnswer(ScriptSession&, const Line&, Json& answer);
void Invoke(ScriptSession&, const Line&, Json& answer);
void Mouse(ScriptSession&, const Line&, Json& answer);
void Press(ScriptSession&, const Line&, Json& answer);
void Enter(ScriptSession&, const Line&, Json& answer);
void Check(ScriptSession&, const Line&, Json& answer);
void Close(ScriptSession&, const Line&, Json& answer);
void Panel(ScriptSession&, const Line&, Json& answer);

// Events and settings
void RawEvent(ScriptSession&, const Line&, Json& answer);
void Setting(ScriptSession&, const Line&, Json& answer);
void Save(ScriptSession&, const Line&, Json& answer);

// The environment
void Clock(ScriptSession&, const Line&, Json& answer);
void Screen(ScriptSession&, const Line&, Json& answer);
void Shortcut(ScriptSession&, const Line&, Json& answer);
void Pending(ScriptSession&, const Line&, Json& answer);
void Settle(ScriptSession&, const Line&, Json& answer);
void State(ScriptSession&, const Line&, Json& answer);

} // namespace wren::lines
