// A home directory with projects in it, each with sources and tags, and the tags of the system's headers.
#pragma once

#include "tests/support/TempDirectory.h"

#include <random>
#include <string>
#include <vector>

using Random = std::mt19937_64;

// Which of as many; uniform.
inline size_t Pick(Random& random, size_t count)
{
    return random() % count;
}
inline bool Once(Random& random, size_t in)
{
    return Pick(random, in) == 0;
}

class Workspace {
public:
    static constexpr size_t kProjects = 4;
    static constexpr size_t kSourcesOfProject = 3;

    explicit Workspace(Random& random);

    const std::string& Home() const { return files.Path(); }
    std::string Source(size_t project, size_t source) const;

    // Some lines of code that name symbols, of which most are in the tags.
    std::string MakeText() const;

    // What somebody would type to have one of them.
    std::string MakePhrase() const;

    // The project's tags, as when they were made again: some symbols have come, and some are gone.
    void WriteTags(size_t project) const;

private:
    std::string Project(size_t project) const { return files / ("project" + std::to_string(project)); }
    std::string MakeTags(size_t symbols) const;

    TempDirectory files;
    Random& random;
};
