// Questions to the user: alerts and menus, which wait for the answer, and panels for files, which do not.
#pragma once

#include "vetch/display/Display.h"

#include <optional>

class QFileDialog;
class QWidget;

namespace wren {

struct ModifierKeys;

// Both run an event loop of their own. GUI thread.
long AskAlert(const vetch::AlertDescription& alert, QWidget* parent);
std::optional<long> AskMenu(const vetch::MenuDescription& menu, const ModifierKeys& keys, QWidget* parent);

// Shows the panel at once and returns. The panel posts its answer and deletes itself when the user is done; one that is
// deleted before posts nothing. GUI thread.
QFileDialog* OpenFilePanel(const vetch::PanelDescription& panel, QWidget* parent);

} // namespace wren
