// A button: pressing it invokes it.
#pragma once

#include "vetch/interface/BControl.h"

class BButton : public BControl {
public:
    BButton();

    void MessageReceived(BMessage* message) override;
};
