// Requests for tags, recorded instead of carried out: what threads were started, and what each would have run.
#pragma once

#include "vetch/support/ShellCommand.h"

#include <functional>
#include <string>
#include <vector>

// For as long as a test: the shell's place is taken, and the threads that generate tags are known from before they
// start until their work is done. One at a time.
class Requests {
public:
    using Commands = std::vector<std::string>; // of one thread, in their order

    Requests();
    ~Requests(); // waits for all threads

    // Waits until all threads that were started have done their work. Their commands, in the order of the starts; what
    // is taken is not taken again.
    std::vector<Commands> Take();

    void AnswerCommandsWith(int status);                          // as system() would; 0 at first
    void DuringCommands(std::function<void(const std::string&)>); // called on the command's own thread
    void GiveNoThreads();                                         // as when the system has none to give
    vetch::ShellRequest Last() const;                             // what came with the last command
};
