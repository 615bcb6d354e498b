// A face without a screen: documents have a fixed place, and there is no mouse or keyboard input.
#pragma once

#include "wren/core/Face.h"

namespace wren {

// Document thread.
class HeadlessFace : public Face {
public:
    BRect DocumentWindowFrame() const override { return {0, 0, 800, 600}; }
    BRect TextBounds(const Document&) const override { return {0, 0, 800, 600}; }
    BRect ButtonFrame(const Document&) const override { return {0, 0, 16, 16}; }
    BPoint PointAt(const Document&, long) const override { return {0, 0}; }
    long OffsetAt(const Document&, BPoint) const override { return 0; }
    MouseState Mouse() const override { return {}; }
    bool InputPending() const override { return false; }
    void OpenMatch(const std::string&, long) override {}
    void Warn(const std::string& text) override; // on standard error
};

} // namespace wren
