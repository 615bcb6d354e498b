// What a program that answers questions about a file holds: the index of its project, that of the system's headers, and
// the texts that are open.
#pragma once

#include "symbols/Index.h"
#include "tagging/SourceParser.h"

#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace symbols {

struct WorkspaceOptions {
    std::string root;       // absolute
    std::string cache;      // the directory of all indexes; "" for the user's
    bool withSystem = true; // the headers of the system as well
    tagging::Settings tagging;
};

// Any thread. One for each root.
class Workspace {
public:
    explicit Workspace(WorkspaceOptions options);
    ~Workspace();

    Index& Project();
    Index* System(); // null without the system's headers

    // Both indexes and the open texts as one; never null. Does not wait.
    SnapshotPointer Current() const;

    // The path of a file as in File::path, from an absolute one, and the reverse.
    std::string PathInIndex(std::string_view absolute) const;
    std::string AbsolutePath(const File& file) const;

    // The open text, or the file's content; nullopt when it cannot be read. 'path' as in File::path.
    std::optional<std::string> Read(const std::string& path) const;

    // A text that an editor holds, by its absolute path; replaces an earlier one. Its symbols are in Current() when
    // this returns, also after an error of the parser, which leaves the text without symbols.
    base::Result<void> SetOpenText(const std::string& path, std::string text);
    void CloseText(const std::string& path);

    tagging::TextParser& Parser(); // for texts, with their locals

private:
    struct Contents;
    std::unique_ptr<Contents> contents;
};

} // namespace symbols
