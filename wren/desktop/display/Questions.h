// The questions that a user answers before anything else goes on.
#pragma once

#include "vetch/display/Display.h"

#include <optional>

class QWidget;

namespace wren {

struct ModifierKeys;

// Both run an event loop of their own. GUI thread.
long AskAlert(const vetch::AlertDescription& alert, QWidget* parent);
std::optional<long> AskMenu(const vetch::MenuDescription& menu, const ModifierKeys& keys, QWidget* parent);

} // namespace wren
