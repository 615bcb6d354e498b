// A small tree of C++ sources that changes at random, as trees do while people work.
#pragma once

#include "tests/support/TempDirectory.h"

#include <functional>
#include <random>
#include <set>
#include <string>
#include <vector>

// All steps follow from the seed. Not thread-safe.
class SourceTree {
public:
    // 'withGit' makes it a work tree with a few commits.
    SourceTree(unsigned long seed, size_t files, bool withGit);

    const std::string& Root() const { return root; }
    static std::set<std::string> Words(); // names that sources mention

    // Makes one change, and returns it in words. A file or directory that lost its permissions gets them back with the
    // next step of that sort, or with Restore().
    std::string Step();
    void Restore();
    bool IsRestricted() const { return !restricted.empty(); }

    // One source with all that the index holds; each number gives another one.
    static std::string Source(unsigned long number);

private:
    using Action = std::string (SourceTree::*)();

    std::string Edit();
    std::string EditAtOldTime();
    std::string Add();
    std::string Remove();
    std::string Rename();
    std::string RenameDirectory();
    std::string Touch();
    std::string Replace();
    std::string Checkout();
    std::string Ignore();
    std::string Link();
    std::string Restrict();

    std::vector<std::string> Files() const; // absolute
    std::string AFile();
    std::string ANewName();
    size_t Below(size_t limit) { return std::uniform_int_distribution<size_t>(0, limit - 1)(random); }
    void Write(const std::string& path, const std::string& text);
    void SetOldTime(const std::string& path);
    bool Git(const std::vector<std::string>& words) const;
    void Commit(const char* branch);

    const TempDirectory directory;
    const std::string root = directory / "tree";
    const bool withGit;
    std::mt19937_64 random;
    unsigned long serial = 0;
    std::set<std::string> restricted;
};
