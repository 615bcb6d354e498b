// How wide texts are in the desktop's plain font, for threads that may not ask Qt.
#pragma once

#include "vetch/display/Display.h"

#include <array>
#include <string>

class QFont;

namespace wren {

// Made on the GUI thread, from the font that the desktop has then; never changed afterwards, so that any thread may ask
// and nobody waits.
//
// The framework's plain size stands for the desktop's own size, and other sizes are in proportion. Characters up to
// U+00FF are as wide as Qt draws them, one by one; all others count as wide as the widest usual ones, so that a window
// that is fitted to its texts never cuts them.
class FontTable {
public:
    FontTable();

    float StringWidth(const std::string& text, float size) const; // UTF-8
    vetch::FontMetrics Metrics(float size) const;                 // whole pixels
    float LineHeight(float size) const;                           // of a list: a pixel between two lines

    static QFont FontOf(float size); // GUI thread

private:
    struct Sheet {
        float size = 0;
        std::array<float, 256> widths{};
        float replacement = 0; // the sign for what is no character
        float other = 0;
        vetch::FontMetrics metrics;
    };
    static Sheet Measure(float size);
    static float WidthOf(const Sheet& sheet, const std::string& text);
    const Sheet& Nearest(float size) const;

    std::array<Sheet, 2> sheets;
};

} // namespace wren
