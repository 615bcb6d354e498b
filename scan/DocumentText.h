// What every scanner asks of a document before and after it scans.
#pragma once

#include <string>

class PluginInterface;

namespace scan {

// Whether a selection is small enough to mean a name: on one line, and at most 1024 long.
bool IsScannable(PluginInterface* pi, long selStart, long selEnd);

// The text of [start, end).
std::string TextBetween(PluginInterface* pi, long start, long end);

} // namespace scan
