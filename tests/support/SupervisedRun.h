// A program whose changes of files a test allows, refuses, or answers with a kill, one by one.
#pragma once

#include "tests/support/RunProgram.h"

#include <functional>
#include <optional>
#include <string>
#include <vector>

enum class Verdict { Allow, NoSpace, Kill };

// One system call of the program that changes files.
struct FileChange {
    size_t number = 0;      // of the run's changes, from 0
    bool needsSpace = true; // a full disk can refuse it; false for removals, for example
};

// Runs the program. Calls of the process itself count, on any of its threads; those of its children do not, nor do
// writes to descriptors of files elsewhere than below 'directory'. Nullopt when the system does not allow it.
std::optional<ProgramRun> RunSupervised(const std::vector<std::string>& words, const std::string& directory,
                                        const std::function<Verdict(const FileChange&)>& decide);
