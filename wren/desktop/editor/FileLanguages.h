// The other languages of a source tree: of makefiles, scripts, data and notes.
#pragma once

#include "wren/desktop/editor/EditorLook.h"

#include <span>
#include <string>
#include <string_view>

namespace wren {

struct StyleColour {
    int style; // of the lexer
    QColor EditorColours::*colour;
};

struct FileLanguage {
    const char* lexer; // Scintilla's name of it
    std::span<const StyleColour> colours;
    const char* words[4]; // the lexer's sets, from its first; null for none
};

// By the file's name, or by its first line when that names an interpreter. Null for C and its family, and for what is
// not known.
const FileLanguage* LanguageOf(const std::string& path, std::string_view beginning);

} // namespace wren
