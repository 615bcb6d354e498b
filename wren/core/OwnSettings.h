// The editor's own settings, in the same file as the plug-in's.
#pragma once

#include <string>
#include <vector>

namespace wren {

// Implemented by faces with their own settings. Document thread.
class OwnSettings {
public:
    virtual ~OwnSettings() = default;

    virtual std::vector<std::string> Names() const = 0;

    // Reads a stored line with one of Names(). False, with the reason in '*error', when its value is invalid; the
    // default then applies, and the line is stored unchanged until the user chooses a value.
    virtual bool Take(const std::string& line, std::string* error) = 0;

    virtual std::vector<std::string> Lines() const = 0; // to be stored, each without its line break
};

} // namespace wren
