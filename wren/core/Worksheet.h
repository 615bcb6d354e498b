// The Worksheet: a document of command lines that a user runs.
#pragma once

#include <string>

namespace wren {

class Document;
class Documents;

// While no document is open as the Worksheet, keeps added text for the next one. Document thread.
class Worksheet {
public:
    explicit Worksheet(Documents& documents) : documents(documents) {} // borrowed

    void Append(const std::string& text);
    std::string Text() const;
    // The directory in which its lines run: the one that a face chose, else that of its file, else the user's home.
    std::string Directory() const;
    void SetDirectory(const std::string& path) { directory = path; }

    void Opened(Document& document); // 'document' is the Worksheet from now on

private:
    Documents& documents;
    std::string waiting;
    std::string directory; // "" when none was chosen
};

// 'text' with "$WORKSHEET_DIR" expanded; other variables stay unchanged.
std::string ExpandVariables(const std::string& text, const Worksheet& worksheet);

} // namespace wren
