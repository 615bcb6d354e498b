// Parses the plug-in's command lines for the files that they write.
#pragma once

#include <optional>
#include <string>

namespace wren {

// A request is a line that makes a temporary file, an optional second one that appends to it, and one that moves it
// into place: generate/TagTemplates.h.
struct TagsLine {
    enum class Kind { Make, Append, Move };

    Kind kind;
    std::string unfinished; // the temporary file, absolute
    std::string file;       // the tags file that it replaces
};

// nullopt for a line of another form. "~/" is 'home'.
std::optional<TagsLine> ReadTagsLine(const std::string& command, const std::string& home);

// Whether the line only appends the tags of a directory that does not exist. It would only print an error.
bool AppendsNothing(const std::string& command);

} // namespace wren
