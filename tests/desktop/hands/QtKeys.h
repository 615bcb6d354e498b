// The keys of scripts as Qt's.
#pragma once

#include "vetch/support/Types.h"

#include <Qt>

#include <string>

class QWidget;

Qt::KeyboardModifiers QtModifiers(uint32 modifiers); // with the editor's default keys for them

// 'key' is one character or a key's name, as scripts have it.
void ClickKey(QWidget& widget, const std::string& key, uint32 modifiers);
