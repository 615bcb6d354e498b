// A function or a class as both hierarchies show it.
#pragma once

#include "wren/lsp/features/Hierarchies.h"
#include "wren/lsp/session/Subject.h"

#include <optional>
#include <vector>

namespace wren::lsp {

// CallHierarchyItem and TypeHierarchyItem have the same members. Nullopt when the file cannot be read.
std::optional<Json> HierarchyItem(const symbols::Symbol& symbol, const std::string& path, const Subject& subject);

// A file, for what is in no declaration. 'path' as in the index.
Json FileItem(const std::string& path, const Subject& subject);

// Items of what the place means most likely, of these kinds; definitions if there are any.
Json HierarchyItemsAt(Position position, bool (*isWanted)(tagging::SymbolKind kind), const Subject& subject);

} // namespace wren::lsp
