// What the palette offers: symbols, files, the symbols of a text, or the texts that are open.
#pragma once

#include "tagging/ParsedSource.h"

#include <string>
#include <vector>

namespace wren {

struct PaletteItem {
    std::string name;                // the letters that were typed are in it
    std::vector<unsigned> positions; // of those letters, bytes from 0
    std::string detail;              // the scope, or a file's directory
    std::string where;               // for people: "fs/inode.c:12"
    std::string path;                // absolute
    long line = 0;                   // from 1; 0 for a whole file
    long endLine = 0;                // of its body; 0 when unknown
    tagging::SymbolKind kind = tagging::SymbolKind::None;
    int depth = 0;     // of a symbol in its text
    long document = 0; // of an open text
};

} // namespace wren
