// A question with buttons.
#pragma once

#include <string>
#include <vector>

// Make it with new: it deletes itself at the end of Go(). Document thread only.
class BAlert {
public:
    // Buttons from left to right, the last one the default; null ones are left out. Without any there is an "OK".
    BAlert(const char* title, const char* text, const char* button0, const char* button1 = nullptr,
           const char* button2 = nullptr);

    // Waits for the answer: the button's index; 0 for a closed alert or Escape. No lock held.
    long Go();

private:
    ~BAlert() = default;

    const std::string title;
    const std::string text;
    std::vector<std::string> buttons;
};
