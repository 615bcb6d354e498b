// A face without a screen: every character has a cell of the same size.
#pragma once

#include "wren/core/Face.h"

namespace wren {

// Derived classes handle matches and warnings.
class GridFace : public Face {
public:
    static constexpr float kCellWidth = 7;
    static constexpr float kCellHeight = 15;
    static constexpr BPoint kFirstBaseline = {48, 96}; // of the first character, on the screen
    static constexpr BPoint kTextOrigin = {48, 86};    // of the text view, on the screen

    BRect DocumentWindowFrame() const override;
    BRect TextBounds(const Document& document) const override;
    BRect ButtonFrame(const Document& document) const override;
    BPoint PointAt(const Document& document, long offset) const override;

    // A point past a line's end gives that end; a point below the text gives the text's end.
    long OffsetAt(const Document& document, BPoint where) const override;

    MouseState Mouse() const override { return mouse; }
    bool InputPending() const override { return inputPending; }

    BPoint CellCentre(const Document& document, long offset) const; // in text view coordinates

    MouseState mouse;
    bool inputPending = false;
};

} // namespace wren
