// The settings that are the editor's own, beside the plug-in's in one file.
#pragma once

#include <string>
#include <vector>

namespace wren {

// Implemented by faces that have settings of their own. Document thread.
class OwnSettings {
public:
    virtual ~OwnSettings() = default;

    virtual std::vector<std::string> Names() const = 0;

    // A stored line with one of Names(). False, with the reason in '*error', when its value makes no sense; the default
    // is used then, and the line is written back as it was until the user chooses a value.
    virtual bool Take(const std::string& line, std::string* error) = 0;

    virtual std::vector<std::string> Lines() const = 0; // to be stored, each without its line break
};

} // namespace wren
