// What an answer says that depends on the screen it was given in front of.
#pragma once

#include <nlohmann/json.hpp>

// Left out, on both sides of a comparison: where windows are and how large they may be (the fields "frame" and "limits"
// of a state's windows; "move" in logs); where a menu pops up (its place in "popup"); the name of what was undone,
// which no screen shows; and the clock of a state, since a user needs a moment to answer an alert.
void LeaveOutPixels(nlohmann::ordered_json& answer);
