// The protocol's basic structures (Language Server Protocol 3.17, "Basic JSON Structures"), by their names there.
#pragma once

#include "wren/lsp/protocol/Json.h"

#include <compare>
#include <optional>
#include <string>
#include <vector>

namespace wren::lsp {

struct Position {
    unsigned line = 0;      // from 0
    unsigned character = 0; // from 0, in the units that were agreed on

    auto operator<=>(const Position&) const = default;
};

struct Range {
    Position start;
    Position end; // behind the last character

    bool operator==(const Range&) const = default;
};

struct Location {
    std::string uri;
    Range range;
};

struct LocationLink {
    Range originSelectionRange;
    std::string targetUri;
    Range targetRange;
    Range targetSelectionRange;
};

struct TextDocumentPositionParams {
    std::string uri;
    Position position;
};

// Parameters with a text only: documentSymbol, foldingRange.
struct TextDocumentParams {
    std::string uri;
};

// Throw a Failure. Numbers beyond an int's range are refused.
void from_json(const Json& json, Position& position);
void from_json(const Json& json, Range& range);
void from_json(const Json& json, TextDocumentPositionParams& params);
void from_json(const Json& json, TextDocumentParams& params);

void to_json(Json& json, const Position& position);
void to_json(Json& json, const Range& range);
void to_json(Json& json, const Location& location);
void to_json(Json& json, const LocationLink& link);

} // namespace wren::lsp
