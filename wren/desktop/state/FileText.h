// Files as texts.
#pragma once

#include "wren/desktop/state/FileMark.h"
#include "wren/text/TextEncoding.h"

#include <optional>
#include <string>

namespace wren {

struct FileText {
    DecodedText decoded;
    FileMark mark; // of the file that was read
};

// Reads a whole file; see DecodeAs() for 'expected'. Nullopt, with the reason in '*error', when it cannot be read.
std::optional<FileText> ReadFileText(const std::string& path, const TextEncoding& expected, std::string* error);

// The same, in that encoding and no other.
std::optional<FileText> ReadFileTextIn(const std::string& path, const TextEncoding& encoding, std::string* error);

} // namespace wren
