// Asking the user for files or directories, beside everything else.
#pragma once

#include "vetch/display/Display.h"

class QFileDialog;
class QWidget;

namespace wren {

// Shown at once. It posts its answer and deletes itself when the user is done; deleted before that, it posts nothing.
// GUI thread.
QFileDialog* OpenFilePanel(const vetch::PanelDescription& panel, QWidget* parent);

} // namespace wren
