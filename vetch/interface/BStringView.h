// A line of text that the user only reads.
#pragma once

#include "vetch/interface/BView.h"

#include <string>

class BStringView : public BView {
public:
    BStringView(BRect frame, const char* text);

    const std::string& Text() const { return text; }

protected:
    void AttachedToWindow() override;

private:
    const std::string text;
};
