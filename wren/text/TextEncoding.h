// How the characters of a file are bytes.
#pragma once

#include "base/Result.h"

#include <string>
#include <string_view>
#include <vector>

namespace wren {

// The editor's texts are UTF-8. A file may have another encoding, and a byte order mark (U+FEFF) before its text, which
// is not part of the text (https://www.unicode.org/faq/utf_bom.html).
struct TextEncoding {
    std::string name = "UTF-8"; // as iconv knows it; "" when the file is not UTF-8 and its bytes are the text
    bool hasMark = false;

    bool operator==(const TextEncoding&) const = default;
};

struct DecodedText {
    std::string text;
    TextEncoding encoding;
};

// Those that a person may choose, each once, the usual ones first.
const std::vector<TextEncoding>& Encodings();

// For people and for files of our own: "UTF-16 LE", "UTF-8 with BOM".
std::string LabelOf(const TextEncoding& encoding);
TextEncoding EncodingLabelled(std::string_view label); // UTF-8 for a label that is not known

// By a mark, by bytes that are not UTF-8, and by the NUL bytes of Latin letters in UTF-16 without a mark.
TextEncoding DetectEncoding(std::string_view bytes);

// For a text whose bytes are those of its file: UTF-8, or "" when some are not.
TextEncoding PlainEncodingOf(std::string_view bytes);

// The text without its mark; the result's 'hasMark' says whether there was one. Fails when the bytes are not of that
// encoding, and when the text could not be encoded into the same bytes again. Only UTF-8 takes all bytes: the result's
// 'name' is "" when some are not UTF-8 and no mark says that they should be.
base::Result<DecodedText> Decode(std::string bytes, const TextEncoding& encoding);

// A mark in the file counts first, then letters in UTF-8 that are not ASCII, then the expected encoding, and then
// DetectEncoding(). What can be decoded in none of these is a text byte by byte.
DecodedText DecodeAs(std::string bytes, const TextEncoding& expected);

// Fails when a character is not in that encoding; the error names its line.
base::Result<std::string> Encode(std::string text, const TextEncoding& encoding);

} // namespace wren
