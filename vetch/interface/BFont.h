// Fonts for measuring text.
#pragma once

#include "vetch/support/Types.h"

// Pixels above and below the baseline, and between lines.
struct font_height {
    float ascent;
    float descent;
    float leading;
};

// A value type.
class BFont {
public:
    BFont() = default;

    void SetSize(float points) { size = points; }
    float Size() const { return size; }
    void SetDrawAntiAliased(bool on) { antiAliased = on; }
    bool IsDrawAntiAliased() const { return antiAliased; }
    void GetHeight(font_height* height) const; // from the display. Any thread

private:
    float size = 12;
    bool antiAliased = false;
};

extern const BFont* be_plain_font; // read-only
