// A button; a press invokes it.
#pragma once

#include "vetch/interface/BControl.h"

class BButton : public BControl {
public:
    BButton();

    void MessageReceived(BMessage* message) override;
};
