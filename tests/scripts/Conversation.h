// One run of "wren script", a line at a time.
#pragma once

#include <cstdio>
#include <optional>
#include <string>
#include <sys/types.h>
#include <vector>

class Conversation {
public:
    // 'words' are the program and its arguments; it runs in 'directory', and its standard error goes to 'errors'.
    Conversation(const std::vector<std::string>& words, const std::string& directory, const std::string& errors);
    ~Conversation(); // without End(): the program is killed
    Conversation(const Conversation&) = delete;
    Conversation& operator=(const Conversation&) = delete;

    // The answer to a line; nothing when the program has ended. Throws when there is none for minutes.
    std::optional<std::string> Ask(const std::string& line);

    // There are no more lines. What the program still has to say is read by Rest(). The exit status; -1 when a signal
    // ended it.
    int End();
    std::vector<std::string> Rest();

private:
    std::optional<std::string> Next();
    void Close(FILE*& stream);

    pid_t program = -1;
    FILE* lines = nullptr;
    FILE* answers = nullptr;
};
