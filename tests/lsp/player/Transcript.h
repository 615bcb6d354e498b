// A session as a person reads it. See README.md for the lines.
#pragma once

#include <string>
#include <vector>

struct TranscriptLine {
    size_t number = 0; // in the file, from 1
    std::string what;  // "file", "run", "> request", "< result"
    std::string rest;  // of the line, and of the indented lines below it, without their indentation
};

// Comments and empty lines are left out. Throws std::runtime_error when a line begins with nothing that is known.
std::vector<TranscriptLine> ReadTranscript(const std::string& text);
