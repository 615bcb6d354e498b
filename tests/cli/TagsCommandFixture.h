// Runs the program to make tags, with a stand-in for a misbehaving tags program.
#pragma once

#include "tests/support/FileContent.h"
#include "tests/support/RunProgram.h"
#include "tests/support/TempDirectory.h"

#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <map>
#include <sstream>
#include <string>
#include <vector>

namespace fs = std::filesystem;

// Reads the options, then a line for each file to tag; "$target" is the file to write.
inline constexpr const char* kReadOptions = R"(#!/bin/sh
while [ $# -gt 0 ]; do
    [ "$1" = -f ] && target=$2
    shift
done
)";
inline constexpr const char* kWriteTags = R"(
while IFS= read -r file; do printf 'x\t%s\t1;"\tv\n' "$file"; done >"$target"
)";
inline const std::string kGoodProgram = std::string(kReadOptions) + kWriteTags;
inline constexpr const char* kOldTags = "old\told.h\t1;\"\tv\n";

inline bool HasText(const std::string& text, const std::string& part)
{
    return text.find(part) != std::string::npos;
}

class TagsCommand : public ::testing::Test {
protected:
    TagsCommand()
    {
        tree.Write("home/.keep", "");
        tree.Write("project/a.h", "int a(void);\n");
        tree.Write("project/deep/b.c", "int b;\n");
        tree.Write("project/notes.txt", "int c;\n");
        UseProgram(kGoodProgram);
    }

    void UseProgram(const std::string& script)
    {
        fs::permissions(tree.Write("program", script), fs::perms::owner_all);
        environment["WREN_CTAGS"] = tree / "program";
    }

    std::vector<std::string> Command(const std::vector<std::string>& words) const
    {
        std::vector<std::string> command{WREN_PROGRAM, "tags", "--home", tree / "home"};
        command.insert(command.end(), words.begin(), words.end());
        return command;
    }

    ProgramRun Run(const std::vector<std::string>& words) const
    {
        return RunProgram(Command(words), tree.Path(), environment);
    }

    // All files of the tree, with times and sizes.
    std::string Listing() const { return RunProgram({"/bin/ls", "-lR", "--time-style=full-iso"}, tree.Path()).output; }

    std::string Tags() const { return tree / "project/tags"; }
    std::string UnfinishedTags() const { return tree / "project/tags.tmp"; }
    std::string SystemTags() const { return tree / "home/Library/Caches/SystemHeaderTags"; }

    void ExpectOldTags(const std::string& why) const
    {
        EXPECT_EQ(Content(Tags()), kOldTags) << why;
        EXPECT_FALSE(fs::exists(UnfinishedTags())) << why;
    }

    std::map<std::string, std::string> environment;
    TempDirectory tree;
};

// The last line without the seconds.
inline std::string WithoutSeconds(const std::string& line)
{
    const size_t in = line.find(" in ");
    const size_t unit = line.find(" s, ", in);
    return in == std::string::npos || unit == std::string::npos ? line : line.substr(0, in) + line.substr(unit + 2);
}
