// What an update reports.
#pragma once

#include <cstddef>
#include <string>

namespace symbols {

struct Progress {
    enum class Step { Walking, Parsing, Writing } step = Step::Walking;
    size_t done = 0;
    size_t known = 0; // files; grows while walking
};

struct UpdateResult {
    size_t parsed = 0;  // files
    size_t removed = 0; // files
    size_t failed = 0;  // files without symbols, since ctags crashed, took too long, or could not read them
    bool rebuilt = false;
    bool inMemory = false; // the cache directory cannot be written; 'warning' says why
    std::string warning;   // for the user; "" for none
};

} // namespace symbols
