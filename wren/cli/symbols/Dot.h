// Graphs in the language of Graphviz.
#pragma once

#include "base/Result.h"
#include "wren/cli/symbols/Graph.h"

#include <string>
#include <string_view>

namespace wren {

// A text in quotes that shows as it is, whatever it contains: control characters as "?", other bytes than UTF-8 as
// U+FFFD.
std::string DotQuoted(std::string_view text);

// 'reversed': the edges point to the starts.
std::string DotText(const Graph& graph, const std::string& title, bool reversed);

// Has Graphviz draw it; 'format' is "svg" or "png". Fails when Graphviz is not installed, fails, or takes too long.
base::Result<std::string> DrawDot(const std::string& dot, const std::string& format);

} // namespace wren
