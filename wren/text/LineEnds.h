// How the lines of a text end.
#pragma once

namespace wren {

enum class LineEnds { Unix, Windows, Mac }; // LF, CR LF, CR

} // namespace wren
