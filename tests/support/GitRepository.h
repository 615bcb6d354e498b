// A real git repository for a test.
#pragma once

#include "tests/support/Environment.h"
#include "tests/support/RunProgram.h"
#include "tests/support/TempDirectory.h"

#include <string>
#include <vector>

// Its user has an empty home directory, so that nobody's own settings count, in this process either.
class GitRepository {
public:
    explicit GitRepository(const std::vector<std::string>& options = {}, const std::string& leaf = "tree")
        : top(directory / leaf)
    {
        std::filesystem::create_directories(top);
        std::filesystem::create_directories(Home());
        SetVariable("HOME", Home().c_str());
        SetVariable("XDG_CONFIG_HOME", nullptr);
        std::vector<std::string> words = {"init", "-q", "-b", "main"};
        words.insert(words.end(), options.begin(), options.end());
        Git(words);
    }

    // Whether the machine has git; a test without it is skipped.
    static bool IsPossible() { return RunProgram({"/usr/bin/env", "git", "--version"}, "/").status == 0; }

    const std::string& Top() const { return top; }
    std::string Home() const { return directory / "home"; }
    std::string Write(const std::string& leaf, const std::string& text) const
    {
        return directory.Write(top.substr(directory.Path().size() + 1) + "/" + leaf, text);
    }

    // Its output.
    std::string Git(std::vector<std::string> words) const { return Run(std::move(words)).output; }
    ProgramRun Run(std::vector<std::string> words) const
    {
        words.insert(words.begin(), {"/usr/bin/env", "git", "-c", "user.name=A", "-c", "user.email=a@example.org"});
        return RunProgram(words, top, {{"GIT_CONFIG_NOSYSTEM", "1"}, {"GIT_DIR", ""}, {"GIT_INDEX_FILE", ""}});
    }
    void Commit(const std::string& message) const
    {
        Git({"add", "-A"});
        Git({"commit", "-q", "--allow-empty", "-m", message});
    }

private:
    const TempDirectory directory;
    const std::string top;
};
