// Tells the framework's answers to the user's edits from its own changes of a text.
#pragma once

#include "wren/desktop/display/UserPosts.h"

#include <deque>
#include <optional>
#include <string>

namespace wren {

// The framework answers each edit with the text and selection that it has then. A user who types on meanwhile must not
// be thrown back to that; so as long as edits wait for their answers, what the framework says is outdated, and its
// answer to the last of them brings nothing new. What it says otherwise is its own change, and is shown.
class EditEchoes {
public:
    void Posted(const TextEdit& edit); // and somebody was there to hear it

    bool IsNewText(const std::string& text);
    bool IsNewSelection(long start, long end); // asked for what comes after that text

private:
    std::deque<TextEdit> waiting;
    std::optional<TextEdit> answered; // the last one, whose selection is still to come
};

} // namespace wren
