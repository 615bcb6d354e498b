// What buttons, check boxes and text fields have in common.
#pragma once

#include "vetch/app/BInvoker.h"
#include "vetch/display/Display.h"
#include "vetch/interface/BView.h"

#include <string>

// Made empty: frame, label and first value come from the interface file it is attached to. Invokes to its window until
// it is given another target.
class BControl : public BView, public BInvoker {
public:
    const std::string& Label() const { return label; }

protected:
    explicit BControl(vetch::ViewDescription::Kind kind);

    void AttachedToWindow() override;
    bool SetUpFromNib(const vetch::NibControl& control) override;

    // What the display is told when the control joins a window; the label, unless the control shows something else.
    virtual void Describe(vetch::ViewDescription& description) const;

private:
    const vetch::ViewDescription::Kind kind;
    std::string label;
};
