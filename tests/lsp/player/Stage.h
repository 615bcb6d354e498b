// The tree in which a session is played: files, and places in them.
#pragma once

#include "tests/support/TempDirectory.h"

#include <map>
#include <nlohmann/json.hpp>
#include <string>

// In texts, "‹name›" marks a place and is not part of the text.
class Stage {
public:
    const std::string& Root() const { return root; }
    std::string Home() const { return scratch / "home"; }

    void Write(const std::string& file, const std::string& textWithMarks);
    // As written, without marks. Throws when there is no such file.
    const std::string& Text(const std::string& file) const;
    // {"textDocument": ..., "position": ...} of "@mark"; {"textDocument": ...} of a file.
    nlohmann::json Subject(const std::string& word) const;

    // Replaces, in all strings: "$uri" by the root's URI, "$root" by its path, "$home" by that of the home directory. A
    // string "@mark" becomes that position, "@mark..other" that range, and "@file" is the file's text when there is no
    // such mark.
    nlohmann::json Filled(const nlohmann::json& value) const;
    std::string Filled(const std::string& text) const;

private:
    nlohmann::json Place(const std::string& name) const;

    struct Mark {
        std::string file;
        unsigned line = 0;
        unsigned character = 0; // in units of UTF-16
    };
    const TempDirectory scratch;
    const std::string root = scratch / "tree";
    std::map<std::string, std::string> texts;
    std::map<std::string, Mark> marks;
};
