// The text that a request is about, with all that answers questions about it.
#pragma once

#include "resolve/Resolver.h"
#include "symbols/store/Snapshot.h"
#include "wren/lsp/session/RequestContext.h"
#include "wren/symbols/WorkspaceSources.h"

#include <map>
#include <memory>
#include <optional>
#include <string>

namespace wren::lsp {

// Belongs to one request, on one worker.
class Subject {
public:
    // An open text, or a file that is read. Throws InvalidParams, with the name, when there is none.
    Subject(const RequestContext& context, const std::string& uri);

    const std::string& Uri() const { return uri; }
    const std::string& Path() const { return path; } // as in the index
    const lsp::Text& Text() const { return *text; }
    bool IsSource() const { return isSource; } // of a language that is understood; answers for others are empty
    lsp::Encoding Encoding() const { return context.client.Encoding(); }
    symbols::Limits LimitsOf(size_t results) const { return {results, &context.cancel}; }

    const symbols::Snapshot& Snapshot() const { return *snapshot; }
    const resolve::Resolver& Resolver() const { return resolver; }
    resolve::Place PlaceAt(Position position) const; // borrows the text
    resolve::ParsedTextPointer Parsed() const;       // the text's tokens and symbols
    symbols::Workspace& Workspace() const { return project->Workspace(); }

    // Of any file, by its path in the index: the open text, or the file as it is now; null when it cannot be read.
    TextPointer TextOf(const std::string& pathInIndex) const;
    std::string UriOf(const std::string& pathInIndex) const; // of an open text, as the client wrote it

private:
    const RequestContext& context;
    std::string uri;
    std::string absolute;
    TextPointer text;
    std::optional<tagging::Language> language; // that the client says
    bool isSource = true;
    std::shared_ptr<Project> project;
    std::string path;
    symbols::SnapshotPointer snapshot;
    WorkspaceSources sources;
    resolve::Resolver resolver;
    mutable std::map<std::string, TextPointer> texts; // read for this request
};

} // namespace wren::lsp
