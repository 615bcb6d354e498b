// The common base of buttons, check boxes and text fields.
#pragma once

#include "vetch/app/BInvoker.h"
#include "vetch/display/Display.h"
#include "vetch/interface/BView.h"

#include <string>

// Starts empty: the interface file gives frame, label and first value. Its first target is its window.
class BControl : public BView, public BInvoker {
public:
    const std::string& Label() const { return label; }

protected:
    explicit BControl(vetch::ViewDescription::Kind kind);

    void AttachedToWindow() override;
    bool SetUpFromNib(const vetch::NibControl& control) override;

    // Describes the control to the display when it joins a window: by its label, unless it shows something else.
    virtual void Describe(vetch::ViewDescription& description) const;

private:
    const vetch::ViewDescription::Kind kind;
    std::string label;
};
