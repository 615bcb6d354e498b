// The command lines with which the plug-in makes tags, read for what they write.
#pragma once

#include <optional>
#include <string>

namespace wren {

// A request is one line that makes a temporary file, perhaps a second one that appends to it, and one that moves it to
// its place: generate/TagTemplates.h.
struct TagsLine {
    enum class Kind { Make, Append, Move };

    Kind kind;
    std::string unfinished; // the temporary file, absolute
    std::string file;       // the tags file whose place it takes
};

// Nothing for a line of another form. "~/" is 'home'.
std::optional<TagsLine> ReadTagsLine(const std::string& command, const std::string& home);

// Whether the line would only append the tags of a directory that does not exist: it does nothing then, but complain.
bool AppendsNothing(const std::string& command);

} // namespace wren
