// A symbol's name as a document in which an editor's lookup finds it.
#pragma once

#include <optional>
#include <string>

namespace wren {

struct SymbolText {
    std::string text;
    long caret = 0;
};

// A name, qualified or not, is a document of its own with the caret behind it. A selector ("putBook:onLevel:") is
// written as the message send that an editor would find it in, with the caret in its first piece. Nothing for a text
// that is neither: an operator or a destructor, say, which cannot be pointed at in a document but can be typed into the
// dialog.
std::optional<SymbolText> TextForSymbol(const std::string& symbol);

} // namespace wren
