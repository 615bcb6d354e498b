// What the client can do, from its "initialize".
#pragma once

#include "wren/lsp/protocol/Json.h"
#include "wren/lsp/session/Text.h"

#include <initializer_list>
#include <string>
#include <string_view>

namespace wren::lsp {

// Immutable; any thread.
class ClientAbilities {
public:
    ClientAbilities() = default;
    explicit ClientAbilities(Json capabilities); // "capabilities" of InitializeParams

    // A capability on its way, "textDocument/definition/linkSupport".
    bool Can(const std::string& way) const { return Says(capabilities, way); }
    // Whether a list of words there contains this one: ("textDocument/hover/contentFormat", "markdown").
    bool Lists(const std::string& way, const std::string& word) const;
    // The first word of the list that is among these; "" for none.
    std::string FirstOf(const std::string& way, std::initializer_list<std::string_view> words) const;

    lsp::Encoding Encoding() const { return encoding; }

private:
    Json capabilities;
    lsp::Encoding encoding = lsp::Encoding::Utf16;
};

} // namespace wren::lsp
