// Updates that are killed at random moments.
#pragma once

#include <string>

struct KillPlan {
    unsigned long seed = 1;
    int kills = 10;
    size_t files = 20;
    std::string worker; // the program index_worker
};

// Changes a tree step by step. After each step it starts an update of the tree's index, or of none, kills it after a
// random time, and compares: the index holds the old state or the new one, and the next update ends with what a fresh
// index holds. Returns the first difference, "" for none; 'killed' is the number of updates that had not ended before.
std::string KillUpdates(const KillPlan& plan, int* killed);
