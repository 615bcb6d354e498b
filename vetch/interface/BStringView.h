// Read-only text: a label, or the frame and title of a group of controls.
#pragma once

#include "vetch/display/Display.h"
#include "vetch/interface/BView.h"

#include <string>

class BStringView : public BView {
public:
    explicit BStringView(const vetch::NibControl& label); // or a group

    const std::string& Text() const { return text; }

protected:
    void AttachedToWindow() override;

private:
    const vetch::ViewDescription::Kind kind;
    const std::string text;
};
