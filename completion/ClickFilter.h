// Gives the keyboard to the list of completions when it is clicked.
#pragma once

#include "vetch/app/BMessageFilter.h"

class CompletionWindow;

// Stands on the window's list, which owns it. Window's thread.
class ClickFilter : public BMessageFilter {
public:
    explicit ClickFilter(CompletionWindow* window) : BMessageFilter(B_ANY_DELIVERY, B_ANY_SOURCE), window(window) {}

    filter_result Filter(BMessage* message, BHandler** target) override;

private:
    CompletionWindow* window;
};
