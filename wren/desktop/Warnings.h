// Failures that lose nothing: they reach the user as notices.
#pragma once

#include "wren/desktop/display/GuiQueue.h"

#include <QStringList>

#include <string>

namespace wren {

class NoticeBar;

// Holds warnings until there is a bar to show them in: loading the plug-in may cause the first. Reports of the
// framework come from any thread; they wait for TakeNews(), and the loop is woken for them. One at a time; made and
// destroyed on the GUI thread, which also calls all operations.
class Warnings {
public:
    Warnings();
    ~Warnings();
    Warnings(const Warnings&) = delete;
    Warnings& operator=(const Warnings&) = delete;

    void Tell(const QString& text);
    void ShowIn(NoticeBar& notices); // borrowed; from now on, after those that were held
    void TakeNews();                 // tells what the framework has reported

private:
    NoticeBar* bar = nullptr; // null until ShowIn()
    QStringList held;
    GuiQueue<std::string> news;
};

} // namespace wren
