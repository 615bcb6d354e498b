// The Worksheet: a document of command lines that a user runs.
#pragma once

#include <string>

namespace wren {

class Document;
class Documents;

// While no document is open as the Worksheet, what is added waits here for the one that will be. Document thread.
class Worksheet {
public:
    explicit Worksheet(Documents& documents) : documents(documents) {} // borrowed

    void Append(const std::string& text);
    std::string Text() const;
    // Where its lines run: of its file, and the user's home while there is none, unless a face has chosen another.
    std::string Directory() const;
    void SetDirectory(const std::string& path) { directory = path; }

    void Opened(Document& document); // 'document' is the Worksheet from now on

private:
    Documents& documents;
    std::string waiting;
    std::string directory; // "" when none was chosen
};

// 'text' with "$WORKSHEET_DIR" expanded; a variable by another name stays as it is.
std::string ExpandVariables(const std::string& text, const Worksheet& worksheet);

} // namespace wren
