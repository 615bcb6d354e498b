// Questions about what a name says where the user looks at it.
#pragma once

#include "wren/desktop/symbols/AskedText.h"
#include "wren/desktop/symbols/SymbolEngine.h"
#include "wren/symbols/CallHelp.h"
#include "wren/symbols/MeaningCard.h"

#include <QString>

#include <optional>

namespace wren {

// These block; they are for a question's thread.
std::optional<MeaningCard> MeaningAt(const AskedText& asked, const Question& question);
std::optional<CallHelp> CallAt(const AskedText& asked, const Question& question);

// As rich text; what a source says is text in it and nothing else.
QString RichTextOf(const MeaningCard& card);
QString RichTextOf(const CallHelp& help);

} // namespace wren
