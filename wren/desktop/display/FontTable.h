// How wide texts are in the font of lists, for threads that may not ask Qt.
#pragma once

#include "vetch/display/Display.h"

#include <QFont>

#include <array>
#include <memory>
#include <mutex>
#include <string>

namespace wren {

// Made on the GUI thread, from the font that the desktop has then. The framework measures only what its lists show, and
// the editor gives them the font of its texts.
//
// The framework's plain size stands for the font's own size, and other sizes are in proportion. Characters up to
// U+00FF are as wide as Qt draws them, one by one; all others count as wide as the widest usual ones, so that a window
// that is fitted to its texts never cuts them.
class FontTable {
public:
    FontTable();

    void Use(const QFont& font); // for lists, from now on. GUI thread

    // Any thread, these three.
    float StringWidth(const std::string& text, float size) const; // UTF-8
    vetch::FontMetrics Metrics(float size) const;                 // whole pixels
    float LineHeight(float size) const;                           // of a list: a pixel between two lines

    QFont ListFont(float size) const; // GUI thread
    static QFont FontOf(float size);  // of everything else, which is the desktop's. GUI thread

private:
    struct Sheet {
        float size = 0;
        std::array<float, 256> widths{};
        float replacement = 0; // the sign for what is no character
        float other = 0;
        vetch::FontMetrics metrics;
    };
    using Sheets = std::array<Sheet, 2>;
    static Sheet Measure(const QFont& plain, float size);
    static float WidthOf(const Sheet& sheet, const std::string& text);
    static const Sheet& Nearest(const Sheets& sheets, float size);
    std::shared_ptr<const Sheets> Current() const;

    QFont listFont;
    mutable std::mutex mutex; // a leaf, guards 'sheets'
    std::shared_ptr<const Sheets> sheets;
};

} // namespace wren
