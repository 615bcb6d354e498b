// A random history of a tree and its index.
#pragma once

#include <string>

struct HistoryPlan {
    unsigned long seed = 1;
    size_t steps = 100;
    size_t files = 20; // at the beginning
    bool withGit = false;
};

// Changes a tree step by step, updates its index after some steps, and compares its answers with a fresh index's.
// Returns the first difference with the steps that led to it; "" when there is none. The same plan gives the same
// steps.
std::string PlayHistory(const HistoryPlan& plan);
