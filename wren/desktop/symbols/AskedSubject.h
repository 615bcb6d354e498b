// A text that is asked about, with all that answers questions about it.
#pragma once

#include "resolve/ParsedText.h"
#include "resolve/Resolver.h"
#include "wren/desktop/symbols/AskedText.h"
#include "wren/desktop/symbols/SymbolEngine.h"
#include "wren/symbols/WorkspaceSources.h"

#include <memory>
#include <optional>
#include <string>

namespace wren {

// Belongs to one question, on its thread; borrows both.
class AskedSubject {
public:
    AskedSubject(const AskedText& asked, const Question& question);

    const resolve::Resolver& Resolver() const { return resolver; }
    const symbols::Snapshot& Snapshot() const { return *snapshot; }
    symbols::Workspace& Workspace() const { return workspace; }
    resolve::Place Place() const { return {path, *asked.text, asked.offset}; }
    symbols::Limits Limits(size_t results) const { return {results, &question.cancel}; }
    resolve::ParsedTextPointer Parsed() const; // the text's tokens and symbols

    // Of any file, by its path in the index; nullopt when it cannot be read.
    std::optional<std::string> TextOf(const std::string& pathInIndex) const;
    std::string AbsolutePath(const std::string& pathInIndex) const;

private:
    static std::shared_ptr<Project> Settled(const AskedText& asked, const Question& question);

    const AskedText& asked;
    const Question& question;
    const std::shared_ptr<Project> project;
    symbols::Workspace& workspace;
    const std::string path; // as in the index
    const symbols::SnapshotPointer snapshot;
    const WorkspaceSources sources;
    const resolve::Resolver resolver;
};

} // namespace wren
