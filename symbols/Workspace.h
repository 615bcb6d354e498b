// What a program that answers questions about a file holds: the index of its project, that of the system's headers, and
// the texts that are open.
#pragma once

#include "base/CancelToken.h"
#include "symbols/Index.h"
#include "tagging/SourceParser.h"

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace symbols {

struct WorkspaceOptions {
    std::string root;        // absolute; "" for files that have none: then all paths are absolute, and no project
    std::string cache;       // the directory of all indexes; "" for the user's
    bool withSystem = true;  // the headers of the system as well
    bool withProject = true; // the index of the root
    tagging::Settings tagging;
};

// Any thread. One for each root.
//
// A text without a file, such as "untitled:Untitled-1", has a path that is not absolute. It knows only itself, and no
// other text knows it.
class Workspace {
public:
    explicit Workspace(WorkspaceOptions options);
    ~Workspace();

    Index* Project(); // null without the project, or without a root
    Index* System();  // null without the system's headers

    // Both indexes and the open texts as one; never null. Does not wait.
    SnapshotPointer Current() const;
    // What a question about the file may see: Current(), or for a text without a file that text alone. 'path' as for
    // SetOpenText or as in File::path.
    SnapshotPointer CurrentFor(const std::string& path) const;

    // The path of a file as in File::path, from an absolute one, and the reverse. Paths of texts without a file stay.
    std::string PathInIndex(std::string_view absolute) const;
    std::string AbsolutePath(const File& file) const;

    // The open text, or the file's content; nullopt when it cannot be read. 'path' as in File::path.
    std::optional<std::string> Read(const std::string& path) const;

    // A text that an editor holds, by its absolute path; replaces an earlier one. Its symbols are in Current() when
    // this returns, also after an error of the parser, which leaves the text without symbols. 'language' as for
    // tagging::TextParser::Parse: questions about the text need the same one.
    base::Result<void> SetOpenText(const std::string& path, std::string text,
                                   std::optional<tagging::Language> language = std::nullopt);
    // The same for a text that is parsed already, without locals.
    void SetOpenText(const std::string& path, std::string text, const tagging::ParsedSource& parsed);
    void CloseText(const std::string& path);

    // Reads what the text or file includes, unless an index has it: Current() then has it until an index does. For
    // texts that are asked about before their index is complete, or outside of the root; any other costs nothing.
    // 'path' as for SetOpenText. Ends after a second, two hundred files or 20 MB, and the next call reads on from
    // there; Current() gets the first ones meanwhile. Returns whether Current() has changed. Blocks; one load at a
    // time.
    bool LoadIncluded(const std::string& path, const base::CancelToken& cancel);

    // Tags files, absolute, of any tool and in any order. Current() has their symbols, but for those that an index, an
    // open text or an included file has in the same file by the same name. All are read into memory. Returns a sentence
    // for each that cannot be used; the others count. Blocks; one call at a time.
    using TagsProblems = std::vector<std::pair<std::string, std::string>>; // path, sentence
    TagsProblems SetTagsFiles(std::vector<std::string> paths, const base::CancelToken& cancel);
    // Reads them again if one has changed on the disk.
    TagsProblems RefreshTagsFiles(const base::CancelToken& cancel);

    tagging::TextParser& Parser(); // for texts, with their locals

private:
    struct Contents;
    std::unique_ptr<Contents> contents;
};

} // namespace symbols
